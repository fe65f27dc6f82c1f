#include "panes/PaneGestures.h"

#include <InterfaceDefs.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace norvane {

namespace {

constexpr float kDragDistance = 10; // on either axis, before a press becomes a drag

} // namespace

bool PaneGestures::Pressed(BPoint where, int32 index, uint32 modifiers, uint32 buttons)
{
    const bool isPrimary = (buttons & B_PRIMARY_MOUSE_BUTTON) != 0;
    if (isPrimary && (modifiers & B_COMMAND_KEY) != 0) {
        MarkWithCommand(index);
        return false;
    }
    if (isPrimary && (modifiers & B_SHIFT_KEY) != 0) {
        MarkWithShift(index);
        return false;
    }
    DirListItem* row = fRows.RowAt(index);
    fPress = Press{where, row, isPrimary, buttons == B_SECONDARY_MOUSE_BUTTON, row != nullptr};
    if (fMarks.IsEmpty()) {
        fAnchor = fPress->row;
    }
    return true;
}

void PaneGestures::MarkWithCommand(int32 index)
{
    if (fRows.RowAt(index) == nullptr) {
        return;
    }
    if (fMarks.IsEmpty() && fAnchor != nullptr) {
        fMarks.Toggle(fRows.IndexOf(fAnchor));
    }
    fMarks.Toggle(index);
    fAnchor = fRows.RowAt(index);
}

void PaneGestures::MarkWithShift(int32 index)
{
    if (fAnchor == nullptr || fRows.RowAt(index) == nullptr) {
        return;
    }
    const int32 anchor = fRows.IndexOf(fAnchor);
    if (anchor < 0) {
        return; // it is filtered away
    }
    fMarks.Mark(std::min(anchor, index), std::max(anchor, index));
}

DirListItem* PaneGestures::Moved(BPoint where, uint32 buttons)
{
    if (!fPress.has_value() || !fPress->isInPlace || buttons == 0 ||
        (std::fabs(where.x - fPress->where.x) <= kDragDistance &&
         std::fabs(where.y - fPress->where.y) <= kDragDistance)) {
        return nullptr;
    }
    fPress->isInPlace = false;
    return fPress->row;
}

std::optional<DirListItem*> PaneGestures::Released()
{
    const std::optional<Press> press = std::exchange(fPress, std::nullopt);
    if (press.has_value() && press->isInPlace && press->isPrimary) {
        fMarks.Empty();
        fAnchor = press->row;
    }
    const bool isForMenu = press.has_value() && press->isInPlace && press->isForMenu;
    return isForMenu && press->wasOnRow == (press->row != nullptr) ? std::optional(press->row)
                                                                   : std::nullopt;
}

void PaneGestures::Forget(const DirListItem* row)
{
    if (fAnchor == row) {
        fAnchor = nullptr;
    }
    if (fPress.has_value() && fPress->row == row) {
        fPress->row = nullptr;
    }
}

void PaneGestures::ForgetAll()
{
    fAnchor = nullptr;
    fPress.reset();
}

} // namespace norvane
