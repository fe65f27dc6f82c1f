#pragma once

#include <SupportDefs.h>

/// A text of bytes that grows and shrinks as needed, always closed by a zero byte.
///
/// Units: lengths and positions are bytes; letters of several bytes (UTF-8) are not split by
/// anything that does not cut at a given position. Case is that of ASCII letters. Positions out of
/// range are brought to the nearest end, null stands for the empty text. When memory runs out the
/// text stays as it was. Thread: one at a time, as for any value.
class BString
{
public:
    /// Makes the empty text, or a copy of one.
    BString() = default;
    BString(const char* text); // NOLINT(google-explicit-constructor): the platform converts too
    BString(const BString& other);
    BString(BString&& other) noexcept;
    /// Takes `maxLength` bytes of `text` at most.
    BString(const char* text, int32 maxLength);
    ~BString();

    /// Lends the text, until the next change.
    const char* String() const { return fText; }
    /// The number of bytes, without the closing zero.
    int32 Length() const { return fLength; }
    /// Letters rather than bytes: every byte that does not continue a UTF-8 sequence.
    int32 CountChars() const;
    /// Whether there are no bytes.
    bool IsEmpty() const { return fLength == 0; }

    /// Takes another text, or one of a single byte.
    BString& operator=(const BString& other);
    BString& operator=(BString&& other) noexcept;
    BString& operator=(const char* text);
    BString& operator=(char character);
    /// Takes a text, whole or `maxLength` bytes of it at most.
    BString& SetTo(const char* text);
    BString& SetTo(const char* text, int32 maxLength);
    BString& SetTo(const BString& other);
    BString& SetTo(const BString& other, int32 maxLength);
    /// Takes a byte, `count` times.
    BString& SetTo(char character, int32 count);
    /// Takes the text out of `from`, which is empty afterwards, cut to `maxLength` bytes.
    BString& Adopt(BString& from);
    BString& Adopt(BString& from, int32 maxLength);
    /// Sets the text as printf would write it.
    BString& SetToFormat(const char* format, ...) __attribute__((format(printf, 2, 3)));

    /// Copies part of the text. `into` as a buffer must have room for `length` bytes; it gets no
    /// zero byte.
    BString& CopyInto(BString& into, int32 fromOffset, int32 length) const;
    void CopyInto(char* into, int32 fromOffset, int32 length) const;
    /// The same, and removes that part here.
    BString& MoveInto(BString& into, int32 from, int32 length);
    void MoveInto(char* into, int32 from, int32 length);

    /// Appends a text or a byte.
    BString& operator+=(const BString& other);
    BString& operator+=(const char* text);
    BString& operator+=(char character);
    /// Appends a text, whole or `maxLength` bytes of it at most.
    BString& Append(const BString& other);
    BString& Append(const BString& other, int32 maxLength);
    BString& Append(const char* text);
    BString& Append(const char* text, int32 maxLength);
    /// Appends a byte, `count` times.
    BString& Append(char character, int32 count);
    /// Puts a text before, whole or `maxLength` bytes of it at most.
    BString& Prepend(const BString& other);
    BString& Prepend(const BString& other, int32 maxLength);
    BString& Prepend(const char* text);
    BString& Prepend(const char* text, int32 maxLength);
    /// Puts a byte before, `count` times.
    BString& Prepend(char character, int32 count);
    /// Inserts at `position`: all of a text, up to `maxLength` bytes of it, or those from
    /// `fromOffset` on.
    BString& Insert(const BString& other, int32 position);
    BString& Insert(const BString& other, int32 maxLength, int32 position);
    BString& Insert(const BString& other, int32 fromOffset, int32 maxLength, int32 position);
    /// The same of plain text.
    BString& Insert(const char* text, int32 position);
    BString& Insert(const char* text, int32 maxLength, int32 position);
    BString& Insert(const char* text, int32 fromOffset, int32 maxLength, int32 position);
    /// Inserts a byte at `position`, `count` times.
    BString& Insert(char character, int32 count, int32 position);

    /// Cuts the text at `newLength`; a lazy cut keeps the memory.
    BString& Truncate(int32 newLength, bool lazy = true);
    /// Removes `length` bytes from `from` on.
    BString& Remove(int32 from, int32 length);
    /// Removes the first or last place where `text` occurs, or all of them.
    BString& RemoveFirst(const BString& text);
    BString& RemoveLast(const BString& text);
    BString& RemoveAll(const BString& text);
    /// Removes every byte that occurs in `setOfBytes`.
    BString& RemoveSet(const char* setOfBytes);

    /// Less than, equal to or greater than 0 as this text comes before, is equal to or comes after
    /// the other, byte by byte, within the first `count` bytes where that is given.
    int Compare(const BString& other) const;
    int Compare(const char* other) const;
    int Compare(const BString& other, int32 count) const;
    int Compare(const char* other, int32 count) const;
    /// The same without regard to case.
    int ICompare(const BString& other) const;
    int ICompare(const char* other) const;
    int ICompare(const BString& other, int32 count) const;
    int ICompare(const char* other, int32 count) const;

