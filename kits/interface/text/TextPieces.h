#pragma once

#include "TextDecoding.h"

#include <SupportDefs.h>

#include <span>
#include <vector>

namespace kits {

class TextBuffer;

/// A stretch of a long line that is set by itself, and what is known of it.
struct TextPiece
{
    int32 start = 0;   // in the text
    int32 rows = 0;    // of wrapped text; 0: not known, below: not known any more
    double width = -1; // of text that is not wrapped; below zero: not known
    bool isWidthAssumed = false;
    TextDirection lineDirection = TextDirection::kUnknown; // in a line's first piece
};

/// Cuts long lines into pieces, so that work at one place of a line does not grow with the line.
///
/// Lines of up to kWholeBytes are never cut. A line is cut when it is asked for; a change cuts
/// anew what it touched, up to the second border behind it, and leaves the other pieces alone.
class TextPieces
{
public:
    static constexpr int32 kWholeBytes = 4096;
    static constexpr int32 kPieceBytes = 2048;

    /// Borrows the text, for as long as it lives.
    explicit TextPieces(const TextBuffer& text) : fText(text) {}

    void Clear() { fPieces.clear(); }
    /// Follows a change that was made: at `offset`, `removed` bytes went and `inserted` came.
    void TextReplaced(int32 offset, int32 removed, int32 inserted);
    /// The piece at an offset is set otherwise now.
    void ForgetSize(int32 offset);

    /// The pieces of a line; none for a line that is set as a whole. Their sizes, and the borders
    /// between those whose rows are not known, are the caller's to set. Ownership: lends, until
    /// the text changes or another line is asked for.
    std::span<TextPiece> Of(int32 line);

private:
    using Place = std::vector<TextPiece>::iterator;

    Place Behind(int32 offset);
    Place Shift(int32 offset, int32 removed, int32 inserted);
    Place Recut(int32 line, int32 from, int32 to);
    bool IsLong(int32 line) const;

    const TextBuffer& fText;
    std::vector<TextPiece> fPieces; // by their starts; all of a line or none of it
};

} // namespace kits
