#pragma once

#include <SupportDefs.h>

namespace kits {

class TextBuffer;

/// Where the caret goes in a text, in the order of its bytes. What a person sees as one character
/// is never split, nor are a letter and its accents. Of a line longer than TextPieces::kWholeBytes
/// only a KiB to either side is looked at: a longer word is walked in steps.
class TextMovement
{
public:
    /// Borrows the text, for as long as it lives.
    explicit TextMovement(const TextBuffer& text) : fText(text) {}

    int32 NextCharacter(int32 offset) const;
    int32 PreviousCharacter(int32 offset) const;
    /// The beginning of the next word, or the line's end, then the next line's beginning.
    int32 NextWord(int32 offset) const;
    /// The beginning of this word, or of the one before it.
    int32 PreviousWord(int32 offset) const;
    /// The word at an offset; blanks, or a sign by itself, where no word is.
    void GetWord(int32 offset, int32* from, int32* to) const;
    /// The line at an offset, with its line break.
    void GetLine(int32 offset, int32* from, int32* to) const;

private:
    const TextBuffer& fText;
};

} // namespace kits
