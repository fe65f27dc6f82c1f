#include "TextViewState.h"
#include "interface/views/Look.h"
#include "interface/views/ViewPainter.h"

#include "server/ScreenInfo.h"

#include <Messenger.h>
#include <Window.h>

#include <algorithm>
#include <cmath>

// How a text view looks.

namespace kits {

namespace {

// How wide a selected line break is shown.
constexpr double kBreakWidth = 4;
constexpr rgb_color kIdleSelection = {222, 222, 222, 255};

/// Draws lines of a view, row by row.
class RowPainter
{
public:
    RowPainter(TextViewState& state, BRect seen) : fState(state), fPainter(state.view), fSeen(seen)
    {
        const BView& view = state.view;
        fIsActive = view.IsFocus() && view.Window()->IsActive();
    }
    explicit operator bool() const { return static_cast<bool>(fPainter); }

    void Fill(BRect box, rgb_color color) { fPainter.FillColor(fPainter.Pixels(box), color); }

    /// Draws those rows of a line, whose first is `row`, that lie between two rows; returns how
    /// many the line has.
    int32 DrawLine(int32 line, int32 row, int32 first, int32 last)
    {
        const TextLine layout = fState.geometry.LayoutOf(line);
        for (int32 i = std::max(0, first - row); i < std::min(layout.CountRows(), last - row + 1);
             ++i) {
            const double left = fState.geometry.RowLeft(layout, i);
            const double top = fState.geometry.RowTop(row + i);
            DrawSelection(layout, line, i, left, top);
            DrawRow(layout, i, left, top);
        }
        return layout.CountRows();
    }

private:
    void DrawSelection(const TextLine& layout, int32 line, int32 row, double left, double top)
    {
        const int32 start = fState.text.LineStart(line);
        auto spans =
            layout.SpansOf(row, fState.Start() - start, fState.End() - start, SeenFrom(left));
        const int32 end = fState.text.LineEnd(line);
        const bool isBreakSelected = fState.Start() <= end && fState.End() > end;
        if (isBreakSelected && row + 1 == layout.CountRows()) {
            const double edge = layout.IsRightToLeft() ? -kBreakWidth : layout.RoughRowWidth(row);
            spans.emplace_back(edge, edge + kBreakWidth);
        }
        for (const auto& [from, to] : spans) {
            Fill(BRect(static_cast<float>(std::floor(left + from)), static_cast<float>(top),
                       static_cast<float>(std::ceil(left + to)) - 1,
                       static_cast<float>(top) + fState.geometry.RowHeight() - 1),
                 fIsActive ? look::kSelectedRow : kIdleSelection);
        }
    }

    void DrawRow(const TextLine& layout, int32 row, double left, double top)
    {
        const double width = layout.RoughRowWidth(row);
        const double height = static_cast<double>(fState.geometry.RowHeight());
        const QPointF baseLine(left, top + static_cast<double>(fState.geometry.Ascent()));
        fState.widest = std::max(fState.widest, static_cast<float>(width));
        // Letters of other scripts may reach beyond the font's own height, and to either side.
        fPainter.Units(
            QRectF(left - height, top - height, width + 2 * height, 3 * height),
            [&](QPainter& painter) { layout.DrawRow(painter, row, baseLine, SeenFrom(left)); });
    }

    // Letters may reach beyond their places.
    TextLine::Seen SeenFrom(double left) const
    {
        const double reach = static_cast<double>(fState.geometry.RowHeight());
        return {static_cast<double>(fSeen.left) - left - reach,
                static_cast<double>(fSeen.right) + 1 - left + reach};
    }

    TextViewState& fState;
    ViewPainter fPainter;
    BRect fSeen;
    bool fIsActive;
};

} // namespace

bool TextViewState::HasCaret() const
{
    return isEditable && !HasSelection() && view.IsFocus() && view.Window()->IsActive();
}

BRect TextViewState::CaretRect() const
{
    const BPoint place = geometry.CaretAt(caret);
    return BRect(place.x, place.y, place.x, place.y + geometry.RowHeight() - 1);
}

void TextViewState::Draw(BRect updateRect)
{
    view.SetHighColor(color);
    RowPainter rows(*this, updateRect);
    if (!rows) {
        return;
    }
    const int32 last = geometry.RowAt(static_cast<double>(updateRect.bottom));
    const int32 first = geometry.RowAt(static_cast<double>(updateRect.top));
    const TextGeometry::RowPlace place = geometry.PlaceOf(first);
    int32 row = first - place.rowInLine;
    for (int32 line = place.line; line < text.CountLines() && row <= last; ++line) {
        row += rows.DrawLine(line, row, first, last);
    }
    if (isCaretOn && HasCaret()) {
        rows.Fill(CaretRect(), color);
    }
    FollowCorrections(updateRect);
}

// Rows that are drawn for the first time may move those below, and change how far one can scroll.
void TextViewState::FollowCorrections(BRect drawn)
{
    if (drawnCorrections == geometry.CountCorrections()) {
        return;
    }
    drawnCorrections = geometry.CountCorrections();
    if (!drawn.Contains(view.Bounds())) {
        view.Invalidate();
    }
    BMessenger(&view).SendMessage(kRowsCorrected); // nothing scrolls while it is drawn
}

void TextViewState::InvalidateRows(int32 first, int32 last)
{
    BRect area = view.Bounds();
    area.top = std::max(area.top, static_cast<float>(geometry.RowTop(first)) - 1);
    area.bottom = std::min(area.bottom, static_cast<float>(geometry.RowTop(last + 1)));
    if (area.IsValid()) {
        view.Invalidate(area);
    }
}

void TextViewState::InvalidateBelow(int32 first)
{
    BRect area = view.Bounds();
    area.top = std::max(area.top, static_cast<float>(geometry.RowTop(first)) - 1);
    if (area.IsValid()) {
        view.Invalidate(area);
    }
}

void TextViewState::InvalidateSelection(int32 from, int32 to)
{
    if (view.Window() != nullptr) {
        InvalidateRows(geometry.RowOf(from), geometry.RowOf(to));
    }
}

void TextViewState::ShowCaret()
{
    blinkTicker.reset();
    const bool wasOn = isCaretOn;
    isCaretOn = HasCaret();
    if (isCaretOn || wasOn) {
        view.Invalidate(CaretRect());
    }
    const bigtime_t flash = ScreenInfo::Get().caretFlash;
    if (isCaretOn && flash > 0) {
        blinkTicker = std::make_unique<Ticker>(BMessenger(&view), flash / 2, flash / 2);
    }
}

void TextViewState::BlinkTick()
{
    if (!HasCaret()) {
        ShowCaret();
        return;
    }
    isCaretOn = !isCaretOn;
    view.Invalidate(CaretRect());
    blinkTicker->NextTick();
}

} // namespace kits
