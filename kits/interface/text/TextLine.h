#pragma once

#include "TextLayout.h"
#include "TextPieces.h"

#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

class QPainter;

namespace kits {

class TextAdvances;

/// Learns that a line has other rows than was assumed.
class TextRowCounter
{
public:
    virtual ~TextRowCounter() = default;
    virtual void RowsCounted(int32 lineStart, int32 rows) const = 0;
};

/// One line of a text as it is set: shaped as a whole, or piece by piece when it is long. Shapes
/// only the pieces that are asked for.
///
/// Long lines (TextPieces::kWholeBytes) are set more plainly than others, each piece by itself: no
/// kerning, ligatures or joined letters across a border, tab stops count from the piece's beginning
/// and directions are mixed within a piece only. All of a line runs along the direction that its
/// first piece has. Wrapped pieces begin a row each; text that is read on from its beginning or
/// from where one went is cut where a row begins anyway, behind a change and before such a place a
/// row may be short. Of many wrapped pieces only those that are asked for are counted, the others
/// are taken to have as many rows as the first one. What is not plain (TextAdvances) is shaped once
/// to learn its width; of a line with more than a MiB of such text the rest is assumed to be as
/// wide on the average, and moves a little when it is first looked at.
///
/// Made when it is needed and thrown away, as layouts are. Units: as TextLayout's.
class TextLine
{
public:
    /// The part of a row that is seen, from the left edge of its text.
    struct Seen
    {
        double left;
        double right;
    };
    static constexpr Seen kAll = {-1e9, 1e9};
    using Spans = std::vector<std::pair<double, double>>;

    /// What a line is set from. Ownership: lends all, while the TextLine lives.
    struct Source
    {
        std::string_view bytes;
        int32 start; // in the text
        const TextStyle& style;
        std::span<TextPiece> pieces; // none: it is set as a whole
        TextAdvances& advances;
        /// How many rows it has as far as known; 0: they are to be counted.
        int32 rows;
        /// Told of rows that are counted later.
        const TextRowCounter* counter;
    };

    /// `preview` is null when there is none in this line.
    TextLine(const Source& source, const TextPreview* preview);
    TextLine(const TextLine&) = delete;
    TextLine& operator=(const TextLine&) = delete;

    /// Counts a row's piece, when that was not done.
    void CountRow(int32 row) const { PlaceOf(row); }
    /// Whether all of it is one row of several pieces: wider than any view.
    bool IsOneLongRow() const { return IsCut() && !IsWrapped(); }
    int32 CountRows() const;
    int32 RowOf(int32 offset) const;
    int32 RowStart(int32 row) const;
    /// The last place for the caret in a row.
    int32 RowEnd(int32 row) const;
    double RowWidth(int32 row) const;
    /// The same as far as it is known; the rest as wide on the average.
    double RoughRowWidth(int32 row) const;
    bool IsRightToLeft() const;

    double XOf(int32 offset) const;
    /// Where the caret stands: within the preview, while there is one.
    double CaretX(int32 offset) const;
    int32 OffsetAt(int32 row, double x) const;
    /// The caret's next place as seen; the same offset at the line's edges.
    int32 LeftOf(int32 offset) const;
    int32 RightOf(int32 offset) const;
    /// The stretches of a row that the text between two offsets takes, as far as they are seen;
    /// several where directions are mixed.
    Spans SpansOf(int32 row, int32 from, int32 to, Seen seen) const;

    /// Draws what is seen of a row in the painter's colour, its base line beginning at `baseLine`.
    void DrawRow(QPainter& painter, int32 row, QPointF baseLine, Seen seen) const;

private:
    enum class Side : uint8 { kLeft, kRight };
    struct Stretch // of a row: a row of a piece
    {
        int32 piece;
        int32 row;   // of the piece
        double left; // of the piece's text
    };

    bool IsCut() const { return fDirection != TextDirection::kUnknown; }
    bool IsWrapped() const { return fSource.style.wrapWidth > 0; }
    int32 CountPieces() const { return static_cast<int32>(fPieces.size()); }
    TextPiece& Piece(int32 index) const { return fPieces[static_cast<size_t>(index)]; }
    int32 StartOf(int32 piece) const { return Piece(piece).start - fSource.start; }
    int32 EndOf(int32 piece) const;
    std::string_view BytesOf(int32 piece) const;
    int32 PieceOf(int32 offset) const;
    int32 SettledPieceOf(int32 offset) const;
    bool HasPreview(int32 piece) const;
    const TextLayout& LayoutOf(int32 piece) const;
    std::unique_ptr<TextLayout> Lay(int32 piece) const;

    void FindDirection();
    void CountPiecesRows();
    bool Settle(int32 piece) const;
    int32 RowsOf(int32 piece) const;
    int32 FirstRowOf(int32 piece) const;
    Stretch PlaceOf(int32 row) const;
    double WidthOf(int32 piece) const;
    double LeftOfPiece(int32 piece) const;
    std::vector<Stretch> StretchesOf(int32 row, Seen seen) const;
    int32 Step(int32 offset, Side side) const;

    Source fSource;
    std::optional<TextPreview> fPreview;
    TextPiece fWhole;                                   // of a line that is not cut
    std::span<TextPiece> fPieces;                       // at least one
    TextDirection fDirection = TextDirection::kUnknown; // of a line that is cut

    struct Shaped
    {
        int32 piece;
        std::unique_ptr<TextLayout> layout;
    };
    mutable int32 fRows = 0;      // of a line that is cut and wrapped
    int64 fRowsPerPart = 0;       // of kRoughPart bytes
    mutable int32 fNearPiece = 0; // that was asked for last, and its first row
    mutable int32 fNearRow = 0;
    mutable std::vector<Shaped> fShaped; // the last few
    mutable int32 fMeasured = 0;         // how many pieces were shaped to learn their widths
    mutable double fByteWidth = 0;       // on the average of the last one
};

} // namespace kits
