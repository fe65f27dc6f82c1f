#include "TextLine.h"

#include "TextAdvances.h"

#include <algorithm>

namespace kits {

namespace {

constexpr size_t kMostShaped = 4;
// A line of so many wrapped pieces is counted as a whole.
constexpr int32 kMostCounted = 32;
constexpr int64 kRoughPart = 1 << 16;
// How many pieces are shaped at once only to learn their widths.
constexpr int32 kMostMeasured = 512;
// Beyond both edges of any piece.
constexpr double kFarAway = 1 << 24;

} // namespace

TextLine::TextLine(const Source& source, const TextPreview* preview) : fSource(source)
{
    if (preview != nullptr) {
        fPreview = *preview;
    }
    if (source.pieces.empty()) {
        fWhole.start = source.start;
        fPieces = {&fWhole, 1};
    } else {
        fPieces = source.pieces;
        FindDirection();
    }
    if (IsWrapped() && IsCut()) {
        CountPiecesRows();
    }
}

void TextLine::FindDirection()
{
    TextPiece& first = fPieces.front();
    if (first.lineDirection == TextDirection::kUnknown) {
        const bool isRightToLeft =
            DecodedText(BytesOf(0), fSource.style.showing).Text().isRightToLeft();
        first.lineDirection =
            isRightToLeft ? TextDirection::kRightToLeft : TextDirection::kLeftToRight;
    }
    fDirection = first.lineDirection;
}

// Pieces

int32 TextLine::EndOf(int32 piece) const
{
    return piece + 1 < CountPieces() ? StartOf(piece + 1)
                                     : static_cast<int32>(fSource.bytes.size());
}

std::string_view TextLine::BytesOf(int32 piece) const
{
    const size_t start = static_cast<size_t>(StartOf(piece));
    return fSource.bytes.substr(start, static_cast<size_t>(EndOf(piece)) - start);
}

int32 TextLine::PieceOf(int32 offset) const
{
    const auto behind =
        std::upper_bound(fPieces.begin() + 1, fPieces.end(), offset + fSource.start,
                         [](int32 place, const TextPiece& piece) { return place < piece.start; });
    return static_cast<int32>(behind - fPieces.begin()) - 1;
}

// Counting a piece may move its border.
int32 TextLine::SettledPieceOf(int32 offset) const
{
    int32 piece = PieceOf(offset);
    while (IsWrapped() && Settle(piece)) {
        piece = PieceOf(offset);
    }
    return piece;
}

bool TextLine::HasPreview(int32 piece) const
{
    return fPreview.has_value() && PieceOf(fPreview->offset) == piece;
}

std::unique_ptr<TextLayout> TextLine::Lay(int32 piece) const
{
    if (!HasPreview(piece)) {
        return std::make_unique<TextLayout>(BytesOf(piece), fSource.style, nullptr, fDirection);
    }
    TextPreview inPiece = *fPreview;
    inPiece.offset -= StartOf(piece);
    return std::make_unique<TextLayout>(BytesOf(piece), fSource.style, &inPiece, fDirection);
}

const TextLayout& TextLine::LayoutOf(int32 piece) const
{
    for (const Shaped& shaped : fShaped) {
        if (shaped.piece == piece) {
            return *shaped.layout;
        }
    }
    if (fShaped.size() >= kMostShaped) {
        fShaped.erase(fShaped.begin());
    }
    fShaped.push_back({piece, Lay(piece)});
    const TextLayout& layout = *fShaped.back().layout;
    if (IsOneLongRow()) {
        Piece(piece).width = layout.Advance();
        Piece(piece).isWidthAssumed = false;
    }
    return layout;
}

double TextLine::WidthOf(int32 piece) const
{
    TextPiece& known = Piece(piece);
    if (known.width >= 0) {
        return known.width;
    }
    const std::string_view bytes = BytesOf(piece);
    const std::optional<double> plain =
        HasPreview(piece) ? std::nullopt : fSource.advances.WidthOf(bytes, fSource.style);
    if (plain.has_value()) {
        known.width = *plain;
    } else if (fMeasured < kMostMeasured) {
        fMeasured++;
        known.width = Lay(piece)->Advance();
        fByteWidth = known.width / static_cast<double>(bytes.size());
    } else {
        known.width = fByteWidth * static_cast<double>(bytes.size());
        known.isWidthAssumed = true;
    }
    return known.width;
}

double TextLine::LeftOfPiece(int32 piece) const
{
    double left = 0;
    if (!IsOneLongRow()) {
        return left;
    }
    const bool isRightToLeft = IsRightToLeft();
    const int32 first = isRightToLeft ? piece + 1 : 0;
    const int32 end = isRightToLeft ? CountPieces() : piece;
    for (int32 i = first; i < end; ++i) {
        left += WidthOf(i);
    }
    return left;
}

bool TextLine::IsRightToLeft() const
{
    return IsCut() ? fDirection == TextDirection::kRightToLeft : LayoutOf(0).IsRightToLeft();
}

// Rows

void TextLine::CountPiecesRows()
{
    const bool isCountedWhole = CountPieces() <= kMostCounted;
    Settle(0);
    fRowsPerPart = RowsOf(0) * kRoughPart / EndOf(0);
    fRows = fSource.rows;
    if (fRows > 0) {
        return;
    }
    for (int32 i = 0; i < CountPieces(); ++i) {
        if (isCountedWhole || Piece(i).rows < 0) {
            Settle(i);
        }
    }
    fRows = FirstRowOf(CountPieces());
}

// Counts the rows of a piece, unless that was done. The border between two new pieces moves to
// where the first one's last row begins, so that the second one fills this row.
bool TextLine::Settle(int32 index) const
{
    TextPiece& piece = Piece(index);
    if (!IsCut() || piece.rows > 0) {
        return false;
    }
    const bool isNextNew = index + 1 < CountPieces() && Piece(index + 1).rows <= 0;
    const auto rows = [&] {
        return RowsOf(index) + (isNextNew ? RowsOf(index + 1) : 0);
    };
    const int32 before = rows();
    const std::unique_ptr<TextLayout> layout = Lay(index);
    piece.rows = layout->CountRows();
    if (isNextNew && piece.rows > 1 && !HasPreview(index)) {
        piece.rows--;
        Piece(index + 1).start = piece.start + layout->RowStart(piece.rows);
    }
    if (index < fNearPiece) {
        fNearPiece = 0;
        fNearRow = 0;
    }
    // While the line is made, it is counted by who makes it.
    if (fRows > 0 && rows() != before) {
        fRows += rows() - before;
        fSource.counter->RowsCounted(fSource.start, fRows);
    }
    return true;
}

int32 TextLine::RowsOf(int32 piece) const
{
    if (!IsCut() || !IsWrapped()) {
        return LayoutOf(piece).CountRows();
    }
    const int32 counted = Piece(piece).rows;
    if (counted > 0) {
        return counted;
    }
    const int64 rough = (EndOf(piece) - StartOf(piece)) * fRowsPerPart / kRoughPart;
    return std::max<int32>(1, static_cast<int32>(rough));
}

int32 TextLine::FirstRowOf(int32 piece) const
{
    int32 row = 0;
    for (int32 i = 0; i < piece; ++i) {
        row += RowsOf(i);
    }
    return row;
}

TextLine::Stretch TextLine::PlaceOf(int32 row) const
{
    row = std::max<int32>(row, 0);
    const bool isFurther = row >= fNearRow;
    int32 piece = isFurther ? fNearPiece : 0;
    int32 first = isFurther ? fNearRow : 0;
    do {
        while (piece + 1 < CountPieces() && row >= first + RowsOf(piece)) {
            first += RowsOf(piece++);
        }
    } while (Settle(piece)); // it may have fewer rows than was assumed
    fNearPiece = piece;
    fNearRow = first;
    return {piece, std::min(row - first, RowsOf(piece) - 1), 0};
}

int32 TextLine::CountRows() const
{
    if (IsOneLongRow()) {
        return 1;
    }
    return IsCut() ? fRows : RowsOf(0);
}

int32 TextLine::RowOf(int32 offset) const
{
    if (IsOneLongRow()) {
        return 0;
    }
    const int32 piece = SettledPieceOf(offset);
    return FirstRowOf(piece) + LayoutOf(piece).RowOf(offset - StartOf(piece));
}

int32 TextLine::RowStart(int32 row) const
{
    if (IsOneLongRow()) {
        return 0;
    }
    const Stretch place = PlaceOf(row);
    return StartOf(place.piece) + LayoutOf(place.piece).RowStart(place.row);
}

int32 TextLine::RowEnd(int32 row) const
{
    if (IsOneLongRow()) {
        return static_cast<int32>(fSource.bytes.size());
    }
    const Stretch place = PlaceOf(row);
    const TextLayout& layout = LayoutOf(place.piece);
    const int32 start = StartOf(place.piece);
    if (place.piece + 1 < CountPieces() && place.row + 1 == layout.CountRows()) {
        // The border itself is a place of the next row.
        return start + layout.PlaceBefore(EndOf(place.piece) - start);
    }
    return start + layout.RowEnd(place.row);
}

double TextLine::RowWidth(int32 row) const
{
    if (IsOneLongRow()) {
        return LeftOfPiece(IsRightToLeft() ? -1 : CountPieces());
    }
    const Stretch place = PlaceOf(row);
    return LayoutOf(place.piece).RowWidth(place.row);
}

double TextLine::RoughRowWidth(int32 row) const
{
    if (!IsOneLongRow()) {
        return RowWidth(row);
    }
    double width = WidthOf(0);
    size_t bytes = BytesOf(0).size();
    for (int32 i = 1; i < CountPieces(); ++i) {
        if (Piece(i).width >= 0) {
            width += Piece(i).width;
            bytes += BytesOf(i).size();
        }
    }
    return width / static_cast<double>(bytes) * static_cast<double>(fSource.bytes.size());
}

// What of a row is seen, from left to right.
std::vector<TextLine::Stretch> TextLine::StretchesOf(int32 row, Seen seen) const
{
    if (!IsOneLongRow()) {
        return {PlaceOf(row)};
    }
    std::vector<Stretch> stretches;
    const int32 count = CountPieces();
    double left = 0;
    for (int32 i = 0; i < count && left <= seen.right; ++i) {
        const int32 piece = IsRightToLeft() ? count - 1 - i : i;
        double right = left + WidthOf(piece);
        if (right >= seen.left) {
            if (Piece(piece).isWidthAssumed) {
                LayoutOf(piece); // tells how wide it is
                right = left + WidthOf(piece);
            }
            stretches.push_back({piece, 0, left});
        }
        left = right;
    }
    return stretches;
}

// Places

double TextLine::XOf(int32 offset) const
{
    const int32 piece = SettledPieceOf(offset);
    const double x = LayoutOf(piece).XOf(offset - StartOf(piece));
    return LeftOfPiece(piece) + x;
}

double TextLine::CaretX(int32 offset) const
{
    const int32 piece = SettledPieceOf(offset);
    const double x = LayoutOf(piece).CaretX(offset - StartOf(piece));
    return LeftOfPiece(piece) + x;
}

int32 TextLine::OffsetAt(int32 row, double x) const
{
    Stretch place{0, 0, 0};
    if (IsOneLongRow()) {
        // The first or the last piece when the point is outside.
        const std::vector<Stretch> stretches = StretchesOf(row, {x, std::max(x, 0.0)});
        if (stretches.empty()) {
            const int32 last = IsRightToLeft() ? 0 : CountPieces() - 1;
            place = {last, 0, LeftOfPiece(last)};
        } else {
            place = stretches.front();
        }
    } else {
        place = PlaceOf(row);
    }
    const int32 offset =
        StartOf(place.piece) + LayoutOf(place.piece).OffsetAt(place.row, x - place.left);
    return IsCut() ? std::min(offset, RowEnd(row)) : offset;
}

int32 TextLine::LeftOf(int32 offset) const
{
    return Step(offset, Side::kLeft);
}

int32 TextLine::RightOf(int32 offset) const
{
    return Step(offset, Side::kRight);
}

int32 TextLine::Step(int32 offset, Side side) const
{
    const auto step = [this, side](int32 piece, int32 from) {
        const TextLayout& layout = LayoutOf(piece);
        return StartOf(piece) + (side == Side::kLeft ? layout.LeftOf(from) : layout.RightOf(from));
    };
    const int32 piece = SettledPieceOf(offset);
    const int32 next = step(piece, offset - StartOf(piece));
    const bool isForward = (side == Side::kRight) != IsRightToLeft();
    const int32 neighbour = isForward ? piece + 1 : piece - 1;
    if (next != offset || neighbour < 0 || neighbour >= CountPieces()) {
        return next;
    }
    if (IsOneLongRow()) {
        // At the piece's edge, which is that of its neighbour: on from there.
        const double edge = side == Side::kRight ? -kFarAway : kFarAway;
        return step(neighbour, LayoutOf(neighbour).OffsetAt(0, edge));
    }
    Settle(neighbour);
    // Only at its beginning: rows of a right-to-left piece have edges too.
    return !isForward && offset == StartOf(piece)
               ? step(neighbour, EndOf(neighbour) - StartOf(neighbour))
               : next;
}

TextLine::Spans TextLine::SpansOf(int32 row, int32 from, int32 to, Seen seen) const
{
    Spans spans;
    for (const Stretch& stretch : StretchesOf(row, seen)) {
        const int32 start = StartOf(stretch.piece);
        const int32 end = EndOf(stretch.piece);
        if (to <= start || from >= end) {
            continue;
        }
        if (IsOneLongRow() && from <= start && to >= end) {
            spans.emplace_back(stretch.left, stretch.left + WidthOf(stretch.piece));
            continue;
        }
        const TextLayout& layout = LayoutOf(stretch.piece);
        for (const auto& [left, right] :
             layout.Spans(stretch.row, std::max(0, from - start), std::min(to, end) - start)) {
            spans.emplace_back(stretch.left + left, stretch.left + right);
        }
    }
    return spans;
}

void TextLine::DrawRow(QPainter& painter, int32 row, QPointF baseLine, Seen seen) const
{
    for (const Stretch& stretch : StretchesOf(row, seen)) {
        LayoutOf(stretch.piece).DrawRow(painter, stretch.row, baseLine + QPointF(stretch.left, 0));
    }
}

} // namespace kits
