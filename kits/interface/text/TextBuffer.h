#pragma once

#include "TextDecoding.h"
#include "TextLineIndex.h"

#include "support/SharedText.h"

#include <SupportDefs.h>

#include <memory>
#include <string>
#include <string_view>

namespace kits {

/// A text as bytes, kept exactly, with the places where its lines begin.
///
/// Characters are those of UTF-8; each byte that belongs to none is a character of its own.
class TextBuffer
{
public:
    TextBuffer() = default;
    TextBuffer(const TextBuffer&) = delete;
    TextBuffer& operator=(const TextBuffer&) = delete;

    void SetText(std::string_view text);
    /// The same without copying a large text, which is one of several lines, shown as it is.
    void TakeText(std::string&& text);
    /// Takes the text and the lines of another one, which is empty then.
    void TakeFrom(TextBuffer& other);
    /// Puts `inserted` in the place of the bytes from `from` to `to`.
    void Replace(int32 from, int32 to, std::string_view inserted);
    /// Makes all of the text one line, or takes '\n' as its end.
    void SetSingleLine(bool isSingle);
    bool IsSingleLine() const { return fIsSingleLine; }
    /// Shows a bullet for every character.
    void SetHidesText(bool hides) { fHidesText = hides; }
    bool HidesText() const { return fHidesText; }
    TextShowing Showing() const;

    const std::string& Bytes() const { return *fBytes; }
    int32 Length() const { return static_cast<int32>(fBytes->size()); }
    std::string_view Part(int32 from, int32 to) const;
    /// The same for others to keep, as it is now; takes no longer for a large part. The next change
    /// of the text copies the bytes then.
    SharedText Share(int32 from, int32 to);
    /// All of it, in the same way.
    std::shared_ptr<const std::string> ShareAll();
    /// The nearest offset that is in the text and begins a character.
    int32 Clamp(int32 offset) const;

    int32 CountLines() const { return static_cast<int32>(fLines.CountLines()); }
    int32 LineOf(int32 offset) const { return static_cast<int32>(fLines.LineOf(offset)); }
    int32 LineStart(int32 line) const { return static_cast<int32>(fLines.LineStart(line)); }
    /// Where a line's text ends, before its '\n'.
    int32 LineEnd(int32 line) const;
    std::string_view Line(int32 line) const { return Part(LineStart(line), LineEnd(line)); }

private:
    std::shared_ptr<std::string> fBytes = std::make_shared<std::string>();
    bool fIsShared = false; // others may read it from their threads: it is never changed again
    TextLineIndex fLines;
    bool fIsSingleLine = false;
    bool fHidesText = false;
};

/// How many bytes the character at the beginning of `bytes` has; 0 when the first one belongs to no
/// character of UTF-8.
int32 Utf8Length(std::string_view bytes);
/// The longest beginning of `text` that has at most `length` bytes and cuts no character.
std::string_view CutAtCharacter(std::string_view text, int32 length);

} // namespace kits
