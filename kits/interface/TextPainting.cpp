#include "Look.h"
#include "TextViewState.h"
#include "ViewPainter.h"

#include "server/ScreenInfo.h"

#include <Window.h>

#include <algorithm>
#include <cmath>

// How a text view looks.

namespace kits {

namespace {

constexpr rgb_color kIdleSelection = {222, 222, 222, 255};

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
    ViewPainter painter(view);
    if (!painter) {
        return;
    }
    const bool isActive = view.IsFocus() && view.Window()->IsActive();
    const rgb_color selection = isActive ? look::kSelectedRow : kIdleSelection;
    const int32 first = geometry.RowAt(static_cast<double>(updateRect.top));
    const int32 last = geometry.RowAt(static_cast<double>(updateRect.bottom));
    view.SetHighColor(view.Parent() != nullptr && !isEditable && !isSelectable ? look::kDisabledText
                                                                               : color);
    TextGeometry::RowPlace place = geometry.PlaceOf(first);
    int32 row = first - place.rowInLine;
    for (int32 line = place.line; line < text.CountLines() && row <= last; ++line) {
        const TextLayout layout = geometry.LayoutOf(line);
        const int32 start = text.LineStart(line);
        for (int32 i = 0; i < layout.CountRows(); ++i, ++row) {
            if (row < first || row > last) {
                continue;
            }
            const double left = geometry.RowLeft(layout, i);
            const double top = geometry.RowTop(row);
            widest = std::max(widest, static_cast<float>(layout.RowWidth(i)));
            const auto fill = [&](double from, double to) {
                const BRect box(static_cast<float>(std::floor(left + from)),
                                static_cast<float>(top),
                                static_cast<float>(std::ceil(left + to)) - 1,
                                static_cast<float>(top) + geometry.RowHeight() - 1);
                painter.FillColor(painter.Pixels(box), selection);
            };
            for (const auto& span : layout.Spans(i, Start() - start, End() - start)) {
                fill(span.first, span.second);
            }
            const QRectF area(left - 2, top - 2, layout.RowWidth(i) + 4,
                              static_cast<double>(geometry.RowHeight()) + 4);
            painter.Units(area, [&](QPainter& lines) {
                layout.DrawRow(lines, i,
                               QPointF(left, top + static_cast<double>(geometry.Ascent())));
            });
        }
    }
    if (isCaretOn && HasCaret()) {
        painter.FillColor(painter.Pixels(CaretRect()), color);
    }
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
