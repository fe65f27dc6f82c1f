#include "properties/PropertiesWindow.h"

#include "MessageCodes.h"
#include "fileops/engine/ProblemList.h"
#include "fileops/windows/DialogLayout.h"
#include "properties/PropertiesPage.h"
#include "settings/MsgBox.h"

#include <Button.h>
#include <Message.h>
#include <Screen.h>
#include <ScrollView.h>
#include <StringView.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <utility>

namespace norvane {

namespace {

constexpr bigtime_t kPatience = 100'000; // before the window is shown as it is
constexpr float kWidth = 400;            // at least
constexpr float kFirstHeight = 420;
constexpr float kLeastHeight = 120;
constexpr float kMostOfScreen = 0.9f; // its bar and its edges need some
constexpr float kNoLimit = 32768;
constexpr float kEdge = 10;
constexpr float kButtonGap = 8;
constexpr float kStatusGap = 6;
// How far windows that are opened one after the other lie apart, and how many do.
constexpr float kCascadeStep = 24;
constexpr int32 kCascade = 8;

BRect MovedIntoSight(BRect frame)
{
    const BRect screen = BScreen(B_MAIN_SCREEN_ID).AvailableFrame();
    const float left =
        std::clamp(frame.left, screen.left, std::max(screen.left, screen.right - frame.Width()));
    const float top =
        std::clamp(frame.top, screen.top, std::max(screen.top, screen.bottom - frame.Height()));
    return frame.OffsetToCopy(left, top);
}

float CascadeOffset()
{
    static std::atomic<int32> count{0};
    return static_cast<float>(count++ % kCascade) * kCascadeStep;
}

} // namespace

PropertiesWindow::PropertiesWindow(BRect ownerRect, PropertiesOrder order)
    : BWindow(CentredFrame(ownerRect, kWidth, kFirstHeight), "Properties", B_TITLED_WINDOW,
              B_NOT_ZOOMABLE)
{
    BuildContents();
    fReading = PropertiesReading::Start(std::move(order), BMessenger(this));
    fReading->AwaitChosen(kPatience);
    ReadOn();
    FitToContents(ownerRect);
}

PropertiesWindow::~PropertiesWindow()
{
    fReading->Cancel();
    if (fWork != nullptr) {
        fWork->Stop();
    }
}

// Contents

void PropertiesWindow::BuildContents()
{
    BView* ground = MakeDialogGround(Bounds(), "PropertiesGround");
    AddChild(ground); // adopted, as are those below
    const BRect bounds = ground->Bounds();
    const float buttonsTop = bounds.bottom - kEdge - ButtonHeight();
    const BRect inside(0, 0, bounds.right - B_V_SCROLL_BAR_WIDTH - 1, buttonsTop - kStatusGap);
    fPage = new PropertiesPage(inside);
    ground->AddChild(new BScrollView("PropertiesScroll", fPage, B_FOLLOW_ALL_SIDES, 0, false, true,
                                     B_NO_BORDER));
    float right = bounds.right - kEdge;
    const auto add = [&](const char* name, const char* label, uint32 what) {
        const float left = right - ButtonWidth(label);
        auto* button =
            new BButton(BRect(left, buttonsTop, right, buttonsTop + ButtonHeight()), name, label,
                        new BMessage(what), B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM);
        right = left - 1 - kButtonGap;
        return button;
    };
    BButton* cancel = add("CancelProperties", "Cancel", kPropertiesCancelled);
    fAccept = add("AcceptProperties", "OK", kPropertiesAccepted);
    ground->AddChild(fAccept);
    ground->AddChild(cancel);
    fAccept->MakeDefault(true);
    const float textTop = buttonsTop + std::floor((ButtonHeight() - LineHeight()) / 2);
    fStatus = new BStringView(BRect(kEdge, textTop, right, textTop + LineHeight()), "Status", "",
                              B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM);
    fStatus->SetTruncation(B_TRUNCATE_END);
    ground->AddChild(fStatus);
    fPage->MakeFocus(true);
}

/// As high as what is shown, as far as the screen has room.
float PropertiesWindow::FittingHeight() const
{
    const float below = Bounds().Height() - fPage->Bounds().Height();
    const BRect screen = BScreen(B_MAIN_SCREEN_ID).AvailableFrame();
    return std::min(std::ceil(fPage->ContentsHeight() + below),
                    std::floor(screen.Height() * kMostOfScreen));
}

void PropertiesWindow::FitToContents(BRect ownerRect)
{
    const BRect screen = BScreen(B_MAIN_SCREEN_ID).AvailableFrame();
    const float least = std::min(fPage->LeastWidth() + B_V_SCROLL_BAR_WIDTH + 1, screen.Width());
    const float width = std::max(std::min(kWidth, screen.Width()), least);
    fFittedHeight = FittingHeight();
    SetSizeLimits(least, kNoLimit, std::min(kLeastHeight, fFittedHeight), kNoLimit);
    ResizeTo(width, fFittedHeight);
    const float offset = CascadeOffset();
    const BRect middle = CentredFrame(ownerRect, width, fFittedHeight);
    MoveTo(MovedIntoSight(middle.OffsetByCopy(offset, offset)).LeftTop());
}

/// What was read late, or became more, is seen too, unless the person gave it another height.
void PropertiesWindow::GrowToContents()
{
    const float height = FittingHeight();
    if (fFittedHeight > 0 && Bounds().Height() == fFittedHeight && height > fFittedHeight) {
        fFittedHeight = height;
        ResizeTo(Bounds().Width(), height);
        MoveTo(MovedIntoSight(Frame()).LeftTop());
    }
}

// What it is told

void PropertiesWindow::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case kPropertiesNews:
        TakeNews();
        break;
    case kModeTouched:
        fPage->ModeTouched(fRead.contents, fRead.isCounted);
        break;
    case kPropertiesAccepted:
        Accept();
        break;
    case kPropertiesCancelled:
        Cancel();
        break;
    default:
        BWindow::MessageReceived(message);
    }
}

