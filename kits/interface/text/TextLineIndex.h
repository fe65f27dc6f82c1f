#pragma once

#include <SupportDefs.h>

#include <string_view>
#include <vector>

namespace kits {

/// Where the lines of a text begin: one number for each line, whatever the text's length.
///
/// A line ends behind its '\n'; behind the last of these is one more line, which may be empty.
class TextLineIndex
{
public:
    /// Finds all lines anew.
    void Build(std::string_view text);
    /// Follows a change: at `offset`, `removed` bytes went and `inserted` came.
    void Replace(int64 offset, int64 removed, std::string_view inserted);

    int64 CountLines() const { return static_cast<int64>(fStarts.size()); }
    /// Where a line begins; the nearest line's for one that does not exist.
    int64 LineStart(int64 line) const;
    /// The line that an offset lies in.
    int64 LineOf(int64 offset) const;

private:
    std::vector<int64> fStarts = {0}; // ascending; the first is 0
};

} // namespace kits
