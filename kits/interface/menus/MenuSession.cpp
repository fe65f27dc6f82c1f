#include "MenuSession.h"

#include "interface/views/PopUpHost.h"
#include "interface/views/WindowAccess.h"
#include "interface/views/WindowState.h"

#include "server/InputMessages.h"
#include "server/WindowServer.h"

#include <AppDefs.h>
#include <Menu.h>
#include <Message.h>
#include <OS.h>
#include <String.h>
#include <Window.h>

#include <algorithm>
#include <utility>

namespace kits {

namespace {

constexpr float kWheelStep = 19; // one item
constexpr int32 kMenuKey = 0x68;

// The start of the label that a typed character is compared with, in the same case.
bool StartsWith(const char* label, const char* letter)
{
    const BString typed = BString(letter).ToLower();
    BString start(label);
    start.ToLower();
    return typed.Length() > 0 && start.Compare(typed, typed.Length()) == 0;
}

} // namespace

MenuSession::MenuSession(BWindow* window) : fWindow(window), fTracker(*this) {}

MenuSession::~MenuSession()
{
    Abandon();
}

bigtime_t MenuSession::WhenOf(const BMessage& message)
{
    int64 when = 0;
    return message.FindInt64("when", &when) == B_OK ? when : system_time();
}

// The room for menus on the screen that a rectangle is on.
BRect MenuSession::ScreenAround(BRect anchor)
{
    const WindowServer& server = WindowServer::Get();
    return server.AvailableFrame(server.ScreenOf(anchor));
}

// The menu that opens by a key is led by keys, until a person moves the pointer.
void MenuSession::LetPointerRest()
{
    fIsResting = true;
    fRestsAt = WindowServer::Get().PointerPlace();
}

bool MenuSession::Rests(const BMessage& move)
{
    if (!fIsResting || move.what != B_MOUSE_MOVED) {
        fIsResting = false;
        return false;
    }
    // That a window came below it is no movement, wherever it was last seen.
    const bool isEntered = move.GetInt32("be:transit", B_INSIDE_VIEW) == B_ENTERED_VIEW;
    fRestsAt = isEntered ? fPointer : fRestsAt;
    fIsResting = fPointer == fRestsAt;
    return fIsResting;
}

void MenuSession::Close()
{
    const auto alive = weak_from_this().lock();
    fTracker.Cancel();
}

// A menu that hangs nowhere may outlive the window.
void MenuSession::Cancel()
{
    if (fIsPopUp) {
        Abandon();
    } else {
        Close();
    }
}

void MenuSession::Abandon()
{
    const auto alive = weak_from_this().lock();
    fNext = nullptr;
    fIsButtonDown = false;
    fTracker.Cancel();
    End();
}

// The window may set up its menus now; what it changes closes nothing yet.
void MenuSession::Begin()
{
    fHasBegun = true;
    fIsHoldingInput = true;
    SetInterceptor(fWindow, this);
    WindowAccess::SetMouseCapture(fWindow, true);
    fWindow->MenusBeginning();
}

void MenuSession::BeginAtBar(BMenu& bar)
{
    Level level;
    level.menu = &bar;
    bar.fShownBy = this;
    fLevels.push_back(std::move(level));
    Begin();
    if (fHasBegun) {
        fLevels.front().frame = bar.ConvertToScreen(bar.Bounds());
    }
}

// Gives the input back.
void MenuSession::LetGo()
{
    if (!fIsHoldingInput) {
        return;
    }
    fIsHoldingInput = false;
    // Unless other menus have it by now.
    if (WindowAccess::State(*fWindow).interceptor == this) {
        WindowAccess::SetMouseCapture(fWindow, false);
        SetInterceptor(fWindow, nullptr);
    }
}

void MenuSession::MenuChanges()
{
    Close();
}

void MenuSession::ItemLeaves(const BMenuItem* item)
{
    if (fNext == item) {
        fNext = nullptr;
        item->Menu()->fShownBy = nullptr;
    }
    Close();
}

// Input

bool MenuSession::Intercept(BMessage* message)
{
    const auto alive = weak_from_this().lock();
    switch (message->what) {
    case B_MOUSE_DOWN:
    case B_MOUSE_UP:
    case B_MOUSE_MOVED:
        return InterceptMouse(message);
    default:
        return fTracker.IsActive() && InterceptRest(message);
    }
}

bool MenuSession::InterceptMouse(BMessage* message)
{
    int32 buttons = 0;
    message->FindInt32("buttons", &buttons);
    message->FindPoint("screen_where", &fPointer);
    if (!fTracker.IsActive() && (!fIsButtonDown || message->what == B_MOUSE_DOWN)) {
        // The release that was waited for got lost; this press is a new one.
        LetGo();
        return false;
    }
    if (Rests(*message)) {
        return true;
    }
    switch (message->what) {
    case B_MOUSE_DOWN:
        fIsButtonDown = true;
        fTracker.Press(fPointer, WhenOf(*message));
        break;
    case B_MOUSE_MOVED:
        fTracker.Move(fPointer);
        break;
    default:
        if (buttons == 0) {
            fIsButtonDown = false;
            fTracker.Release(fPointer, WhenOf(*message));
        }
    }
    if (!fTracker.IsActive() && !fIsButtonDown) {
        LetGo();
    }
    return true;
}

bool MenuSession::InterceptRest(BMessage* message)
{
    const char* bytes = nullptr;
    float turned = 0;
    switch (message->what) {
    case B_KEY_DOWN:
        message->FindString("bytes", &bytes);
        Key(*message, bytes);
        return true;
    case B_MODIFIERS_CHANGED:
        // Alt alone leaves as it entered.
        if (message->GetBool("kits:alt_alone", false)) {
            fTracker.Cancel();
            return true;
        }
        return false;
    case B_UNMAPPED_KEY_DOWN:
        // So does the Menu key.
        if (message->GetInt32("key", 0) == kMenuKey && !message->HasInt32("be:key_repeat")) {
            fTracker.Cancel();
        }
        return true;
    case B_KEY_UP:
    case B_UNMAPPED_KEY_UP:
        return true;
    case B_MOUSE_WHEEL_CHANGED:
        message->FindFloat("be:wheel_delta_y", &turned);
        ScrollBy(turned * kWheelStep);
        return true;
    case B_WINDOW_ACTIVATED:
        if (!message->GetBool("active", true)) {
            fTracker.Cancel();
        }
        return false;
    case kFrameChanged:
    case B_MINIMIZE:
    case B_ZOOM:
    case B_QUIT_REQUESTED:
    case B_SCREEN_CHANGED:
    case kScaleChanged:
    case kCaptureLost:
        fTracker.Cancel();
        return false;
    default:
        return false;
    }
}

void MenuSession::Key(const BMessage& message, const char* bytes)
{
    int32 key = 0;
    message.FindInt32("key", &key);
    if (bytes != nullptr && bytes[0] == B_FUNCTION_KEY) {
        // F10 leaves as it entered; the other function keys do nothing meanwhile.
        if (key == B_F10_KEY && !message.HasInt32("be:key_repeat")) {
            fTracker.Cancel();
        }
        return;
    }
    fTracker.Key(bytes);
}

// MenuTracker::Menus

int32 MenuSession::CountItems(int32 level) const
{
    const BMenu* menu = MenuAt(level);
    return menu != nullptr ? menu->CountItems() : 0;
}

bool MenuSession::IsEnabled(int32 level, int32 item) const
{
    const BMenuItem* found = ItemAt(level, item);
    return found != nullptr && found->CanWork();
}

bool MenuSession::HasSubmenu(int32 level, int32 item) const
{
    const BMenuItem* found = ItemAt(level, item);
    return found != nullptr && found->Submenu() != nullptr;
}

MenuTracker::Place MenuSession::PlaceAt(BPoint screen) const
{
    for (auto level = static_cast<int32>(fLevels.size()) - 1; level >= 0; level--) {
        const Level& at = At(level);
        if (!at.frame.Contains(screen)) {
            continue;
        }
        const BPoint inside = screen - at.frame.LeftTop() + at.menu->Bounds().LeftTop();
        return {level, at.menu->IndexOf(at.menu->ItemUnder(inside))};
    }
    return {};
}

int32 MenuSession::FindByLetter(int32 level, int32 item, const char* letter, bool* isTrigger) const
{
    *isTrigger = false;
    const BMenu* menu = MenuAt(level);
    return menu != nullptr ? FindByLetter(*menu, item, letter, isTrigger) : -1;
}

int32 MenuSession::FindByLetter(const BMenu& menu, int32 item, const char* letter, bool* isTrigger)
{
    *isTrigger = false;
    const int32 count = menu.CountItems();
    int32 byLabel = -1;
    for (int32 step = 1; step <= count; step++) {
        const int32 index = (std::max(item, -1) + step + count) % count;
        const BMenuItem* candidate = menu.ItemAt(index);
        if (!candidate->CanWork()) {
            continue;
        }
        const char trigger[2] = {candidate->Trigger(), '\0'};
        if (trigger[0] != '\0' && menu.AreTriggersEnabled() && StartsWith(trigger, letter)) {
            *isTrigger = true;
            return index;
        }
        if (byLabel < 0 && StartsWith(candidate->Label(), letter)) {
            byLabel = index;
        }
    }
    return byLabel;
}

void MenuSession::Select(int32 level, int32 item)
{
    BMenu* menu = MenuAt(level);
    if (menu == nullptr) {
        return;
    }
    BMenuItem* selected = ItemAt(level, item);
    menu->SelectItem(selected);
    // Unless a hook of the items has ended it all.
    if (MenuAt(level) == menu && At(level).host != nullptr && selected != nullptr) {
        ScrollToItem(level, selected);
    }
}

void MenuSession::Open(int32 level, int32 item)
{
    const BMenuItem* opener = ItemAt(level, item);
    if (opener != nullptr && opener->Submenu() != nullptr) {
        const bool isOfBar = At(level).host == nullptr;
        Show(*opener->Submenu(), ScreenFrame(level, opener),
             isOfBar ? MenuSide::kBelow : MenuSide::kRight);
    }
}

void MenuSession::Show(BMenu& menu, BRect anchor, MenuSide side)
{
    float width = 0;
    float height = 0;
    menu.GetPreferredSize(&width, &height);
    ShowAt(menu, PlaceMenu(anchor, width, height, ScreenAround(anchor), side));
}

void MenuSession::ShowAt(BMenu& menu, BRect frame)
{
    Level opened;
    opened.menu = &menu;
    opened.frame = frame;
    menu.SelectItem(nullptr);
    menu.MoveTo(0, 0);
    menu.ResizeTo(frame.Width(), frame.Height());
    opened.host = std::make_unique<PopUpHost>(fWindow, &menu, frame);
    opened.host->Show();
    menu.fShownBy = this;
    fLevels.push_back(std::move(opened));
}

void MenuSession::CloseAbove(int32 level)
{
    while (static_cast<int32>(fLevels.size()) > level + 1) {
        CloseTop();
    }
}

void MenuSession::CloseTop()
{
    Level top = std::move(fLevels.back());
    fLevels.pop_back();
    if (top.host != nullptr) {
        top.menu->ScrollTo(B_ORIGIN);
        top.host.reset();
    }
    if (fNext == nullptr || fNext->Menu() != top.menu) {
        top.menu->fShownBy = nullptr;
    }
    top.menu->SelectItem(nullptr); // calls hooks, so it comes last
}

// The menu of what is chosen goes on telling of changes until the item has done its work.
void MenuSession::Choose(int32 level, int32 item)
{
    fNext = ItemAt(level, item);
    CloseAbove(-1);
    if (!fIsButtonDown) {
        LetGo();
    }
    if (fNext != nullptr) {
        BMenuItem* chosen = std::exchange(fNext, nullptr);
        chosen->Menu()->fShownBy = nullptr;
        fChosen = chosen;
        if (fIsPopUp && !chosen->Messenger().IsValid()) {
            chosen->SetTarget(fWindow); // its menu hangs in no window any more
        }
        if (fIsToInvoke) {
            chosen->Invoke();
        }
    }
    End();
}

void MenuSession::End()
{
    CloseAbove(-1);
    if (!fIsButtonDown) {
        LetGo();
    }
    if (std::exchange(fHasBegun, false)) {
        fWindow->MenusEnded();
    }
    if (const auto atEnd = std::exchange(fAtEnd, nullptr)) {
        atEnd(fChosen); // may delete the menu
    }
}

BMenu* MenuSession::MenuAt(int32 level) const
{
    return level >= 0 && level < static_cast<int32>(fLevels.size()) ? At(level).menu : nullptr;
}

BMenuItem* MenuSession::ItemAt(int32 level, int32 item) const
{
    const BMenu* menu = MenuAt(level);
    return menu != nullptr ? menu->ItemAt(item) : nullptr;
}

BRect MenuSession::ScreenFrame(int32 level, const BMenuItem* item) const
{
    const Level& at = At(level);
    BRect frame = item->Frame();
    frame.OffsetBy(at.frame.LeftTop() - at.menu->Bounds().LeftTop());
    return frame;
}

// A menu that is taller than the screen shows the part around its current item.
void MenuSession::ScrollToItem(int32 level, const BMenuItem* item)
{
    BMenu* menu = At(level).menu;
    const BRect seen = menu->Bounds();
    const BRect frame = item->Frame();
    if (frame.top < seen.top) {
        menu->ScrollTo(BPoint(0, std::max(0.0f, frame.top - 1)));
    } else if (frame.bottom > seen.bottom) {
        menu->ScrollTo(BPoint(0, frame.bottom + 1 - seen.Height()));
    }
}

void MenuSession::ScrollBy(float distance)
{
    if (fLevels.empty() || fLevels.back().host == nullptr) {
        return;
    }
    BMenu* menu = fLevels.back().menu;
    float width = 0;
    float height = 0;
    menu->GetPreferredSize(&width, &height);
    const BRect seen = menu->Bounds();
    const float last = std::max(0.0f, height - seen.Height());
    const float top = std::clamp(seen.top + distance, 0.0f, last);
    if (top != seen.top) {
        menu->ScrollTo(BPoint(0, top));
        fTracker.Move(fPointer);
    }
}

} // namespace kits
