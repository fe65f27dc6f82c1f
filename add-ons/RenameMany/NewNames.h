#pragma once

#include <SupportDefs.h>

#include <ctime>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class BTextPattern;

namespace rename_many {

/// One selected entry.
struct Entry
{
    std::string name;    // as it is now; any bytes
    uint32 folder = 0;   // which of the folders it lies in
    time_t modified = 0; // seconds since 1970
    bool isFolder = false;
    bool isGone = false; // it was not there when it was last looked at
};

using Entries = std::vector<Entry>;

/// A name in two: the ending begins with its dot, and is empty when there is none.
struct NameParts
{
    std::string_view name;
    std::string_view ending;
};

/// Takes a name apart: what follows the last dot is its ending, with the ".tar" before it. Folders
/// have none, nor does a dot at either end begin one.
NameParts SplitName(std::string_view name, bool isFolder);

/// What letters become.
enum class Letters : uint8 { kKept, kSmall, kCapitals, kTitle };

/// What a person has asked for.
struct Rules
{
    std::string pattern =
        "[N][E]";    // [N] name, [E] ending, [C] counter, [D] date; the rest as it is
    int64 start = 1; // of the counter
    int64 step = 1;
    int32 digits = 1;   // at least so many, with zeros before
    std::string search; // empty: nothing is replaced
    std::string replacement;
    bool isExpression = false; // what is searched for
    Letters letters = Letters::kKept;
    bool changesEnding = false; // the letters of the ending too
};

/// Makes the new names of entries by the rules: the pattern first, then the replacing, then the
/// letters. Thread: one at a time.
class NewNames
{
public:
    explicit NewNames(Rules rules);
    NewNames(const NewNames&) = delete;
    NewNames& operator=(const NewNames&) = delete;
    ~NewNames();

    /// What is wrong with the rules, empty when nothing is.
    std::string Error() const;
    /// Makes the name of the entry at `place` of the selection, counted from 0. Errors: B_BUSY when
    /// the expression takes too long; B_BAD_VALUE when it is none. `*name` stays then.
    status_t Make(const Entry& entry, size_t place, std::string* name) const;

private:
    std::string FromPattern(const Entry& entry, size_t place) const;
    std::string Counter(size_t place) const;
    status_t Replace(std::string* name) const;
    void ChangeLetters(bool isFolder, std::string* name) const;

    const Rules fRules;
    std::unique_ptr<BTextPattern> fExpression; // null: plain text
};

} // namespace rename_many
