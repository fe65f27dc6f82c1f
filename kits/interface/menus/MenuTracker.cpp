#include "MenuTracker.h"

#include <InterfaceDefs.h>

#include <cmath>

namespace kits {

namespace {

// A press on a title that is released within these is a click, which leaves the menu open.
constexpr bigtime_t kClickTime = 500'000;
constexpr float kClickDistance = 6;

bool IsNear(BPoint a, BPoint b)
{
    return std::fabs(a.x - b.x) <= kClickDistance && std::fabs(a.y - b.y) <= kClickDistance;
}

} // namespace

void MenuTracker::StartByPress(int32 title, BPoint screen, bigtime_t when)
{
    fSelected.assign(1, -1);
    fHasBar = true;
    PressToOpen(screen, when);
    OpenTitle(title);
}

void MenuTracker::StartByKey()
{
    fSelected.assign(1, -1);
    fHasBar = true;
    fIsPressed = false;
    const int32 title = NextEnabled(0, -1, 1);
    if (title < 0) {
        Finish();
        return;
    }
    OpenTitle(title);
    SelectFirst(1);
}

void MenuTracker::StartWithoutBar(int32 item)
{
    fSelected.assign(1, -1);
    fHasBar = false;
    fIsPressed = false;
    Select(0, item);
}

void MenuTracker::StartWithoutBarByPress(int32 item, BPoint screen, bigtime_t when)
{
    fSelected.assign(1, -1);
    fHasBar = false;
    PressToOpen(screen, when);
    Select(0, item);
}

void MenuTracker::SetStaysOpen(bool afterClick, BRect within)
{
    fStaysOpenAfterClick = afterClick;
    fStaysOpenWithin = within;
}

// A short press leaves open what it opened.
void MenuTracker::PressToOpen(BPoint screen, bigtime_t when)
{
    fIsPressed = true;
    fIsOpening = true;
    SetStaysOpen(true, BRect());
    fPressPoint = screen;
    fPressTime = when;
}

void MenuTracker::Press(BPoint screen, bigtime_t when)
{
    if (!IsActive() || fIsPressed) {
        return; // a second button changes nothing
    }
    const Place place = fMenus.PlaceAt(screen);
    const bool isTitle = place.level == 0 && fHasBar;
    if (place.level < 0 || (isTitle && place.item == Selected(0))) {
        Finish();
        return;
    }
    fIsPressed = true;
    fIsOpening = isTitle;
    fPressPoint = screen;
    fPressTime = when;
    Point(place);
}

void MenuTracker::Move(BPoint screen)
{
    if (IsActive()) {
        Point(fMenus.PlaceAt(screen));
    }
}

void MenuTracker::Release(BPoint screen, bigtime_t when)
{
    if (!IsActive() || !fIsPressed) {
        return;
    }
    fIsPressed = false;
    const bool isShort =
        fStaysOpenAfterClick && when - fPressTime <= kClickTime && IsNear(screen, fPressPoint);
    const bool isWithin = fStaysOpenWithin.IsValid() && fStaysOpenWithin.Contains(screen);
    const bool isClick = fIsOpening && (isShort || isWithin);
    fIsOpening = false;
    const Place place = fMenus.PlaceAt(screen);
    const bool isTitle = place.level == 0 && fHasBar;
    if (isTitle && place.item >= 0 && !fMenus.HasSubmenu(0, place.item)) {
        Choose(place); // a title that is a command itself
        return;
    }
    if (isClick) {
        return;
    }
    if (place.level < FirstMenu()) {
        Finish();
        return;
    }
    if (place.item >= 0) {
        Choose(place);
    }
}

void MenuTracker::Key(const char* bytes)
{
    if (!IsActive() || bytes == nullptr || bytes[0] == '\0') {
        return;
    }
    switch (bytes[0]) {
    case B_ESCAPE:
        Escape();
        break;
    case B_UP_ARROW:
        Step(-1);
        break;
    case B_DOWN_ARROW:
        Step(1);
        break;
    case B_LEFT_ARROW:
        GoLeft();
        break;
    case B_RIGHT_ARROW:
        GoRight();
        break;
    case B_HOME:
    case B_PAGE_UP:
        SelectEnd(1);
        break;
    case B_END:
    case B_PAGE_DOWN:
        SelectEnd(-1);
        break;
    case B_ENTER:
    case B_SPACE:
        Enter();
        break;
    default:
        Letter(bytes);
    }
}

void MenuTracker::Cancel()
{
    if (IsActive()) {
        Finish();
    }
}

int32 MenuTracker::Selected(int32 level) const
{
    return level >= 0 && level < CountLevels() ? fSelected[static_cast<size_t>(level)] : -1;
}

void MenuTracker::Select(int32 level, int32 item)
{
    if (level >= 0 && level <= Top()) {
        fSelected[static_cast<size_t>(level)] = item;
        fMenus.Select(level, item);
    }
}

void MenuTracker::OpenItem(int32 level, int32 item)
{
    if (level >= 0 && level == Top()) {
        fSelected.push_back(-1);
        fMenus.Open(level, item);
    }
}

void MenuTracker::CloseAbove(int32 level)
{
    if (Top() > level) {
        fSelected.resize(static_cast<size_t>(level) + 1);
        fMenus.CloseAbove(level);
    }
}

// A title shows its menu at once; one without a menu is only current, until it is released.
void MenuTracker::OpenTitle(int32 title)
{
    CloseAbove(0);
    Select(0, title);
    if (title >= 0 && fMenus.IsEnabled(0, title) && fMenus.HasSubmenu(0, title)) {
        OpenItem(0, title);
    }
}

// The pointer is at a place: that item becomes current and shows its submenu.
void MenuTracker::Point(Place place)
{
    if (place.level < 0) {
        // Outside, the open way stays marked; only the item at its end loses its mark.
        if (Top() >= FirstMenu()) {
            Select(Top(), -1);
        }
        return;
    }
    if (place.level < FirstMenu()) {
        if (place.item >= 0 && place.item != Selected(0)) {
            OpenTitle(place.item);
        }
        return;
    }
    if (place.item == Selected(place.level)) {
        if (Top() > place.level) {
            CloseAbove(place.level + 1);
            Select(Top(), -1);
        }
        return;
    }
    CloseAbove(place.level);
    const bool isEnabled = place.item >= 0 && fMenus.IsEnabled(place.level, place.item);
    Select(place.level, isEnabled ? place.item : -1);
    if (isEnabled && fMenus.HasSubmenu(place.level, place.item)) {
        OpenItem(place.level, place.item);
    }
}

void MenuTracker::Choose(Place place)
{
    if (!fMenus.IsEnabled(place.level, place.item) || fMenus.HasSubmenu(place.level, place.item)) {
        return;
    }
    fSelected.clear();
    fIsPressed = false;
    fMenus.Choose(place.level, place.item);
}

void MenuTracker::Step(int32 direction)
{
    if (Top() < FirstMenu()) {
        // A title is current whose menu is not open: either arrow opens it.
        const int32 title = Selected(0);
        if (title >= 0 && fMenus.HasSubmenu(0, title)) {
            OpenTitle(title);
            SelectFirst(1);
        }
        return;
    }
    const int32 count = fMenus.CountItems(Top());
    const int32 current = Selected(Top());
    const int32 from = current < 0 && direction < 0 ? count : current;
    Select(Top(), NextEnabled(Top(), from, direction));
}

void MenuTracker::SelectEnd(int32 direction)
{
    if (Top() >= FirstMenu()) {
        const int32 from = direction > 0 ? -1 : fMenus.CountItems(Top());
        Select(Top(), NextEnabled(Top(), from, direction));
    }
}

void MenuTracker::GoLeft()
{
    if (Top() > FirstMenu()) {
        CloseAbove(Top() - 1);
    } else if (fHasBar) {
        OpenTitle(NextEnabled(0, Selected(0), -1));
        SelectFirst(1);
    }
}

void MenuTracker::GoRight()
{
    const int32 item = Selected(Top());
    if (Top() >= FirstMenu() && item >= 0 && fMenus.HasSubmenu(Top(), item)) {
        OpenItem(Top(), item);
        SelectFirst(Top());
    } else if (fHasBar) {
        OpenTitle(NextEnabled(0, Selected(0), 1));
        SelectFirst(1);
    }
}

void MenuTracker::Escape()
{
    if (Top() > FirstMenu()) {
        CloseAbove(Top() - 1);
    } else {
        Finish();
    }
}

void MenuTracker::Enter()
{
    const int32 item = Selected(Top());
    if (item < 0) {
        return;
    }
    if (fMenus.HasSubmenu(Top(), item)) {
        OpenItem(Top(), item);
        SelectFirst(Top());
    } else {
        Choose({Top(), item});
    }
}

void MenuTracker::Letter(const char* letter)
{
    bool isTrigger = false;
    const int32 item = fMenus.FindByLetter(Top(), Selected(Top()), letter, &isTrigger);
    if (item < 0) {
        return;
    }
    if (Top() < FirstMenu()) {
        OpenTitle(item);
        SelectFirst(1);
        return;
    }
    Select(Top(), item);
    if (isTrigger) {
        Enter();
    }
}

void MenuTracker::SelectFirst(int32 level)
{
    if (level >= 0 && level == Top()) {
        Select(level, NextEnabled(level, -1, 1));
    }
}

// The next item that can be chosen, round the end; -1 when there is none.
int32 MenuTracker::NextEnabled(int32 level, int32 from, int32 direction) const
{
    const int32 count = fMenus.CountItems(level);
    for (int32 step = 1; step <= count; step++) {
        const int32 item = ((from + direction * step) % count + count) % count;
        if (fMenus.IsEnabled(level, item)) {
            return item;
        }
    }
    return -1;
}

void MenuTracker::Finish()
{
    fSelected.clear();
    fIsPressed = false;
    fMenus.End();
}

} // namespace kits
