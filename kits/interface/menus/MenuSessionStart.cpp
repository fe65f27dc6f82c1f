#include "MenuSession.h"

#include <AppDefs.h>
#include <InterfaceDefs.h>
#include <Menu.h>
#include <MenuItem.h>
#include <Message.h>
#include <Window.h>

#include <utility>

// How menus are opened.

namespace kits {

void MenuSession::StartByPress(BMenu& bar, const BMessage& press, BMenuItem* title)
{
    const auto alive = weak_from_this().lock();
    press.FindPoint("screen_where", &fPointer);
    fNext = title;
    BeginAtBar(bar);
    const BMenuItem* opened = std::exchange(fNext, nullptr);
    if (opened == nullptr || !opened->CanWork()) {
        End();
        return;
    }
    fIsButtonDown = true;
    fTracker.StartByPress(bar.IndexOf(title), fPointer, WhenOf(press));
}

void MenuSession::StartByKey(BMenu& bar)
{
    const auto alive = weak_from_this().lock();
    BeginAtBar(bar);
    if (fHasBegun) {
        LetPointerRest();
        fTracker.StartByKey();
    }
}

void MenuSession::StartWithoutBar(BMenu& menu, BRect anchor)
{
    const auto alive = weak_from_this().lock();
    Begin();
    if (fHasBegun) {
        Show(menu, anchor, MenuSide::kBelow);
        fTracker.StartWithoutBar();
    }
}

void MenuSession::StartOver(BMenuItem& opener, BPoint label, const BMessage* press)
{
    const auto alive = weak_from_this().lock();
    if (press != nullptr) {
        press->FindPoint("screen_where", &fPointer);
    }
    Begin();
    // The window's hook may have changed the menu, or let the item go, which ended the session.
    if (!fHasBegun || !opener.CanWork()) {
        End();
        return;
    }
    BMenu& menu = *opener.Submenu();
    float width = 0;
    float height = 0;
    menu.GetPreferredSize(&width, &height);
    BMenuItem* current = menu.FindMarked() != nullptr ? menu.FindMarked() : menu.ItemAt(0);
    const BPoint leftTop = label - current->ContentLocation();
    ShowAt(menu, PlaceMenuAt(leftTop, width, height, ScreenAround(BRect(label, label))));
    const int32 item = current->CanWork() ? menu.IndexOf(current) : -1;
    if (press != nullptr) {
        fIsButtonDown = true;
        fTracker.StartWithoutBarByPress(item, fPointer, WhenOf(*press));
    } else {
        LetPointerRest();
        fTracker.StartWithoutBar(item);
    }
}

bool MenuSession::StartPopUp(BMenu& menu, const PopUpOrder& order)
{
    const auto alive = weak_from_this().lock();
    fIsPopUp = true;
    fIsToInvoke = order.isToInvoke;
    fAtEnd = order.atEnd;
    const BMessage* cause = order.cause;
    const bool isByKey =
        cause != nullptr && (cause->what == B_KEY_DOWN || cause->what == B_UNMAPPED_KEY_DOWN);
    const bool isByPress = cause != nullptr && IsButtonHeld(*cause);
    if (isByPress) {
        cause->FindPoint("screen_where", &fPointer);
    }
    Begin();
    // The window's hook may have let go of the menu, which ended the session.
    if (!fHasBegun || menu.CountItems() == 0) {
        End();
        return false;
    }
    float width = 0;
    float height = 0;
    menu.GetPreferredSize(&width, &height);
    const BPoint where = order.leftTop;
    ShowAt(menu, PlaceMenuAt(where, width, height, ScreenAround(BRect(where, where))));
    if (isByPress) {
        fIsButtonDown = true;
        fTracker.StartWithoutBarByPress(-1, fPointer, WhenOf(*cause));
        fTracker.SetStaysOpen(order.staysOpenAfterClick, order.clickToOpen);
        return true;
    }
    LetPointerRest();
    fTracker.StartWithoutBar();
    if (isByKey) {
        const char first[] = {B_HOME, '\0'};
        fTracker.Key(first);
    }
    return true;
}

bool MenuSession::IsButtonHeld(const BMessage& cause)
{
    const bool isMouse = cause.what == B_MOUSE_DOWN || cause.what == B_MOUSE_MOVED;
    return isMouse && cause.GetInt32("buttons", 0) != 0;
}

} // namespace kits
