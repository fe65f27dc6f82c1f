#include "panes/DragOver.h"

#include "MessageCodes.h"
#include "clv/ColumnListView.h"

#include <Message.h>
#include <MessageRunner.h>
#include <Messenger.h>

#include <algorithm>
#include <utility>

namespace norvane {

namespace {

constexpr float kEdge = 16; // so near to an edge the list scrolls
constexpr bigtime_t kScrollInterval = 50'000;
constexpr rgb_color kFrameColor = {75, 96, 154, 255};

} // namespace

DragOver::DragOver(ColumnListView& list, const PaneRows& rows, TakesEntries takesEntries)
    : fList(list), fRows(rows), fTakesEntries(std::move(takesEntries))
{
}

DragOver::~DragOver() = default;

void DragOver::Moved(BPoint where, uint32 transit, const BMessage* dragged)
{
    const bool isOver = transit == B_ENTERED_VIEW || transit == B_INSIDE_VIEW;
    if (dragged == nullptr || !isOver) {
        End();
        return;
    }
    if (fDragged == nullptr || transit == B_ENTERED_VIEW) {
        fPointed = nullptr;
        fDragged = std::make_unique<const BMessage>(*dragged);
    }
    Point(where);
    if (ScrollDirection() == 0) {
        fScrolling.reset();
    } else if (fScrolling == nullptr) {
        const BMessage tick(kDragScroll);
        fScrolling = std::make_unique<BMessageRunner>(BMessenger(&fList), &tick, kScrollInterval);
    }
}

void DragOver::End()
{
    fScrolling.reset();
    fDragged.reset();
    fPointed = nullptr;
    SetRow(nullptr);
}

void DragOver::Point(BPoint where)
{
    fWhere = where;
    DirListItem* pointed = fRows.RowAt(fList.IndexOf(where));
    if (pointed != fPointed) {
        fPointed = pointed;
        SetRow(pointed != nullptr && fTakesEntries(*pointed, *fDragged) ? pointed : nullptr);
    }
}

void DragOver::SetRow(DirListItem* row)
{
    DirListItem* const before = std::exchange(fRow, row);
    for (const DirListItem* changed : {before, row}) {
        if (changed != nullptr && before != row) {
            fList.InvalidateItem(fRows.IndexOf(changed));
        }
    }
}

// -1 up, 1 down, 0 for neither.
float DragOver::ScrollDirection() const
{
    const BRect bounds = fList.Bounds();
    if (fWhere.y < bounds.top + kEdge) {
        return bounds.top > 0 ? -1.0F : 0;
    }
    const int32 last = fList.CountItems() - 1;
    const bool isMore = last >= 0 && fList.ItemFrame(last).bottom > bounds.bottom;
    return fWhere.y > bounds.bottom - kEdge && isMore ? 1.0F : 0;
}

void DragOver::Scroll()
{
    if (fDragged == nullptr || ScrollDirection() == 0) {
        fScrolling.reset();
        return;
    }
    const BRect bounds = fList.Bounds();
    const float bottom = fList.ItemFrame(fList.CountItems() - 1).bottom;
    const float end = std::max(0.0F, bottom - bounds.Height());
    const float row = fList.ItemFrame(0).Height() + 1;
    const float top = std::clamp(bounds.top + ScrollDirection() * row, 0.0F, end);
    fList.ScrollTo(BPoint(bounds.left, top));
    // The pointer stands still on the screen, so it moves over the rows.
    Point(BPoint(fWhere.x, fWhere.y + (fList.Bounds().top - bounds.top)));
}

void DragOver::Draw()
{
    const int32 index = fRow != nullptr ? fRows.IndexOf(fRow) : -1;
    if (index < 0) {
        return;
    }
    BRect frame = fList.ItemFrame(index);
    frame.left = fList.Bounds().left;
    frame.right = fList.Bounds().right;
    const rgb_color before = fList.HighColor();
    fList.SetHighColor(kFrameColor);
    fList.StrokeRect(frame);
    fList.StrokeRect(frame.InsetByCopy(1, 1));
    fList.SetHighColor(before);
}

void DragOver::Forget(const DirListItem* row)
{
    fPointed = fPointed == row ? nullptr : fPointed;
    fRow = fRow == row ? nullptr : fRow;
}

void DragOver::ForgetAll()
{
    fPointed = nullptr;
    fRow = nullptr;
}

} // namespace norvane
