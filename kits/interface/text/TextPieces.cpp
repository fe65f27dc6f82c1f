#include "TextPieces.h"

#include "TextBuffer.h"
#include "TextCutting.h"

#include <algorithm>

namespace kits {

namespace {

constexpr int32 kRowsChanged = -1;

bool StartsBefore(const TextPiece& piece, int32 offset)
{
    return piece.start < offset;
}

bool IsBefore(int32 offset, const TextPiece& piece)
{
    return offset < piece.start;
}

} // namespace

bool TextPieces::IsLong(int32 line) const
{
    return fText.LineEnd(line) - fText.LineStart(line) > kWholeBytes;
}

// The first piece that begins behind an offset.
TextPieces::Place TextPieces::Behind(int32 offset)
{
    return std::upper_bound(fPieces.begin(), fPieces.end(), offset, IsBefore);
}

std::span<TextPiece> TextPieces::Of(int32 line)
{
    if (!IsLong(line)) {
        return {};
    }
    const int32 start = fText.LineStart(line);
    const int32 end = fText.LineEnd(line);
    Place first = std::lower_bound(fPieces.begin(), fPieces.end(), start, StartsBefore);
    if (first == fPieces.end() || first->start != start) {
        first = Recut(line, start, end);
    }
    return {first, std::lower_bound(first, fPieces.end(), end, StartsBefore)};
}

void TextPieces::ForgetSize(int32 offset)
{
    const Place behind = Behind(offset);
    if (behind != fPieces.begin()) {
        TextPiece& piece = *(behind - 1);
        piece.rows = kRowsChanged;
        piece.width = -1;
    }
}

// Replaces the pieces between two offsets of a line by new ones; returns the first of them.
TextPieces::Place TextPieces::Recut(int32 line, int32 from, int32 to)
{
    const int32 start = fText.LineStart(line);
    const std::string_view bytes = fText.Line(line);
    std::vector<TextPiece> cut(1);
    cut.front().start = from;
    while (to - cut.back().start > kPieceBytes + kPieceBytes / 2) {
        TextPiece next;
        next.start = start + SafeCut(bytes, cut.back().start - start + kPieceBytes);
        cut.push_back(next);
    }
    const Place first = std::lower_bound(fPieces.begin(), fPieces.end(), from, StartsBefore);
    const Place last = std::lower_bound(first, fPieces.end(), to, StartsBefore);
    return fPieces.insert(fPieces.erase(first, last), cut.begin(), cut.end());
}

// Moves what is behind a change; returns the first piece there. Those that began in what was
// removed are gone.
TextPieces::Place TextPieces::Shift(int32 offset, int32 removed, int32 inserted)
{
    const Place first = Behind(offset);
    const Place last = Behind(offset + removed);
    for (Place piece = last; piece != fPieces.end(); ++piece) {
        piece->start += inserted - removed;
    }
    return fPieces.erase(first, last);
}

void TextPieces::TextReplaced(int32 offset, int32 removed, int32 inserted)
{
    if (fPieces.empty()) {
        return;
    }
    const int32 firstLine = fText.LineOf(offset);
    const int32 lastLine = fText.LineOf(offset + inserted);
    const int32 firstStart = fText.LineStart(firstLine);
    const int32 lastEnd = fText.LineEnd(lastLine);

    // The piece behind the change is cut anew too: so short pieces do not gather, and borders move
    // only a little.
    const Place behind = Shift(offset, removed, inserted);
    const bool isLastCut = behind != fPieces.end() && behind->start < lastEnd;
    const Place kept = isLastCut ? behind + 1 : behind;
    const int32 to =
        kept != fPieces.end() && kept->start < lastEnd && isLastCut ? kept->start : lastEnd;
    // A border at the very place may be none any more.
    Place changed = behind;
    const auto isInFirst = [&](Place piece) {
        return piece != fPieces.begin() && (piece - 1)->start >= firstStart;
    };
    while (isInFirst(changed) && (changed == behind || changed->start == offset)) {
        --changed;
    }
    const bool isFirstCut = changed != behind;
    const int32 from = isFirstCut ? changed->start : firstStart;
    fPieces.erase(changed, kept);

    const auto recut = [this](int32 line, int32 start, int32 end) {
        for (Place piece = Recut(line, start, end); piece != Behind(end - 1); ++piece) {
            piece->rows = kRowsChanged;
        }
    };
    const auto follow = [&](int32 line, bool isCut, int32 start, int32 end) {
        if (!IsLong(line)) {
            const auto first = std::lower_bound(fPieces.begin(), fPieces.end(),
                                                fText.LineStart(line), StartsBefore);
            fPieces.erase(first, Behind(fText.LineEnd(line)));
        } else if (isCut) {
            recut(line, start, end);
        }
    };
    if (firstLine == lastLine) {
        follow(firstLine, isFirstCut || isLastCut, from, to);
    } else {
        follow(firstLine, isFirstCut, from, fText.LineEnd(firstLine));
        follow(lastLine, isLastCut, fText.LineStart(lastLine), to);
    }
}

} // namespace kits
