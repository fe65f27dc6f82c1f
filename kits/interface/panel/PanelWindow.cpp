#include "PanelWindow.h"

#include "PanelLink.h"
#include "PanelList.h"
#include "PanelMemory.h"
#include "kernel/WorkerThread.h"

#include <Button.h>
#include <FilePanel.h>
#include <Font.h>
#include <ListView.h>
#include <Menu.h>
#include <MenuField.h>
#include <MenuItem.h>
#include <PopUpMenu.h>
#include <Screen.h>
#include <ScrollView.h>
#include <StringView.h>
#include <TextControl.h>
#include <TextView.h>

#include <sys/stat.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace kits {

namespace {

constexpr uint32 kTyped = 'PFty';
constexpr uint32 kOpenPressed = 'PFop';
constexpr uint32 kCancelPressed = 'PFca';
constexpr uint32 kInvoked = 'PFin';
constexpr uint32 kSelected = 'PFse';
constexpr uint32 kPlaceChosen = 'PFpl';

constexpr rgb_color kGrey = {216, 216, 216, 255};
constexpr float kEdge = 8;
constexpr float kGap = 6;
constexpr float kFieldPadding = 6;
constexpr float kButtonPadding = 28;
constexpr BRect kFrame(100, 100, 560, 460);

float LineHeight()
{
    font_height height;
    be_plain_font->GetHeight(&height);
    return std::ceil(height.ascent) + std::ceil(height.descent);
}

const char* ReasonText(status_t status)
{
    switch (status) {
    case B_ENTRY_NOT_FOUND:
    case B_NOT_A_DIRECTORY:
        return "there is nothing of this name.";
    case B_PERMISSION_DENIED:
    case B_NOT_ALLOWED:
        return "you may not read it.";
    case B_NAME_TOO_LONG:
        return "the name is too long.";
    case B_LINK_LIMIT:
        return "its links lead in a circle.";
    default:
        return "reading failed.";
    }
}

std::string NameOf(const std::string& path)
{
    return path == "/" ? path : path.substr(path.rfind('/') + 1);
}

} // namespace

bool PanelWindow::Make(const std::shared_ptr<PanelLink>& link)
{
    if (link->With([](const PanelLink::State& state) { return state.window != nullptr; })) {
        return true;
    }
    auto* window = new PanelWindow(link); // ended by the panel, or with the program
    const BMessenger messenger(window);
    const bool isFirst = link->With([&](PanelLink::State& state) {
        if (state.window != nullptr) {
            return false; // a hook has made one meanwhile
        }
        state.window = window;
        state.toWindow = messenger;
        state.asked = 0;
        return true;
    });
    if (!isFirst) {
        window->Quit();
        return true;
    }
    if (window->Run() < B_OK) {
        window->Quit();
        return false;
    }
    return true;
}

PanelWindow::PanelWindow(std::shared_ptr<PanelLink> link)
    : BWindow(kFrame, "Open", B_TITLED_WINDOW_LOOK,
              link->Settings().isModal ? B_MODAL_APP_WINDOW_FEEL : B_NORMAL_WINDOW_FEEL,
              B_ASYNCHRONOUS_CONTROLS),
      fLink(std::move(link))
{
    AddViews();
    const auto [title, frame] = fLink->With(
        [](const PanelLink::State& state) { return std::pair(state.title, state.frame); });
    const float line = LineHeight();
    SetSizeLimits(260, 10'000, 6 * line + 6 * kEdge + 80, 10'000);
    SetTitle(title.c_str());
    if (frame.IsValid()) {
        MoveTo(frame.LeftTop());
        ResizeTo(frame.Width(), frame.Height());
    } else {
        CenterIn(BScreen().Frame());
    }
}

PanelWindow::~PanelWindow()
{
    LeavePanel();
}

void PanelWindow::Quit()
{
    LeavePanel();
    BWindow::Quit();
}

