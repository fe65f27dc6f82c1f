#include "TextGeometry.h"

#include "TextBuffer.h"

#include <algorithm>
#include <cmath>

namespace kits {

namespace {

// Wrapped text in a narrower place would be one letter per row.
constexpr float kLeastWrapWidth = 8;
// How much of a large text is looked at to learn how many rows a line has.
constexpr int32 kProbes = 64;
constexpr int32 kProbedBytes = 32 * 1024;
// After a change of so many lines these are counted at once.
constexpr int32 kFewLines = 64;

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
    fStyle.showing = fText.Showing();
    fPieces.Clear();
    fAdvances.Clear();
    fHasRows = false;
}

void TextGeometry::TextReplaced(int32 offset, int32 removed, int32 removedLines, int32 inserted)
{
    fPieces.TextReplaced(offset, removed, inserted);
    const int32 first = fText.LineOf(offset);
    LinesReplaced(first, removedLines, fText.LineOf(offset + inserted) - first + 1);
}

void TextGeometry::LinesReplaced(int32 first, int32 removed, int32 inserted)
{
    if (!fIsWrapped || !fHasRows) {
        return;
    }
    if (inserted > kFewLines && !IsSmall()) {
        fHasRows = false; // most of it may be new
        return;
    }
    fRows.Replace(first, removed, inserted);
    for (int32 line = first; line < first + inserted; ++line) {
        CountLine(line);
    }
}

bool TextGeometry::IsPreviewedIn(int32 line) const
{
    return !fPreview.text.isEmpty() && fText.LineOf(fPreview.offset) == line;
}

TextLine TextGeometry::LayoutOf(int32 line) const
{
    if (fIsWrapped && !Rows().IsCounted(line) && CountLine(line)) {
        fCorrections++;
    }
    return Lay(line, fIsWrapped ? RowsOf(line) : 0);
}

TextLine TextGeometry::Lay(int32 line, int32 rows) const
{
    const int32 start = fText.LineStart(line);
    const TextLine::Source source{fText.Line(line), start, fStyle, fPieces.Of(line),
                                  fAdvances,        rows,  this};
    if (!IsPreviewedIn(line)) {
        return TextLine(source, nullptr);
    }
    TextPreview inLine = fPreview;
    inLine.offset -= start;
    return TextLine(source, &inLine);
}

// Rows

bool TextGeometry::IsSmall() const
{
    return fText.Length() <= kCountedBytes;
}

bool TextGeometry::IsLong(int32 line) const
{
    return fText.LineEnd(line) - fText.LineStart(line) > TextPieces::kWholeBytes;
}

// How many rows some lines have on the average.
double TextGeometry::UsualRows() const
{
    const int32 lines = fText.CountLines();
    int32 bytes = 0;
    int32 rows = 0;
    int32 probes = 0;
    for (int32 i = 0; i < kProbes && bytes < kProbedBytes; ++i) {
        const int32 line = static_cast<int32>(int64{lines} * i / kProbes);
        if (!IsLong(line)) {
            rows += Lay(line).CountRows();
            bytes += fText.LineEnd(line) - fText.LineStart(line);
            probes++;
        }
    }
    return probes > 0 ? static_cast<double>(rows) / probes : 1;
}

TextRows& TextGeometry::Rows() const
{
    if (!fHasRows) {
        fHasRows = true;
        fRows.Reset(fText.CountLines(), IsSmall() ? 1 : UsualRows());
        for (int32 line = 0; line < fText.CountLines(); ++line) {
            // A long line is not like the others, and only begun to be counted.
            if (IsSmall() || IsLong(line)) {
                CountLine(line);
            }
        }
    }
    return fRows;
}

bool TextGeometry::CountLine(int32 line) const
{
    return fRows.Set(line, Lay(line).CountRows());
}

void TextGeometry::RowsCounted(int32 lineStart, int32 rows) const
{
    if (fHasRows && fRows.Set(fText.LineOf(lineStart), rows)) {
        fCorrections++;
    }
}

void TextGeometry::CountBetween(double top, double bottom) const
{
    for (int32 row = RowAt(top); fIsWrapped && row <= RowAt(bottom);) {
        const RowPlace place = PlaceOf(row);
        const TextLine layout = LayoutOf(place.line);
        for (int32 i = place.rowInLine; i < layout.CountRows() && row <= RowAt(bottom); ++i) {
            layout.CountRow(i);
            ++row;
        }
    }
}

int32 TextGeometry::RowsOf(int32 line) const
{
    return fIsWrapped ? Rows().FirstRow(line + 1) - Rows().FirstRow(line) : 1;
}

int32 TextGeometry::FirstRowOf(int32 line) const
{
    return fIsWrapped ? Rows().FirstRow(line) : line;
}

int32 TextGeometry::CountRows() const
{
    return FirstRowOf(fText.CountLines());
}

TextGeometry::RowPlace TextGeometry::PlaceOf(int32 row) const
{
    row = std::clamp(row, 0, CountRows() - 1);
    if (!fIsWrapped) {
        return {row, 0};
    }
    int32 line = fRows.LineAt(row);
    while (!fRows.IsCounted(line)) {
        fCorrections += CountLine(line) ? 1 : 0;
        row = std::min(row, CountRows() - 1);
        line = fRows.LineAt(row);
    }
    return {line, row - fRows.FirstRow(line)};
}

int32 TextGeometry::RowOf(int32 offset) const
{
    const int32 line = fText.LineOf(offset);
    if (!fIsWrapped) {
        return line;
    }
    const int32 inLine = LayoutOf(line).RowOf(offset - fText.LineStart(line));
    return FirstRowOf(line) + inLine;
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
