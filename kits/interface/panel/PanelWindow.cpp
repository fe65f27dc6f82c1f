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

PanelWindow::PanelWindow(std::shared_ptr<PanelLink> link, Settings settings)
    : BWindow(kFrame, "Open", B_TITLED_WINDOW_LOOK,
              settings.isModal ? B_MODAL_APP_WINDOW_FEEL : B_NORMAL_WINDOW_FEEL,
              B_ASYNCHRONOUS_CONTROLS),
      fLink(std::move(link)), fSettings(settings)
{
    AddViews();
    CenterIn(BScreen().Frame());
    const float line = LineHeight();
    SetSizeLimits(260, 10'000, 6 * line + 6 * kEdge + 80, 10'000);
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
    fList = new PanelList(inside, fSettings.takesSeveral ? B_MULTIPLE_SELECTION_LIST
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
    if (fReading == nullptr && fShown.empty()) {
        GoTo("");
    }
    if (IsHidden()) {
        Show();
    }
    Activate();
    fField->MakeFocus(true);
}

void PanelWindow::Close()
{
    fLink->With([](PanelLink::State& state) { state.isShowing = false; });
    if (!IsHidden()) {
        Hide();
        fLink->Call([](BFilePanel& panel) { panel.WasHidden(); });
    }
}

/// The panel ends its window itself. Only the program's end, which waits for an answer, does too.
bool PanelWindow::QuitRequested()
{
    const BMessage* asking = CurrentMessage();
    if (asking != nullptr && asking->IsSourceWaiting()) {
        fLink->With([](PanelLink::State& state) { state.isShowing = false; });
        return true;
    }
    Cancel();
    return false;
}

void PanelWindow::Cancel()
{
    BMessage message(B_CANCEL);
    fLink->With([&](const PanelLink::State& state) {
        message.AddInt32("old_what", static_cast<int32>(state.message.what));
    });
    fLink->Call([&](BFilePanel& panel) { message.AddPointer("source", &panel); });
    Close();
    Send(&message);
}

void PanelWindow::Send(BMessage* message)
{
    const BMessenger target =
        fLink->With([](const PanelLink::State& state) { return state.target; });
    fLink->Call([&](BFilePanel& panel) { panel.SendMessage(&target, message); });
}

void PanelWindow::GoTo(const std::string& path, bool isTyped)
{
    fIsTyped = isTyped;
    fReading = std::make_unique<PanelReading>(path, fShown, fLink, BMessenger(nullptr, this));
    TakeFolder(); // without a thread it is here already
}

void PanelWindow::Refresh()
{
    if (!fShown.empty()) {
        GoTo(fShown);
    }
}

void PanelWindow::Up()
{
    if (!fShown.empty() && fShown != "/") {
        fCameFrom = NameOf(fShown);
        GoTo(fShown.substr(0, std::max<size_t>(fShown.rfind('/'), 1)));
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
            GoTo("");
        }
        return;
    }
    ShowFolder(std::move(folder));
}

