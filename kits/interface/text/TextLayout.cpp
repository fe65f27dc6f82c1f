#include "TextLayout.h"

#include "interface/graphics/FontAccess.h"

#include <QGlyphRun>
#include <QPainter>
#include <QRawFont>
#include <QTextOption>

#include <algorithm>
#include <cmath>

namespace kits {

namespace {

// More than any text is wide; the layout's own numbers end at twice that.
constexpr qreal kEndless = 1 << 24;

// The widths of a piece's letters add up, wherever the line is cut.
QFont FontFor(const TextStyle& style, bool isPiece)
{
    QFont font = FontAccess::For(style.font).font;
    if (isPiece) {
        font.setKerning(false);
        font.setStyleStrategy(
            static_cast<QFont::StyleStrategy>(font.styleStrategy() | QFont::PreferNoShaping));
    }
    return font;
}

Qt::LayoutDirection DirectionOf(const QString& text, TextDirection lineDirection)
{
    const bool isRightToLeft = lineDirection == TextDirection::kUnknown
                                   ? text.isRightToLeft()
                                   : lineDirection == TextDirection::kRightToLeft;
    return isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight;
}

} // namespace

TextLayout::TextLayout(std::string_view bytes, const TextStyle& style, const TextPreview* preview,
                       TextDirection lineDirection)
    : fText(bytes, style.showing),
      fLayout(fText.Text(), FontFor(style, lineDirection != TextDirection::kUnknown))
{
    const bool isWrapped = style.wrapWidth > 0;
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    if (lineDirection != TextDirection::kUnknown && !isWrapped) {
        option.setFlags(QTextOption::IncludeTrailingSpaces);
    }
    option.setWrapMode(isWrapped ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
    option.setTabStopDistance(static_cast<qreal>(style.tabWidth));
    option.setTextDirection(DirectionOf(fText.Text(), lineDirection));
    fLayout.setTextOption(option);
    if (preview != nullptr && !preview->text.isEmpty()) {
        fPreviewUnit = fText.UnitOf(preview->offset);
        fPreviewLength = static_cast<int32>(preview->text.size());
        fPreviewCaret = std::clamp(preview->caret, 0, fPreviewLength);
        const bool isHidden = style.showing == TextShowing::kHidden;
        fLayout.setPreeditArea(fPreviewUnit,
                               isHidden ? QString(fPreviewLength, QChar(kBullet)) : preview->text);
        QTextLayout::FormatRange range;
        range.start = fPreviewUnit;
        range.length = fPreviewLength;
        range.format.setFontUnderline(true);
        fLayout.setFormats({range});
    }
    fLayout.beginLayout();
    for (QTextLine line = fLayout.createLine(); line.isValid(); line = fLayout.createLine()) {
        line.setLineWidth(isWrapped ? static_cast<qreal>(style.wrapWidth) : kEndless);
    }
    fLayout.endLayout();
}

// The layout counts the preview as if it were part of the text.
int32 TextLayout::PlaceOf(int32 offset) const
{
    const int32 unit = fText.UnitOf(offset);
    return unit > fPreviewUnit ? unit + fPreviewLength : unit;
}

int32 TextLayout::OffsetOf(int32 place) const
{
    const int32 unit =
        place <= fPreviewUnit ? place : std::max(fPreviewUnit, place - fPreviewLength);
    return fText.ByteOf(unit);
}

QTextLine TextLayout::RowAt(int32 row) const
{
    return fLayout.lineAt(std::clamp(row, 0, CountRows() - 1));
}

int32 TextLayout::RowOf(int32 offset) const
{
    const QTextLine line = fLayout.lineForTextPosition(PlaceOf(offset));
    return line.isValid() ? line.lineNumber() : 0;
}

int32 TextLayout::RowStart(int32 row) const
{
    return OffsetOf(RowAt(row).textStart());
}

int32 TextLayout::RowEnd(int32 row) const
{
    const QTextLine line = RowAt(row);
    const int end = line.textStart() + line.textLength();
    const bool isLast = line.lineNumber() + 1 >= CountRows();
    return OffsetOf(isLast ? end : fLayout.previousCursorPosition(end));
}

int32 TextLayout::PlaceBefore(int32 offset) const
{
    return OffsetOf(fLayout.previousCursorPosition(PlaceOf(offset)));
}

double TextLayout::RowWidth(int32 row) const
{
    return RowAt(row).naturalTextWidth();
}

double TextLayout::Advance() const
{
    return RowAt(0).horizontalAdvance();
}

bool TextLayout::IsRightToLeft() const
{
    return fLayout.textOption().textDirection() == Qt::RightToLeft;
}

double TextLayout::XOf(int32 offset) const
{
    return RowAt(RowOf(offset)).cursorToX(PlaceOf(offset));
}

double TextLayout::CaretX(int32 offset) const
{
    const int32 unit = fText.UnitOf(offset);
    const bool isInPreview = fPreviewLength > 0 && unit == fPreviewUnit;
    const int32 place = isInPreview ? fPreviewUnit + fPreviewCaret : PlaceOf(offset);
    const QTextLine line = fLayout.lineForTextPosition(place);
    return line.isValid() ? line.cursorToX(place) : 0;
}

// Among characters of several letters that the font does not join, the layout's own answer may be a
// place further on.
int32 TextLayout::NearestPlace(const QTextLine& line, double x) const
{
    int nearest = line.xToCursor(x);
    if (fText.HasRightToLeft()) {
        return nearest; // places are not in the order of their x
    }
    const auto distance = [&](int place) {
        return std::abs(line.cursorToX(place) - x);
    };
    for (int before = fLayout.previousCursorPosition(nearest);
         before >= line.textStart() && distance(before) < distance(nearest);
         before = fLayout.previousCursorPosition(nearest)) {
        nearest = before;
    }
    return nearest;
}

int32 TextLayout::OffsetAt(int32 row, double x) const
{
    const int32 offset = OffsetOf(NearestPlace(RowAt(row), x));
    return std::clamp(offset, RowStart(row), std::max(RowStart(row), RowEnd(row)));
}

int32 TextLayout::LeftOf(int32 offset) const
{
    return OffsetOf(fLayout.leftCursorPosition(PlaceOf(offset)));
}

int32 TextLayout::RightOf(int32 offset) const
{
    return OffsetOf(fLayout.rightCursorPosition(PlaceOf(offset)));
}

std::vector<std::pair<double, double>> TextLayout::Spans(int32 row, int32 from, int32 to) const
{
    const QTextLine line = RowAt(row);
    const int rowStart = line.textStart();
    const int rowEnd = rowStart + line.textLength();
    const int start = std::max(PlaceOf(from), rowStart);
    const int end = std::min(PlaceOf(to), rowEnd);
    std::vector<std::pair<double, double>> spans;
    if (start >= end) {
        return spans;
    }
    if (!fText.HasRightToLeft()) {
        spans.emplace_back(line.cursorToX(start), line.cursorToX(end));
        return spans;
    }
    // By the letters' own places: a caret's place between two directions belongs to both.
    for (const QGlyphRun& run : line.glyphRuns(start, end - start)) {
        const QList<QPointF> places = run.positions();
        const QList<QPointF> widths = run.rawFont().advancesForGlyphIndexes(run.glyphIndexes());
        for (qsizetype i = 0; i < std::min(places.size(), widths.size()); ++i) {
            spans.emplace_back(places[i].x(), places[i].x() + widths[i].x());
        }
    }
    std::sort(spans.begin(), spans.end());
    constexpr double kTouching = 1; // the layout rounds places, the font does not
    std::vector<std::pair<double, double>> joined;
    for (const auto& span : spans) {
        if (!joined.empty() && span.first <= joined.back().second + kTouching) {
            joined.back().second = std::max(joined.back().second, span.second);
        } else {
            joined.push_back(span);
        }
    }
    return joined;
}

void TextLayout::DrawRow(QPainter& painter, int32 row, QPointF baseLine) const
{
    const QTextLine line = RowAt(row);
    // Other scripts' fonts make the row higher; the base line stays where the row has it.
    line.draw(&painter, baseLine - QPointF(0, line.ascent()));
}

} // namespace kits