    /// Where `text` occurs first, at `fromOffset` or after it. Errors: B_ERROR when it does not, or
    /// when the offset is outside the text.
    int32 FindFirst(const BString& text) const;
    int32 FindFirst(const BString& text, int32 fromOffset) const;
    int32 FindFirst(const char* text) const;
    int32 FindFirst(const char* text, int32 fromOffset) const;
    /// The same of a byte.
    int32 FindFirst(char character) const;
    int32 FindFirst(char character, int32 fromOffset) const;
    /// Where `text` occurs last, with its end at `beforeOffset` or before it. Errors: as above.
    int32 FindLast(const BString& text) const;
    int32 FindLast(const BString& text, int32 beforeOffset) const;
    int32 FindLast(const char* text) const;
    int32 FindLast(const char* text, int32 beforeOffset) const;
    /// The same of a byte.
    int32 FindLast(char character) const;
    int32 FindLast(char character, int32 beforeOffset) const;
    /// The first and last place without regard to case. Errors: as above.
    int32 IFindFirst(const BString& text) const;
    int32 IFindFirst(const BString& text, int32 fromOffset) const;
    int32 IFindLast(const BString& text) const;
    int32 IFindLast(const BString& text, int32 beforeOffset) const;

    /// Replaces a byte: where it occurs first or last, everywhere, or `maxCount` times, from
    /// `fromOffset` on.
    BString& ReplaceFirst(char replaceThis, char withThis);
    BString& ReplaceLast(char replaceThis, char withThis);
    BString& ReplaceAll(char replaceThis, char withThis, int32 fromOffset = 0);
    BString& Replace(char replaceThis, char withThis, int32 maxCount, int32 fromOffset = 0);
    /// Replaces a text, from left to right, none of it twice. What is put in is not searched again.
    BString& ReplaceFirst(const char* replaceThis, const char* withThis);
    BString& ReplaceLast(const char* replaceThis, const char* withThis);
    BString& ReplaceAll(const char* replaceThis, const char* withThis, int32 fromOffset = 0);
    BString& Replace(const char* replaceThis, const char* withThis, int32 maxCount,
                     int32 fromOffset = 0);
    /// The same, finding without regard to case.
    BString& IReplaceFirst(const char* replaceThis, const char* withThis);
    BString& IReplaceLast(const char* replaceThis, const char* withThis);
    BString& IReplaceAll(const char* replaceThis, const char* withThis, int32 fromOffset = 0);
    BString& IReplace(const char* replaceThis, const char* withThis, int32 maxCount,
                      int32 fromOffset = 0);
    /// Replaces every run of bytes that occur in `setOfBytes`; the variant with a letter, each
    /// byte.
    BString& ReplaceSet(const char* setOfBytes, char with);
    BString& ReplaceSet(const char* setOfBytes, const char* with);

    /// The byte at `index`, which must be inside the text (or, to read, its closing zero).
    char operator[](int32 index) const { return fText[index]; }
    char& operator[](int32 index) { return fText[index]; }
    /// The byte at `index`, or 0 when it is outside the text.
    char ByteAt(int32 index) const;

    /// Lends the text for writing, with room for `maxLength` bytes and a zero byte; nothing else
    /// may be called until UnlockBuffer(). Null when memory runs out.
    char* LockBuffer(int32 maxLength);
    /// Ends the loan; the text is `length` bytes long now, or up to its first zero byte when
    /// `length` is -1.
    BString& UnlockBuffer(int32 length = -1);

    /// Makes all letters small, or large.
    BString& ToLower();
    BString& ToUpper();
    /// Makes the first letter large and all others small.
    BString& Capitalize();
    /// The same in every word: a run of letters.
    BString& CapitalizeEachWord();

    /// Puts `escapeWith` before every byte that occurs in `setOfBytes`; of `original`, where that
    /// is given.
    BString& CharacterEscape(const char* setOfBytes, char escapeWith);
    BString& CharacterEscape(const char* original, const char* setOfBytes, char escapeWith);
    /// Takes one `escapeCharacter` away before every byte it stands before.
    BString& CharacterDeescape(char escapeCharacter);
    BString& CharacterDeescape(const char* original, char escapeCharacter);

    /// Appends a text or a byte.
    BString& operator<<(const char* text);
    BString& operator<<(const BString& other);
    BString& operator<<(char character);
    /// Appends a whole number in decimal.
    BString& operator<<(int32 value);
    BString& operator<<(uint32 value);
    BString& operator<<(int64 value);
    BString& operator<<(uint64 value);
    /// Appends a number with two places.
    BString& operator<<(float value);

private:
    char* Reserve(int32 capacity);
    char* OpenGap(int32 position, int32 length);
    BString& InsertBytes(const char* bytes, int32 length, int32 position);

    // Not null: an empty text without memory of its own points at a shared zero, which is never
    // written.
    static char sEmpty[1];
    char* fText = sEmpty;
    int32 fLength = 0;
    int32 fCapacity = 0; // without the closing zero; 0 when nothing is owned
};

/// Whether the bytes are the same.
bool operator==(const BString& a, const BString& b);
bool operator==(const BString& a, const char* b);
bool operator==(const char* a, const BString& b);
/// Whether the bytes differ.
bool operator!=(const BString& a, const BString& b);
bool operator!=(const BString& a, const char* b);
bool operator!=(const char* a, const BString& b);
/// Order byte by byte, as Compare().
bool operator<(const BString& a, const BString& b);
bool operator<(const BString& a, const char* b);
bool operator<(const char* a, const BString& b);

/// The same, or equal.
bool operator<=(const BString& a, const BString& b);
bool operator<=(const BString& a, const char* b);
bool operator<=(const char* a, const BString& b);
/// The reverse order.
bool operator>(const BString& a, const BString& b);
bool operator>(const BString& a, const char* b);
bool operator>(const char* a, const BString& b);

/// The same, or equal.
bool operator>=(const BString& a, const BString& b);
bool operator>=(const BString& a, const char* b);
bool operator>=(const char* a, const BString& b);