/// The window ends; the panel makes another when it is to be shown again. Whether it was shown.
bool PanelWindow::LeavePanel()
{
    const bool isGoing = fReading != nullptr && !fGoal.isTyped;
    const std::string path = isGoing ? fGoal.path : fShown;
    const std::string title = Title();
    const BRect frame = Frame();
    return fLink->With([&](PanelLink::State& state) {
        if (state.window != this) {
            return false;
        }
        state.window = nullptr;
        state.title = title;
        state.frame = frame;
        state.asked = 0;
        if (!state.wished.has_value()) {
            state.wished = path;
        }
        return std::exchange(state.isShowing, false);
    });
}

void PanelWindow::TakeWishes()
{
    const auto [labels, wished] = fLink->With([](PanelLink::State& state) {
        return std::pair(state.labels, std::exchange(state.wished, std::nullopt));
    });
    SetButtonLabel(fCancel, labels[B_CANCEL_BUTTON].c_str());
    SetButtonLabel(fOpen, labels[B_DEFAULT_BUTTON].c_str());
    if (wished.has_value()) {
        GoTo({.path = *wished});
    }
}

void PanelWindow::AddViews()
{
    auto* ground = new BView(Bounds(), "ground", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
    ground->SetViewColor(kGrey);
    ground->SetLowColor(kGrey);
    AddChild(ground); // adopted, as all below
    const float row = LineHeight() + kFieldPadding;
    const BRect bounds = Bounds();
    AddPlaces();
    float placesRight = kEdge;
    if (BView* places = FindView("Places")) {
        placesRight = places->Frame().right + kGap;
    }
    fPath = new BStringView(BRect(placesRight, kEdge, bounds.right - kEdge, kEdge + row), "Path",
                            "", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP);
    fPath->SetTruncation(B_TRUNCATE_BEGINNING);
    ground->AddChild(fPath);
    const float buttonsTop = bounds.bottom - kEdge - row - kFieldPadding;
    const float fieldTop = buttonsTop - kGap - row;
    const BRect inside(kEdge + 2, kEdge + row + kGap + 2,
                       bounds.right - kEdge - 2 - B_V_SCROLL_BAR_WIDTH, fieldTop - kGap - 2);
    fList = new PanelList(inside, fLink->Settings().takesSeveral ? B_MULTIPLE_SELECTION_LIST
                                                                 : B_SINGLE_SELECTION_LIST);
    fList->SetInvocationMessage(new BMessage(kInvoked));
    fList->SetSelectionMessage(new BMessage(kSelected));
    ground->AddChild(
        new BScrollView("List", fList, B_FOLLOW_ALL_SIDES, 0, false, true, B_FANCY_BORDER));
    fField = new BTextControl(BRect(kEdge, fieldTop, bounds.right - kEdge, fieldTop + row), "Name",
                              "Name:", "", nullptr, B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM);
    fField->SetDivider(std::ceil(be_plain_font->StringWidth("Name:")) + kGap);
    fField->SetModificationMessage(new BMessage(kTyped));
    ground->AddChild(fField);
    AddButtons(bounds.bottom - kEdge);
    fField->MakeFocus(true);
}

void PanelWindow::AddButtons(float bottom)
{
    BView* ground = FindView("ground");
    const float height = LineHeight() + 2 * kFieldPadding;
    float right = Bounds().right - kEdge;
    const auto add = [&](const char* name, const char* label, uint32 what) {
        const float width = std::ceil(be_plain_font->StringWidth(label)) + kButtonPadding;
        auto* button = new BButton(BRect(right - width, bottom - height, right, bottom), name,
                                   label, new BMessage(what), B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM);
        ground->AddChild(button);
        right -= width + kEdge;
        return button;
    };
    fOpen = add("default button", "Open", kOpenPressed);
    fCancel = add("cancel button", "Cancel", kCancelPressed);
    SetDefaultButton(fOpen);
}

void PanelWindow::AddPlaces()
{
    const float row = LineHeight() + kFieldPadding;
    auto* menu = new BPopUpMenu("Places", false, false);
    auto* field =
        new BMenuField(BRect(kEdge, kEdge, kEdge + 10, kEdge + row), "Places", nullptr, menu);
    FindView("ground")->AddChild(field);
    float width = 0;
    float height = 0;
    field->GetPreferredSize(&width, &height);
    field->ResizeTo(width, row);
    fPlaces = menu;
}

/// Entries of the menu: the folders above the one shown are added to what the system has.
void PanelWindow::ChangePlaces(const std::vector<std::string>& places)
{
    while (BMenuItem* item = fPlaces->RemoveItem(int32(0))) {
        delete item;
    }
    for (const std::string& place : places) {
        if (place.empty()) {
            fPlaces->AddSeparatorItem();
            continue;
        }
        auto message = std::make_unique<BMessage>(kPlaceChosen);
        message->AddString("path", place.c_str());
        fPlaces->AddItem(new BMenuItem(NameOf(place).c_str(), message.release())); // adopted
    }
    fPlaces->SetTargetForItems(this);
}

// Coming and going

void PanelWindow::Open()
{
    TakeWishes();
    if (fReading == nullptr && fShown.empty()) {
        GoTo({});
    }
    if (IsHidden()) {
        Show();
    }
    Activate();
    fField->MakeFocus(true);
}

/// Takes it from the screen, sends the message, null for none, and tells the panel last: its hook
/// may delete it.
void PanelWindow::Close(BMessage* message)
{
    const bool wasShown = !IsHidden();
    if (wasShown) {
        Hide();
    }
    if (fGoal.isTyped) {
        fReading.reset(); // nothing is chosen any more
    }
    if (message != nullptr) {
        Send(message);
    }
    if (wasShown) {
        fLink->Call([](BFilePanel& panel) { panel.WasHidden(); });
    }
}

/// A window that ends so is made anew; only the program's end, which waits for an answer, ends it.
bool PanelWindow::QuitRequested()
{
    const BMessage* asking = CurrentMessage();
    if (asking == nullptr || !asking->IsSourceWaiting()) {
        Cancel();
        return false;
    }
    if (LeavePanel()) {
        CloseCancelled();
    } else {
        Close(nullptr);
    }
    return true;
}

void PanelWindow::Cancel()
{
    if (!IsHidden()) {
        fLink->NoteShowing(this, false, false);
        CloseCancelled();
    }
}

void PanelWindow::CloseCancelled()
{
    BMessage message(B_CANCEL);
    fLink->With([&](const PanelLink::State& state) {
        message.AddInt32("old_what", static_cast<int32>(state.message.what));
    });
    fLink->Call([&](BFilePanel& panel) { message.AddPointer("source", &panel); });
    Close(&message);
}

void PanelWindow::Send(BMessage* message)
{
    const BMessenger target =
        fLink->With([](const PanelLink::State& state) { return state.target; });
    fLink->Call([&](BFilePanel& panel) { panel.SendMessage(&target, message); });
}

void PanelWindow::GoTo(Goal goal)
{
    fGoal = std::move(goal);
    std::string& path = fGoal.path;
    if (!path.empty() && path[0] != '/' && path != "~" && !path.starts_with("~/")) {
        path = fShown + "/" + path;
    }
    fReading = std::make_unique<PanelReading>(path, fLink, BMessenger(nullptr, this));
    TakeFolder(); // without a thread it is here already
}

/// What is being read is read again, as it was asked for.
void PanelWindow::Refresh()
{
    if (fReading != nullptr) {
        GoTo(Goal(fGoal));
    } else if (!fShown.empty()) {
        GoTo({.path = fShown});
    }
}

void PanelWindow::Up()
{
    if (!fShown.empty() && fShown != "/") {
        const std::string above = fShown.substr(0, std::max<size_t>(fShown.rfind('/'), 1));
        GoTo({.path = above, .left = NameOf(fShown)});
    }
}

void PanelWindow::TakeFolder()
{
    std::unique_ptr<PanelFolder> folder = fReading != nullptr ? fReading->Take() : nullptr;
    if (folder == nullptr) {
        return;
    }
    fReading.reset();
    if (folder->isFile) {
        TakeFile(*folder);
        return;
    }
    if (folder->path.empty()) { // not even found: what is shown stays
        Say(std::string("This cannot be opened: ").append(ReasonText(folder->status)));
        if (fShown.empty() && !std::exchange(fIsLost, true)) {
            GoTo({});
        }
        return;
    }
    ShowFolder(std::move(folder));
}

/// A file was named where a folder could be.
void PanelWindow::TakeFile(const PanelFolder& file)
{
    if (fGoal.isTyped && file.isPassed && MayChoose({file.chosen, S_IFREG})) {
        Choose({file.chosen}, file.path);
    } else if (fShown.empty()) {
        GoTo({.path = file.path});
    } else {
        Say("This is no folder, and no file that can be chosen here.");
    }
}

void PanelWindow::ShowFolder(std::unique_ptr<PanelFolder> folder)
{
    const bool isOther = folder->path != fShown;
    const status_t status = folder->status;
    fShown = folder->path;
    fLink->With([&](PanelLink::State& state) { state.folder = folder->ref; });
    fPath->SetText(fShown.c_str());
    ChangePlaces(folder->places);
    if (isOther || fGoal.isTyped) { // not what is typed while the same folder is read again
        fField->SetText("");
    }
    fTyped = fField->Text();
    int32 selected = 0;
    const std::string left = fGoal.left;
    for (size_t i = 0; i < folder->entries.size() && !left.empty(); ++i) {
        if (left == folder->entries[i].ref.name) {
            selected = static_cast<int32>(i);
        }
    }
    fList->SetTo(std::move(folder));
    fList->Select(selected);
    fList->ScrollToSelection();
    if (status != B_OK) {
        Say(std::string("This folder cannot be read: ").append(ReasonText(status)));
    } else if (fField->TextLength() > 0) {
        fList->Filter(IsPathTyped() ? "" : fField->Text());
    }
    TellSelection();
}

void PanelWindow::Say(const std::string& remark)
{
    if (fList->CountItems() > 0) {
        fPath->SetText(remark.c_str());
    } else {
        fList->SetRemark(remark);
    }
}

void PanelWindow::SetButtonLabel(BButton* changed, const char* label)
{
    const float width = std::ceil(be_plain_font->StringWidth(label)) + kButtonPadding;
    const float more = width - changed->Bounds().Width();
    changed->SetLabel(label);
    changed->MoveBy(-more, 0);
    changed->ResizeBy(more, 0);
    if (changed == fOpen) {
        fCancel->MoveBy(-more, 0);
    }
}

// Messages

void PanelWindow::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case kPanelFolderRead:
        TakeFolder();
        break;
    case kTyped:
        CatchUp();
        break;
    case kSelected:
        TellSelection();
        break;
    case kInvoked:
        Accept(false);
        break;
    case kOpenPressed:
        Accept(true);
        break;
    case kCancelPressed:
        Cancel();
        break;
    case kPlaceChosen:
        GoTo({.path = message->GetString("path", "/")});
        fField->MakeFocus(true);
        break;
    case kPanelShow:
        fLink->NoteShowing(this, true, true);
        Open();
        break;
    case kPanelHide:
        fLink->NoteShowing(this, false, true);
        Close(nullptr);
        break;
    case kPanelRefresh:
        Refresh();
        break;
    case kPanelWished:
        TakeWishes();
        break;
    case kPanelEnd:
        Quit();
        break;
    default:
        BWindow::MessageReceived(message);
    }
}

} // namespace kits
