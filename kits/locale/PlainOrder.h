#pragma once

#include <SupportDefs.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

class QCollator;

namespace kits {

/// A collator's order of plain texts, those of printable ASCII characters alone, as bytes that are
/// compared one by one: made and compared many times faster than the collator's own keys.
///
/// Plain data; threads may share one that does not change.
class PlainOrder
{
public:
    /// Finds out how the collator orders single characters, and whether nothing more than that is
    /// in it: in some languages two letters count as one.
    explicit PlainOrder(const QCollator& collator);

    /// Whether the keys order as the collator does.
    bool IsKnown() const { return fIsKnown; }
    /// Appends a text's key; none of its bytes is zero. False when the text is not plain.
    bool AppendKey(std::string_view text, std::string& keys) const;

private:
    bool FindLetters(const QCollator& collator);
    bool Agrees(const QCollator& collator) const;
    bool AppendNumber(std::string_view digits, std::string& keys) const;

    std::array<char, 128> fLetters = {}; // a letter's place among all; 0: not plain
    bool fIsNumeric = false;
    bool fIsKnown = false;
};

/// Keys of texts, one behind the other.
struct PlainKeys
{
    std::string keys;
    std::vector<size_t> starts; // of each, and the end of the last

    std::string_view At(uint32 index) const
    {
        return std::string_view(keys).substr(starts[index], starts[index + 1] - starts[index]);
    }
    /// Puts indices of keys into the keys' order.
    void Sort(std::vector<uint32>& indices) const;
};

} // namespace kits
