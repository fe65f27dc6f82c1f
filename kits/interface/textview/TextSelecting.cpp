#include "TextTransfer.h"
#include "TextViewState.h"

#include <algorithm>

// The caret and the selection of a text view.

namespace kits {

void TextViewState::SetSelection(int32 from, int32 to)
{
    from = text.Clamp(from);
    to = text.Clamp(to);
    goalX = -1;
    if (from == anchor && to == caret) {
        ShowCaret();
        return;
    }
    InvalidateSelection(Start(), End());
    anchor = from;
    caret = to;
    InvalidateSelection(Start(), End());
    ShowCaret();
}

void TextViewState::MoveTo(int32 offset, Reach reach)
{
    undo.EndRun();
    SetSelection(reach == Reach::kSelection ? anchor : offset, offset);
    ScrollToCaret();
    isOfferDue = isOfferDue || reach == Reach::kSelection;
}

void TextViewState::MoveByRows(int32 rows, Reach reach)
{
    CountAround(caret);
    const double x = goalX >= 0 ? goalX : static_cast<double>(geometry.PointAt(caret).x);
    const int32 row = geometry.RowOf(caret) + rows;
    int32 offset = 0;
    if (row < 0) {
        offset = 0;
    } else if (row >= geometry.CountRows()) {
        offset = text.Length();
    } else {
        offset = geometry.OffsetInRow(row, x);
    }
    MoveTo(offset, reach);
    goalX = x;
}

void TextViewState::MoveToEdge(bool isEnd, Reach reach)
{
    const int32 row = geometry.RowOf(caret);
    MoveTo(isEnd ? geometry.RowEnd(row) : geometry.RowStart(row), reach);
}

void TextViewState::MoveAside(bool isRight, bool isByWord, Reach reach)
{
    const int32 line = text.LineOf(caret);
    const int32 start = text.LineStart(line);
    const TextLine layout = geometry.LayoutOf(line);
    // In a right-to-left line the left arrow leads on.
    const bool isForward = isRight != layout.IsRightToLeft();
    if (reach == Reach::kCaret && HasSelection() && !isByWord) {
        MoveTo(isForward ? End() : Start(), reach);
        return;
    }
    if (isByWord) {
        MoveTo(isForward ? movement.NextWord(caret) : movement.PreviousWord(caret), reach);
        return;
    }
    const int32 next =
        start + (isRight ? layout.RightOf(caret - start) : layout.LeftOf(caret - start));
    if (next != caret) {
        MoveTo(next, reach);
    } else {
        // At the line's edge: on to the next or the previous line.
        MoveTo(isForward ? movement.NextCharacter(caret) : movement.PreviousCharacter(caret),
               reach);
    }
}

void TextViewState::GetGrain(int32 offset, Grain size, int32* from, int32* to) const
{
    switch (size) {
    case Grain::kCharacter:
        *from = offset;
        *to = offset;
        break;
    case Grain::kWord:
        movement.GetWord(offset, from, to);
        break;
    case Grain::kLine:
        movement.GetLine(offset, from, to);
        break;
    }
}

void TextViewState::OfferSelection()
{
    isOfferDue = false;
    if (HasSelection() && isSelectable && !text.HidesText()) {
        OfferPrimary(text.Share(Start(), End()));
    }
}

void TextViewState::OfferWhatKeysSelected()
{
    if (isOfferDue) {
        OfferSelection();
    }
}

} // namespace kits
