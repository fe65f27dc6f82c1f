#include "outside/OpenWithWin.h"

#include "MessageCodes.h"
#include "fileops/engine/ProblemList.h"
#include "fileops/windows/DialogLayout.h"
#include "panes/OpenEntry.h"

#include <AppDefs.h>
#include <Button.h>
#include <CheckBox.h>
#include <ListView.h>
#include <Message.h>
#include <ScrollView.h>
#include <StringView.h>

#include <algorithm>

namespace norvane {

namespace {

constexpr float kWidth = 380;
constexpr float kHeight = 300;
constexpr float kLeastWidth = 260;
constexpr float kLeastHeight = 170;
constexpr float kGap = 8;
constexpr float kBorder = 2;      // of the scroll view
constexpr float kDefaultMark = 3; // around the face of the default button

float ButtonsTop(const BView& ground)
{
    return ground.Bounds().bottom - kDialogEdge - kDefaultMark - ButtonHeight();
}

float BoxTop(const BView& ground)
{
    return ButtonsTop(ground) - kGap - kDefaultMark - LineHeight() - 3;
}

float ListTop()
{
    return kDialogEdge + LineHeight() + 5;
}

void AddLine(BView* ground, float top, const char* name, const std::string& text)
{
    const BRect frame(kDialogEdge, top, ground->Bounds().right - kDialogEdge, top + LineHeight());
    auto* line = new BStringView(frame, name, text.c_str(), B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP);
    line->SetTruncation(B_TRUNCATE_MIDDLE);
    ground->AddChild(line);
}

} // namespace

OpenWithWin::OpenWithWin(BRect frame, BWindow* owner, const BMessage& notOpened)
    : BWindow(CentredFrame(frame, kWidth, kHeight), "Open With", B_TITLED_WINDOW,
              B_ASYNCHRONOUS_CONTROLS),
      fOwner(owner), fType(notOpened.GetString("type", ""))
{
    if (owner != nullptr) {
        SetOpener(owner);
    }
    notOpened.FindRef("refs", &fFile);
    BuildContents(notOpened);
}

OpenWithWin::~OpenWithWin()
{
    while (fList->CountItems() > 0) {
        fList->RemoveItem(fList->CountItems() - 1);
    }
}

void OpenWithWin::BuildContents(const BMessage& notOpened)
{
    BView* ground = MakeDialogGround(Bounds(), "OpenWith");
    AddChild(ground);
    AddLine(ground, kDialogEdge, "label",
            "Open " + ShownName(notOpened.GetString("name", "")) + " with:");
    AddPrograms(ground, notOpened);
    AddAnswers(ground, notOpened);
    SetSizeLimits(kLeastWidth, 32767, kLeastHeight, 32767);
    fList->MakeFocus(true);
}

void OpenWithWin::AddPrograms(BView* ground, const BMessage& notOpened)
{
    const BRect frame(kDialogEdge + kBorder, ListTop() + kBorder,
                      ground->Bounds().right - kDialogEdge - kBorder - B_V_SCROLL_BAR_WIDTH,
                      BoxTop(*ground) - kGap - kBorder);
    fList = new BListView(frame, "programs", B_SINGLE_SELECTION_LIST, B_FOLLOW_ALL_SIDES);
    const char* program = nullptr;
    const char* signature = nullptr;
    for (int32 index = 0; notOpened.FindString("program", index, &program) == B_OK &&
                          notOpened.FindString("signature", index, &signature) == B_OK;
         index++) {
        fRows.push_back(std::make_unique<BStringItem>(program));
        fSignatures.emplace_back(signature);
        fList->AddItem(fRows.back().get());
    }
    fList->SetInvocationMessage(new BMessage(kProgramChosen));
    ground->AddChild(new BScrollView("scroll", fList, B_FOLLOW_ALL_SIDES, 0, false, true));
    fList->SetTarget(this);
    fList->Select(0);
}

void OpenWithWin::AddAnswers(BView* ground, const BMessage& notOpened)
{
    const BRect bounds = ground->Bounds();
    const std::string kind = notOpened.GetString("kind", "");
    const std::string label =
        "Always for files of this kind" + (kind.empty() ? kind : " (" + kind + ")");
    const float top = BoxTop(*ground);
    fAlways =
        new BCheckBox(BRect(kDialogEdge, top, bounds.right - kDialogEdge, top + LineHeight() + 3),
                      "always", label.c_str(), nullptr, B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM);
    ground->AddChild(fAlways);
    const float width = std::max(ButtonWidth("Open"), ButtonWidth("Cancel"));
    float right = bounds.right - kDialogEdge - kDefaultMark;
    // From the right, but worked through from the left by Tab.
    BButton* open = nullptr;
    BButton* cancel = nullptr;
    for (BButton** button : {&open, &cancel}) {
        const bool isOpen = button == &open;
        const BRect frame(right - width, ButtonsTop(*ground), right,
                          ButtonsTop(*ground) + ButtonHeight());
        *button = new BButton(frame, isOpen ? "open" : "cancel", isOpen ? "Open" : "Cancel",
                              new BMessage(isOpen ? uint32(kProgramChosen) : B_QUIT_REQUESTED),
                              B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM);
        right -= width + kGap + 2 * kDefaultMark;
    }
    for (BButton* button : {cancel, open}) {
        ground->AddChild(button);
        button->SetTarget(this);
    }
    open->MakeDefault(true);
}

void OpenWithWin::MessageReceived(BMessage* message)
{
    if (message->what == kProgramChosen) {
        Open();
    } else {
        BWindow::MessageReceived(message);
    }
}

void OpenWithWin::Open()
{
    const int32 chosen = fList->CurrentSelection();
    if (chosen < 0) {
        return;
    }
    OpenByProgram(fFile, fSignatures[static_cast<size_t>(chosen)],
                  fAlways->Value() == B_CONTROL_ON ? fType : "", fOwner);
    PostMessage(B_QUIT_REQUESTED);
}

} // namespace norvane