bool PropertiesWindow::QuitRequested()
{
    if (fWork == nullptr || fIsToClose) {
        return true;
    }
    fIsToClose = true;
    fWork->Stop();
    return false;
}

void PropertiesWindow::TakeNews()
{
    if (fWork != nullptr) {
        WorkGoesOn();
    } else {
        ReadOn();
    }
}

void PropertiesWindow::ReadOn()
{
    fRead = fReading->Look();
    fAccept->SetEnabled(fRead.isRead);
    fPage->SetTo(fRead);
    GrowToContents();
    if (!fRead.isRead) {
        fStatus->SetText("Reading...");
        return;
    }
    fStatus->SetText(fRead.chosen.folders > 0 && !fRead.isCounted ? "Counting..." : "");
    if (!std::exchange(fIsTitled, true)) {
        const bool isOne = fRead.subjects->size() == 1 && fRead.chosen.unreadable == 0;
        const std::string name =
            isOne ? ShownName(fRead.subjects->front().ref.name)
                  : Counted(fRead.chosen.Count() + fRead.chosen.unreadable, "entry", "entries");
        SetTitle(("Properties of " + name).c_str());
    }
}

void PropertiesWindow::Accept()
{
    const ModeChange change = fPage->Change();
    if (!fRead.isRead || fWork != nullptr) {
        return;
    }
    if (change.IsEmpty() || fRead.subjects->empty()) {
        PostMessage(B_QUIT_REQUESTED);
        return;
    }
    fReading->Cancel();
    fWork = ModeWork::Start({fRead.subjects, change, fPage->GoesInside()}, BMessenger(this));
    if (fWork == nullptr) {
        MsgBox("The system has no threads left: nothing was changed.", B_WARNING_ALERT);
        return;
    }
    fPage->SetEnabled(false);
    fAccept->SetEnabled(false);
    fStatus->SetText("Changing permissions...");
}

void PropertiesWindow::Cancel()
{
    if (fWork == nullptr) {
        PostMessage(B_QUIT_REQUESTED);
    } else {
        fWork->Stop();
    }
}

void PropertiesWindow::WorkGoesOn()
{
    const ModeProgress progress = fWork->Look();
    if (progress.isOver) {
        WorkEnded(progress);
        return;
    }
    fStatus->SetText((Counted(progress.changed, "entry", "entries") + " changed").c_str());
}

void PropertiesWindow::WorkEnded(const ModeProgress& progress)
{
    if (std::exchange(fHasEnded, true)) {
        return; // the last news may come twice
    }
    const bool isClosed = std::exchange(fIsToClose, true);
    fStatus->SetText("");
    if (progress.wasStopped && !isClosed) {
        const std::string text = "Stopped. " +
                                 Counted(progress.changed, "entry has", "entries have") +
                                 " the new permissions by now.";
        MsgBox(text.c_str(), B_INFO_ALERT);
    }
    progress.problems.Show();
    PostMessage(B_QUIT_REQUESTED);
}

} // namespace norvane