/// A file was named where a folder could be.
void PanelWindow::TakeFile(const PanelFolder& file)
{
    if (fIsTyped && file.isPassed && MayChoose({file.chosen, S_IFREG})) {
        Choose({file.chosen}, file.path);
    } else if (fShown.empty()) {
        GoTo(file.path);
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
    if (isOther || fIsTyped) { // not what is typed while the same folder is read again
        fField->SetText("");
    }
    fTyped = fField->Text();
    int32 selected = 0;
    const std::string left = std::exchange(fCameFrom, {});
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

// Choosing

bool PanelWindow::IsPathTyped() const
{
    const char* text = fField->Text();
    return std::strchr(text, '/') != nullptr || std::strcmp(text, "~") == 0;
}

/// Keys may come faster than the field tells of its changes.
void PanelWindow::CatchUp()
{
    if (fTyped != fField->Text()) {
        TypedSomething();
    }
}

void PanelWindow::TypedSomething()
{
    fTyped = fField->Text();
    fPath->SetText(fShown.c_str());
    fList->Filter(IsPathTyped() ? "" : fField->Text());
    TellSelection();
}

const PanelFolder::Entry* PanelWindow::SelectedEntry(int32 place) const
{
    const int32 index = fList->CurrentSelection(place);
    return index >= 0 ? fList->EntryAt(index) : nullptr;
}

void PanelWindow::TellSelection()
{
    std::vector<entry_ref> selected;
    for (int32 i = 0; const PanelFolder::Entry* entry = SelectedEntry(i); ++i) {
        selected.push_back(entry->ref);
    }
    fLink->With([&](PanelLink::State& state) { state.selected = std::move(selected); });
    fLink->Call([](BFilePanel& panel) { panel.SelectionChanged(); });
}

bool PanelWindow::MayChoose(const PanelFolder::Entry& entry) const
{
    const uint32 flavors = fSettings.flavors != 0 ? fSettings.flavors : uint32(B_FILE_NODE);
    return (flavors & (entry.IsFolder() ? B_DIRECTORY_NODE : B_FILE_NODE)) != 0;
}

/// The button chooses a folder where folders are wanted, all else goes into it.
void PanelWindow::Accept(bool byButton)
{
    CatchUp();
    if (IsPathTyped()) {
        GoTo(fField->Text(), true);
        return;
    }
    std::vector<entry_ref> refs;
    const PanelFolder::Entry* first = SelectedEntry(0);
    if (first != nullptr && first->IsFolder() && !(byButton && MayChoose(*first))) {
        GoTo(first->ref.name);
        return;
    }
    for (int32 i = 0; const PanelFolder::Entry* entry = SelectedEntry(i); ++i) {
        if (MayChoose(*entry)) {
            refs.push_back(entry->ref);
        }
    }
    if (refs.empty() && byButton && (fSettings.flavors & B_DIRECTORY_NODE) != 0 &&
        !fShown.empty()) {
        refs.push_back(fLink->With([](const PanelLink::State& state) { return state.folder; }));
    }
    if (!refs.empty()) {
        Choose(refs, fShown);
    }
}

/// They lie in the folder at a path.
void PanelWindow::Choose(const std::vector<entry_ref>& refs, const std::string& folder)
{
    BMessage message = fLink->With([](const PanelLink::State& state) { return state.message; });
    for (const entry_ref& ref : refs) {
        message.AddRef("refs", &ref);
    }
    // Kept for the next panel; when it cannot be, that one begins at home.
    [[maybe_unused]] const status_t status =
        StartDetached("panel memory", [folder] { KeepPanelFolder(folder); });
    if (fLink->With([](const PanelLink::State& state) { return state.hidesWhenDone; })) {
        Close();
    }
    Send(&message);
}

void PanelWindow::SetButtonLabel(int32 button, const char* label)
{
    BButton* changed = button == B_DEFAULT_BUTTON ? fOpen : fCancel;
    const float width = std::ceil(be_plain_font->StringWidth(label)) + kButtonPadding;
    const float more = width - changed->Bounds().Width();
    changed->SetLabel(label);
    changed->MoveBy(-more, 0);
    changed->ResizeBy(more, 0);
    if (changed == fOpen) {
        fCancel->MoveBy(-more, 0);
    }
}

// Messages and keys

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
        GoTo(message->GetString("path", "/"));
        fField->MakeFocus(true);
        break;
    case kPanelShow:
        Open();
        break;
    case kPanelHide:
        Close();
        break;
    case kPanelGoTo:
        GoTo(message->GetString("path", ""));
        break;
    case kPanelRefresh:
        Refresh();
        break;
    case kPanelLabel:
        SetButtonLabel(message->GetInt32("button", 0), message->GetString("label", ""));
        break;
    case kPanelEnd:
        Quit();
        break;
    default:
        BWindow::MessageReceived(message);
    }
}

void PanelWindow::DispatchMessage(BMessage* message, BHandler* target)
{
    if (message->what != B_KEY_DOWN || !TakeKey(*message, target)) {
        BWindow::DispatchMessage(message, target);
    }
}

/// Keys in the field or the list that mean the panel.
bool PanelWindow::TakeKey(const BMessage& key, const BHandler* target)
{
    int8 byte = 0;
    const auto modifiers = static_cast<uint32>(key.GetInt32("modifiers", 0));
    if (key.FindInt8("byte", &byte) != B_OK) {
        return false;
    }
    CatchUp();
    if (byte == B_ESCAPE) {
        if (fField->TextLength() == 0) {
            Cancel();
            return true;
        }
        fField->SetText("");
        TypedSomething();
        fField->MakeFocus(true);
        return true;
    }
    const bool isInField = target == fField->TextView();
    if (!isInField && target != fList) {
        return false;
    }
    switch (byte) {
    case B_ENTER:
        Accept(false);
        return true;
    case B_BACKSPACE:
        if (fField->TextLength() == 0) {
            Up();
            return true;
        }
        return false;
    default:
        return isInField && MoveInList(byte, modifiers);
    }
}

bool PanelWindow::MoveInList(int8 byte, uint32 modifiers)
{
    if (byte == B_UP_ARROW && (modifiers & (B_COMMAND_KEY | B_OPTION_KEY)) != 0) {
        Up();
        return true;
    }
    const bool isEnd = byte == B_HOME || byte == B_END; // a text that is there has its own
    if (byte != B_UP_ARROW && byte != B_DOWN_ARROW && byte != B_PAGE_UP && byte != B_PAGE_DOWN &&
        !(isEnd && fField->TextLength() == 0)) {
        return false;
    }
    const char bytes[2] = {static_cast<char>(byte), '\0'};
    fList->KeyDown(bytes, 1);
    return true;
}

} // namespace kits
