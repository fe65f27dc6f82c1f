#pragma once

#include "TextAdvances.h"
#include "TextLine.h"
#include "TextPieces.h"
#include "TextRows.h"

#include <InterfaceDefs.h>
#include <Rect.h>

#include <optional>
#include <vector>

namespace kits {

class TextBuffer;

/// Where the rows of a text are: its lines, wrapped or not, aligned in a rectangle.
///
/// Nothing shaped is kept, only how many rows each line has and where long lines are cut. Of
/// wrapped text beyond kCountedBytes only the lines that were asked for are counted; the others are
/// taken to have as many rows as some that were looked at, so rows behind a line may get other
/// numbers when it is counted. So are the pieces of long lines. Units: those of the view;
/// beyond 16 million of them places are not exact, as a BPoint's are not.
class TextGeometry : private TextRowCounter
{
public:
    static constexpr int32 kCountedBytes = 64 * 1024;

    struct RowPlace
    {
        int32 line = 0;      // of the text
        int32 rowInLine = 0; // 0 unless the line is wrapped
    };

    /// Borrows the text, for as long as it lives.
    explicit TextGeometry(const TextBuffer& text) : fText(text) { FontChanged(); }

    void SetFont(const BFont& font);
    const BFont& Font() const { return fStyle.font; }
    void SetTabWidth(float width) { fStyle.tabWidth = width; }
    float TabWidth() const { return fStyle.tabWidth; }
    void SetRect(BRect rect);
    BRect Rect() const { return fRect; }
    void SetWrap(bool wraps);
    bool Wraps() const { return fIsWrapped; }
    void SetAlignment(alignment flag) { fAlignment = flag; }
    alignment Alignment() const { return fAlignment; }
    /// Shows text of an input method at an offset of the whole text; an empty one ends that.
    void SetPreview(const TextPreview& preview);
    const TextPreview& Preview() const { return fPreview; }

    /// Everything is new.
    void Reset();
    /// Follows a change that was made: at `offset`, `removed` bytes of `removedLines` lines went
    /// (one, where no line break did) and `inserted` bytes came.
    void TextReplaced(int32 offset, int32 removed, int32 removedLines, int32 inserted);

    float RowHeight() const { return fAscent + fDescent; }
    float Ascent() const { return fAscent; }
    int32 CountRows() const;
    /// How often it was found that a line has other rows than was assumed.
    int32 CountCorrections() const { return fCorrections; }
    /// Counts the lines between two heights; for what is drawn or scrolled to.
    void CountBetween(double top, double bottom) const;
    RowPlace PlaceOf(int32 row) const;
    int32 RowOf(int32 offset) const;
    int32 RowStart(int32 row) const;
    int32 RowEnd(int32 row) const;
    float RowWidth(int32 row) const;
    double RowTop(int32 row) const;
    /// The row at a height, above the first and below the last the nearest.
    int32 RowAt(double y) const;
    /// As much of a row's width as is known without looking at all of a long line; the rest as
    /// wide on the average.
    float RoughRowWidth(int32 row) const;
    /// Where the text of a row begins, as it is aligned.
    double RowLeft(const TextLine& layout, int32 rowInLine) const;
    /// Ownership: it borrows the text and what is known of its pieces: use one at a time.
    TextLine LayoutOf(int32 line) const;

    BPoint PointAt(int32 offset) const;
    /// Where the caret stands: as PointAt(), but within the preview while there is one.
    BPoint CaretAt(int32 offset) const;
    int32 OffsetAt(BPoint point) const;
    /// The offset at an x of a row.
    int32 OffsetInRow(int32 row, double x) const;

private:
    void FontChanged();
    void LinesReplaced(int32 first, int32 removed, int32 inserted);
    int32 RowsOf(int32 line) const;
    int32 FirstRowOf(int32 line) const;
    bool IsSmall() const;
    bool IsLong(int32 line) const;
    TextRows& Rows() const;
    bool CountLine(int32 line) const;
    double UsualRows() const;
    TextLine Lay(int32 line, int32 rows = 0) const;
    // TextRowCounter
    void RowsCounted(int32 lineStart, int32 rows) const override;
    bool IsPreviewedIn(int32 line) const;

    const TextBuffer& fText;
    TextStyle fStyle;
    float fAscent = 12;
    float fDescent = 3;
    BRect fRect;
    bool fIsWrapped = false;
    alignment fAlignment = B_ALIGN_LEFT;
    TextPreview fPreview; // its offset counts from the text's beginning

    mutable TextPieces fPieces{fText}; // of long lines
    mutable TextAdvances fAdvances;

    // Of wrapped text.
    mutable TextRows fRows;
    mutable bool fHasRows = false;
    mutable int32 fCorrections = 0;
};

} // namespace kits
