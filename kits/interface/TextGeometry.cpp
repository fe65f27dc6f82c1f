#include "TextGeometry.h"

#include "TextBuffer.h"

#include <algorithm>
#include <cmath>

namespace kits {

namespace {

// Wrapped text in a narrower place would be one letter per row.
constexpr float kLeastWrapWidth = 8;

} // namespace

void TextGeometry::FontChanged()
{
    font_height height;
    fStyle.font.GetHeight(&height);
    fAscent = std::ceil(height.ascent);
    fDescent = std::ceil(height.descent + height.leading);
    Reset();
}

void TextGeometry::SetFont(const BFont& font)
{
    fStyle.font = font;
    FontChanged();
}

void TextGeometry::SetRect(BRect rect)
{
    const bool isOtherWidth = rect.Width() != fRect.Width();
    fRect = rect;
    if (isOtherWidth && fIsWrapped) {
        SetWrap(true);
    }
}

void TextGeometry::SetWrap(bool wraps)
{
    fIsWrapped = wraps;
    fStyle.wrapWidth = wraps ? std::max(kLeastWrapWidth, fRect.Width() + 1) : 0;
    Reset();
}

void TextGeometry::SetPreview(const TextPreview& preview)
{
    const auto forget = [this](int32 offset) {
        fPieces.ForgetSize(offset);
        LinesReplaced(fText.LineOf(offset), 1, 1);
    };
    forget(fPreview.offset);
    fPreview = preview;
    forget(fPreview.offset);
}

void TextGeometry::Reset()
{
    fStyle.showsTabs = fText.IsSingleLine();
    fPieces.Clear();
    fAdvances.Clear();
    fRowCounts.clear();
    fFirstRows.clear();
    if (fIsWrapped) {
        fRowCounts.resize(static_cast<size_t>(fText.CountLines()));
    }
}

void TextGeometry::TextReplaced(int32 offset, int32 removed, int32 removedLines, int32 inserted)
{
    fPieces.TextReplaced(offset, removed, inserted);
    const int32 first = fText.LineOf(offset);
    LinesReplaced(first, removedLines, fText.LineOf(offset + inserted) - first + 1);
}

void TextGeometry::LinesReplaced(int32 first, int32 removed, int32 inserted)
{
    if (!fIsWrapped) {
        return;
    }
    const int32 known = static_cast<int32>(fRowCounts.size());
    first = std::min(first, known);
    removed = std::min(removed, known - first);
    const auto place = fRowCounts.begin() + first;
    fRowCounts.insert(fRowCounts.erase(place, place + removed), static_cast<size_t>(inserted), 0);
    fFirstRows.resize(std::min(fFirstRows.size(), static_cast<size_t>(first) + 1));
}

bool TextGeometry::IsPreviewedIn(int32 line) const
{
    return !fPreview.text.isEmpty() && fText.LineOf(fPreview.offset) == line;
}

TextLine TextGeometry::LayoutOf(int32 line) const
{
    const int32 start = fText.LineStart(line);
    const TextLine::Source source{fText.Line(line), start, fStyle, fPieces.Of(line), fAdvances};
    if (!IsPreviewedIn(line)) {
        return TextLine(source, nullptr);
    }
    TextPreview inLine = fPreview;
    inLine.offset -= start;
    return TextLine(source, &inLine);
}

// Rows

int32 TextGeometry::RowsOf(int32 line) const
{
    if (!fIsWrapped) {
        return 1;
    }
    int32& count = fRowCounts[static_cast<size_t>(line)];
    if (count == 0) {
        count = LayoutOf(line).CountRows();
    }
    return count;
}

int32 TextGeometry::FirstRowOf(int32 line) const
{
    if (!fIsWrapped) {
        return line;
    }
    if (fFirstRows.empty()) {
        fFirstRows.push_back(0);
    }
    while (static_cast<int32>(fFirstRows.size()) <= line) {
        const int32 last = static_cast<int32>(fFirstRows.size()) - 1;
        fFirstRows.push_back(fFirstRows.back() + RowsOf(last));
    }
    return fFirstRows[static_cast<size_t>(line)];
}

int32 TextGeometry::CountRows() const
{
    const int32 last = fText.CountLines() - 1;
    return FirstRowOf(last) + RowsOf(last);
}

TextGeometry::RowPlace TextGeometry::PlaceOf(int32 row) const
{
    row = std::clamp(row, 0, CountRows() - 1);
    if (!fIsWrapped) {
        return {row, 0};
    }
    const auto behind = std::upper_bound(fFirstRows.begin(), fFirstRows.end(), row);
    const int32 line = static_cast<int32>(behind - fFirstRows.begin()) - 1;
    return {line, row - fFirstRows[static_cast<size_t>(line)]};
}

int32 TextGeometry::RowOf(int32 offset) const
{
    const int32 line = fText.LineOf(offset);
    if (!fIsWrapped) {
        return line;
    }
    return FirstRowOf(line) + LayoutOf(line).RowOf(offset - fText.LineStart(line));
}

int32 TextGeometry::RowStart(int32 row) const
{
    const RowPlace place = PlaceOf(row);
    const int32 start = fText.LineStart(place.line);
    return place.rowInLine == 0 ? start : start + LayoutOf(place.line).RowStart(place.rowInLine);
}

int32 TextGeometry::RowEnd(int32 row) const
{
    const RowPlace place = PlaceOf(row);
    if (!fIsWrapped) {
        return fText.LineEnd(place.line);
    }
    return fText.LineStart(place.line) + LayoutOf(place.line).RowEnd(place.rowInLine);
}

float TextGeometry::RowWidth(int32 row) const
{
    const RowPlace place = PlaceOf(row);
    return static_cast<float>(LayoutOf(place.line).RowWidth(place.rowInLine));
}

float TextGeometry::RoughRowWidth(int32 row) const
{
    const RowPlace place = PlaceOf(row);
    return static_cast<float>(LayoutOf(place.line).RoughRowWidth(place.rowInLine));
}

double TextGeometry::RowTop(int32 row) const
{
    return static_cast<double>(fRect.top) + static_cast<double>(RowHeight()) * row;
}

int32 TextGeometry::RowAt(double y) const
{
    const double row =
        std::floor((y - static_cast<double>(fRect.top)) / static_cast<double>(RowHeight()));
    return static_cast<int32>(std::clamp(row, 0.0, static_cast<double>(CountRows() - 1)));
}

// Text that is wider than its place begins at its left edge, however it is aligned: the view
// scrolls.
double TextGeometry::RowLeft(const TextLine& layout, int32 rowInLine) const
{
    const double left = static_cast<double>(fRect.left);
    if (layout.IsOneLongRow()) {
        return left;
    }
    const double room = static_cast<double>(fRect.Width()) + 1 - layout.RowWidth(rowInLine);
    if (room <= 0) {
        return left;
    }
    const bool isAtRight =
        fAlignment == B_ALIGN_RIGHT || (fAlignment == B_ALIGN_LEFT && layout.IsRightToLeft());
    if (isAtRight) {
        return left + std::floor(room);
    }
    return fAlignment == B_ALIGN_CENTER ? left + std::floor(room / 2) : left;
}

// Points

BPoint TextGeometry::PointAt(int32 offset) const
{
    const int32 line = fText.LineOf(offset);
    const int32 inLine = offset - fText.LineStart(line);
    const TextLine layout = LayoutOf(line);
    const int32 row = layout.RowOf(inLine);
    return BPoint(static_cast<float>(RowLeft(layout, row) + layout.XOf(inLine)),
                  static_cast<float>(RowTop(FirstRowOf(line) + row)));
}

BPoint TextGeometry::CaretAt(int32 offset) const
{
    const int32 line = fText.LineOf(offset);
    const int32 inLine = offset - fText.LineStart(line);
    const TextLine layout = LayoutOf(line);
    const int32 row = layout.RowOf(inLine);
    return BPoint(
        static_cast<float>(std::floor(RowLeft(layout, row) + layout.CaretX(inLine) + 0.5)),
        static_cast<float>(RowTop(FirstRowOf(line) + row)));
}

int32 TextGeometry::OffsetAt(BPoint point) const
{
    return OffsetInRow(RowAt(static_cast<double>(point.y)), static_cast<double>(point.x));
}

int32 TextGeometry::OffsetInRow(int32 row, double x) const
{
    const RowPlace place = PlaceOf(row);
    const TextLine layout = LayoutOf(place.line);
    return fText.LineStart(place.line) +
           layout.OffsetAt(place.rowInLine, x - RowLeft(layout, place.rowInLine));
}

} // namespace kits
