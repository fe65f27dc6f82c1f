#include "Checksums/SumList.h"
#include "Checksums/SumWindow.h"
#include "common/DialogParts.h"

#include <Button.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <MessageRunner.h>
#include <ScrollView.h>
#include <StatusBar.h>
#include <StringView.h>
#include <TextControl.h>

#include <algorithm>

// What is seen of the window.

namespace checksums {

using namespace add_ons;

namespace {

constexpr float kWidth = 740;
constexpr float kHeight = 380;
constexpr float kLeastWidth = 340;
constexpr float kLeastListHeight = 40;
constexpr float kBarHeight = 10;
constexpr float kListBorder = 2;
constexpr bigtime_t kAnswersAfterFirstFrame = 200'000;
constexpr bigtime_t kTickTime = 100'000;
constexpr char kPastedLabel[] = "Compare with:";
constexpr uint32 kAtBottom = B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM;
constexpr uint32 kAcross = B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP;

} // namespace

SumWindow::SumWindow(const std::vector<entry_ref>& refs)
    : BWindow(FrameOverActiveWindow(kWidth, kHeight), "Checksums", B_TITLED_WINDOW,
              B_ASYNCHRONOUS_CONTROLS),
      fNeighbour(refs.front()), fJob(std::make_shared<SumJob>(refs, BMessenger(this)))
{
    SetAnswerDelay(kAnswersAfterFirstFrame, 0);
    BuildContents();
    if (fJob->Start() == B_OK) {
        const BMessage tick(kSumTick);
        fTicks = std::make_unique<BMessageRunner>(BMessenger(this), &tick, kTickTime);
        ShowState();
    } else {
        fSummary->SetText("The system has no threads left");
    }
}

void SumWindow::BuildContents()
{
    fGround = MakeGround(Bounds(), "Ground");
    AddChild(fGround);
    const float right = Bounds().right - kEdge;
    const float divider = TextWidth(kPastedLabel) + kGap;
    fPasted = AddField(fGround, BRect(kEdge, kEdge, right, kEdge + FieldHeight()), "Pasted",
                       kPastedLabel, "", divider, kPastedChanged, kAcross);
    const float matchTop = fPasted->Frame().bottom + kRowGap;
    fMatch = AddLine(fGround, BRect(kEdge + divider, matchTop, right, matchTop + LineHeight()),
                     "Match", "", kAcross);
    const float listTop = matchTop + LineHeight() + kGap;
    const float buttonsTop = Bounds().bottom - kEdge - ButtonHeight();
    const float barTop = buttonsTop - kGap - kBarHeight - LineHeight();
    AddSums(listTop, barTop - kGap);
    // One line, and the bar with its own while the job goes on.
    fSummary = AddLine(fGround, BRect(kEdge, barTop, right, barTop + LineHeight()), "Summary", "",
                       kAtBottom);
    fSummary->Hide();
    fBar =
        new BStatusBar(BRect(kEdge, barTop, right, barTop + LineHeight() + kBarHeight), "Progress");
    fGround->AddChild(fBar);
    fBar->SetResizingMode(kAtBottom);
    fBar->SetBarHeight(kBarHeight);
    fBar->SetMaxValue(kFullBar);
    AddButtons(buttonsTop);
    SetSizeLimits(
        std::min(kLeastWidth, Bounds().Width()), 10'000,
        std::min(listTop + kLeastListHeight + LineHeight() + (Bounds().bottom - barTop) + kGap,
                 Bounds().Height()),
        10'000);
    fPasted->MakeFocus(true);
}

void SumWindow::AddSums(float top, float bottom)
{
    const float right = Bounds().right - kEdge;
    const BRect frame(kEdge + kListBorder, top + LineHeight() + 2 + kListBorder,
                      right - kListBorder - B_V_SCROLL_BAR_WIDTH, bottom - kListBorder);
    fList = new SumList(frame, fJob);
    fGround->AddChild(new ColumnTitles(BRect(kEdge, top, right, top + LineHeight() + 1), *fList,
                                       "Name", "SHA-256"));
    fGround->AddChild(new BScrollView("SumsScroll", fList, B_FOLLOW_ALL_SIDES, 0, false, true));
}

void SumWindow::AddButtons(float top)
{
    const float right = Bounds().right - kEdge;
    const uint32 atLeft = B_FOLLOW_LEFT | B_FOLLOW_BOTTOM;
    float end = kEdge + ButtonWidth("Copy");
    fCopy = AddButton(fGround, end, top, "Copy", "Copy", kCopySums, atLeft);
    end += kGap + ButtonWidth("Save");
    fSave = AddButton(fGround, end, top, "Save", "Save", kSaveSums, atLeft);
    fClose = AddButton(fGround, right, top, "Close", "Stop", kStopOrClose,
                       B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM);
    fCopy->SetEnabled(false);
    fSave->SetEnabled(false);
}

} // namespace checksums
