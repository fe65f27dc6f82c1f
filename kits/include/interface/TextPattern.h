#pragma once

#include <SupportDefs.h>

#include <memory>
#include <string>
#include <string_view>

/// A regular expression, in the notation of Perl, that is looked for in texts. An extension of the
/// platform.
///
/// A dot is no line's end, "^" and "$" are the ends of lines. Bytes that are not UTF-8
/// are each like a letter of their own.
/// Thread: one at a time, any.
class BTextPattern
{
public:
    /// Whether capital letters are others than small ones.
    enum class Case { kExact, kFolded };

    /// Takes the expression, which is UTF-8; InitCheck() tells whether it is one.
    explicit BTextPattern(const std::string& expression, Case letters = Case::kExact);
    BTextPattern(const BTextPattern&) = delete;
    BTextPattern& operator=(const BTextPattern&) = delete;
    ~BTextPattern();

    /// B_OK, or B_BAD_VALUE: Error() says what is wrong then, else it is empty.
    status_t InitCheck() const;
    std::string Error() const;
    /// Finds the first match that is not empty and begins at or behind `from`; its end is in
    /// `*end`. All of the text is converted first: large ones are better given in pieces of whole
    /// lines. Units: bytes.
    /// Errors: B_ENTRY_NOT_FOUND; B_BUSY when it would take too long; B_BAD_VALUE as InitCheck().
    /// `*start` and `*end` stay then.
    status_t Find(std::string_view text, size_t from, size_t* start, size_t* end) const;
    /// Puts `replacement` in place of each match, of empty ones too, and what it makes of `text`
    /// into `*result`. In it "\1" to "\9", or "$1" to "$9", stand for what a group caught, "\0"
    /// and "$0" for the match; a doubled "\" or "$" is one. Bytes outside the matches stay as
    /// they are. Errors: as Find(), but that no match is B_OK; `*result` stays then.
    status_t Replace(std::string_view text, std::string_view replacement,
                     std::string* result) const;

private:
    class Expression;

    const std::unique_ptr<Expression> fExpression; // never null
};
