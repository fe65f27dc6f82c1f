#pragma once

#include "TextDecoding.h"

#include <Font.h>
#include <SupportDefs.h>

#include <QString>
#include <QTextLayout>

#include <string_view>
#include <utility>
#include <vector>

class QPainter;

namespace kits {

/// What text is set with.
struct TextStyle
{
    BFont font;
    float tabWidth = 32;
    float wrapWidth = 0; // 0: lines are as long as they are
    TextShowing showing = TextShowing::kLines;
};

/// Text that an input method shows before it is decided on; it stands at an offset of the text and
/// is no part of it. Units: those of UTF-16.
struct TextPreview
{
    QString text;
    int32 offset = 0; // bytes, in the line that is set
    int32 caret = 0;  // in `text`
};

/// A line of a text or a piece of a long one, shaped and, where it is wrapped, in rows: what is
/// where, and how it is drawn.
///
/// Made when it is needed and thrown away: shaping a line costs a few microseconds, and what is
/// shaped belongs to the thread that did it. Units: offsets are bytes from the beginning, x is from
/// the left edge.
class TextLayout
{
public:
    /// Borrows `bytes` for the call. `preview` is null when there is none. A piece is set along its
    /// line's direction, without kerning and ligatures, and as wide as all of its blanks; a whole
    /// line, whose direction is kUnknown, as its own letters say.
    TextLayout(std::string_view bytes, const TextStyle& style, const TextPreview* preview,
               TextDirection lineDirection = TextDirection::kUnknown);

    int32 CountRows() const { return fLayout.lineCount(); }
    int32 RowOf(int32 offset) const;
    int32 RowStart(int32 row) const;
    /// The last place for the caret in a row.
    int32 RowEnd(int32 row) const;
    /// The last place for the caret before an offset.
    int32 PlaceBefore(int32 offset) const;
    double RowWidth(int32 row) const;
    /// From the beginning of a piece to that of the next one: the last letter may reach beyond.
    double Advance() const;
    bool IsRightToLeft() const;

    double XOf(int32 offset) const;
    /// Where the caret stands: within the preview, while there is one.
    double CaretX(int32 offset) const;
    int32 OffsetAt(int32 row, double x) const;
    /// The caret's next place as seen; the same offset at the line's edges.
    int32 LeftOf(int32 offset) const;
    int32 RightOf(int32 offset) const;
    /// The stretches of a row that the text between two offsets takes; several where directions
    /// are mixed.
    std::vector<std::pair<double, double>> Spans(int32 row, int32 from, int32 to) const;

    /// Draws a row in the painter's colour, its base line beginning at `baseLine`.
    void DrawRow(QPainter& painter, int32 row, QPointF baseLine) const;

private:
    int32 PlaceOf(int32 offset) const;
    int32 OffsetOf(int32 place) const;
    QTextLine RowAt(int32 row) const;
    int32 NearestPlace(const QTextLine& line, double x) const;

    DecodedText fText;
    QTextLayout fLayout;
    int32 fPreviewUnit = 0;
    int32 fPreviewLength = 0;
    int32 fPreviewCaret = 0;
};

} // namespace kits
