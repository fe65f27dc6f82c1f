#include "panes/DirView.h"

#include "fileops/windows/CopyWin.h"
#include "panes/DropDecision.h"
#include "settings/MsgBox.h"

#include <InterfaceDefs.h>
#include <Message.h>
#include <Window.h>

#include <algorithm>
#include <cmath>
#include <utility>

// Marking with the mouse, and entries dropped on the pane.

namespace norvane {

namespace {

constexpr float kDragDistance = 10; // on either axis, before a press becomes a drag

} // namespace

void DirView::MouseDown(BPoint where)
{
    const int32 index = IndexOf(where);
    const uint32 held = static_cast<uint32>(CurrentInt32("modifiers"));
    const bool isPrimary = (CurrentInt32("buttons") & B_PRIMARY_MOUSE_BUTTON) != 0;
    if (isPrimary && (held & B_COMMAND_KEY) != 0) {
        MarkWithCommand(index);
    } else if (isPrimary && (held & B_SHIFT_KEY) != 0) {
        MarkWithShift(index);
    } else {
        fPress = MousePress{where, RowAt(index)};
        if (fMarks.IsEmpty()) {
            fAnchor = fPress->row;
        }
        SetMouseEventMask(B_POINTER_EVENTS);
    }
    ColumnListView::MouseDown(where);
}

void DirView::MarkWithCommand(int32 index)
{
    if (RowAt(index) == nullptr) {
        return;
    }
    if (fMarks.IsEmpty() && fAnchor != nullptr) {
        ToggleMark(IndexOfRow(fAnchor));
    }
    ToggleMark(index);
    fAnchor = RowAt(index);
}

void DirView::MarkWithShift(int32 index)
{
    if (fAnchor == nullptr || RowAt(index) == nullptr) {
        return;
    }
    const int32 anchor = IndexOfRow(fAnchor);
    Mark(std::min(anchor, index), std::max(anchor, index));
}

void DirView::MouseMoved(BPoint where, uint32 transit, const BMessage* dragged)
{
    if (fPress.has_value() && (std::fabs(where.x - fPress->where.x) > kDragDistance ||
                               std::fabs(where.y - fPress->where.y) > kDragDistance)) {
        fPress->isInPlace = false;
    }
    ColumnListView::MouseMoved(where, transit, dragged);
}

void DirView::MouseUp(BPoint where)
{
    const std::optional<MousePress> press = std::exchange(fPress, std::nullopt);
    if (press.has_value() && press->isInPlace) {
        EmptyMarked();
        fAnchor = press->row;
    }
    ColumnListView::MouseUp(where);
}

bool DirView::InitiateDrag(BPoint, int32, bool)
{
    // A press that moves away never sweeps the selection along.
    return true;
}

void DirView::ForgetPressedRow(const DirListItem* row)
{
    if (fPress.has_value() && fPress->row == row) {
        fPress->row = nullptr;
    }
}

// Drops

void DirView::EntriesDropped(BMessage* message)
{
    const char* from = nullptr;
    entry_ref ref;
    DroppedEntries dropped;
    dropped.hasRefs = message->FindRef("refs", &ref) == B_OK;
    if (message->FindString("From", &from) == B_OK) {
        dropped.from = from;
    }
    switch (DecideDrop(dropped, fMode, fPath)) {
    case DropDecision::kRefuseQuery:
        MsgBox("Foo", "This view contains Query Results. You cannot copy or move to it.", "OK",
               B_INFO_ALERT);
        break;
    case DropDecision::kPassOn:
        ColumnListView::MessageReceived(message);
        break;
    case DropDecision::kIgnore:
        break;
    case DropDecision::kRefuseRoot:
        MsgBox("Warning", "Sorry can't copy files or folders to the root of the file system!", "OK",
               B_INFO_ALERT);
        break;
    case DropDecision::kCopyHere:
        // It shows itself, does its work on its own thread and deletes itself.
        new CopyWin(Window()->Frame(), "Copy", fPath.c_str(), message, fPane);
        break;
    }
}

} // namespace norvane
