#include "MenuSession.h"

#include "MenuPlacement.h"
#include "PopUpHost.h"
#include "interface/views/WindowAccess.h"

#include "server/InputMessages.h"

#include <AppDefs.h>
#include <MenuBar.h>
#include <Message.h>
#include <OS.h>
#include <String.h>
#include <Window.h>

#include <algorithm>

namespace kits {

namespace {

constexpr float kWheelStep = 19; // one item

bigtime_t WhenOf(const BMessage& message)
{
    int64 when = 0;
    return message.FindInt64("when", &when) == B_OK ? when : system_time();
}

// The start of the label that a typed character is compared with, in the same case.
bool StartsWith(const char* label, const char* letter)
{
    const BString typed = BString(letter).ToLower();
    BString start(label);
    start.ToLower();
    return typed.Length() > 0 && start.Compare(typed, typed.Length()) == 0;
}

} // namespace

MenuSession::MenuSession(BMenuBar& bar) : fBar(bar), fWindow(bar.Window()), fTracker(*this) {}

MenuSession::~MenuSession()
{
    LetGo();
}

void MenuSession::StartByPress(const BMessage& press, int32 title)
{
    press.FindPoint("screen_where", &fPointer);
    fIsButtonDown = true;
    Begin();
    fTracker.StartByPress(title, fPointer, WhenOf(press));
}

void MenuSession::StartByKey()
{
    Begin();
    fTracker.StartByKey();
}

void MenuSession::Cancel()
{
    fTracker.Cancel();
}

void MenuSession::Begin()
{
    fLevels.clear();
    Level bar;
    bar.menu = &fBar;
    bar.frame = fBar.ConvertToScreen(fBar.Bounds());
    fLevels.push_back(std::move(bar));
    fIsHoldingInput = true;
    SetInterceptor(fWindow, this);
    WindowAccess::SetMouseCapture(fWindow, true);
}

// Gives the input back.
void MenuSession::LetGo()
{
    if (!fIsHoldingInput) {
        return;
    }
    fIsHoldingInput = false;
    fLevels.clear();
    WindowAccess::SetMouseCapture(fWindow, false);
    SetInterceptor(fWindow, nullptr);
}

// Input

bool MenuSession::Intercept(BMessage* message)
{
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
    case B_KEY_UP:
    case B_UNMAPPED_KEY_DOWN:
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
        if (key == B_F10_KEY) {
            fTracker.Cancel();
        }
        return;
    }
    fTracker.Key(bytes);
}

// MenuTracker::Menus

int32 MenuSession::CountItems(int32 level) const
{
    return At(level).menu->CountItems();
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
    const int32 count = CountItems(level);
    int32 byLabel = -1;
    for (int32 step = 1; step <= count; step++) {
        const int32 index = (std::max(item, -1) + step + count) % count;
        const BMenuItem* candidate = ItemAt(level, index);
        if (!candidate->CanWork()) {
            continue;
        }
        const char trigger[2] = {candidate->Trigger(), '\0'};
        if (trigger[0] != '\0' && At(level).menu->AreTriggersEnabled() &&
            StartsWith(trigger, letter)) {
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
    BMenuItem* selected = ItemAt(level, item);
    At(level).menu->SelectItem(selected);
    if (level > 0 && selected != nullptr) {
        ScrollToItem(level, selected);
    }
}

void MenuSession::Open(int32 level, int32 item)
{
    const BMenuItem* opener = ItemAt(level, item);
    Level opened;
    opened.menu = opener->Submenu();
    float width = 0;
    float height = 0;
    opened.menu->GetPreferredSize(&width, &height);
    const BRect hook = ScreenFrame(level, opener);
    const WindowServer& server = WindowServer::Get();
    opened.frame =
        PlaceMenu(hook, width, height, server.AvailableFrame(server.ScreenOf(hook)),
                  level == 0 ? MenuSide::kBelow : MenuSide::kRight);
    opened.menu->SelectItem(nullptr);
    opened.menu->MoveTo(0, 0);
    opened.menu->ResizeTo(opened.frame.Width(), opened.frame.Height());
    opened.host = std::make_unique<PopUpHost>(fWindow, opened.menu, opened.frame);
    opened.host->Show();
    fLevels.push_back(std::move(opened));
}

void MenuSession::CloseAbove(int32 level)
{
    while (static_cast<int32>(fLevels.size()) > level + 1) {
        Level& top = fLevels.back();
        top.menu->SelectItem(nullptr);
        top.menu->ScrollTo(B_ORIGIN);
        top.host->Hide();
        fLevels.pop_back();
    }
}

void MenuSession::Choose(int32 level, int32 item)
{
    BMenuItem* chosen = ItemAt(level, item);
    End();
    chosen->Invoke();
}

void MenuSession::End()
{
    CloseAbove(0);
    fBar.SelectItem(nullptr);
    if (!fIsButtonDown) {
        LetGo();
    }
}

BMenuItem* MenuSession::ItemAt(int32 level, int32 item) const
{
    return level >= 0 && level < static_cast<int32>(fLevels.size()) ? At(level).menu->ItemAt(item)
                                                                    : nullptr;
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
    if (fLevels.size() < 2) {
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
