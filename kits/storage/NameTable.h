#pragma once

#include <SupportDefs.h>

#include <string_view>
#include <vector>

namespace kits {

class FolderListing;

/// The names in a folder with their node numbers: what the kernel's notices leave out. Some 50
/// bytes an entry.
class NameTable
{
public:
    /// Adds the names of a listing.
    void Fill(const FolderListing& listing);
    /// Adds a name or gives it another node.
    void Set(std::string_view name, ino_t node);
    /// False when the name is unknown; `node` is unchanged then.
    bool Find(std::string_view name, ino_t* node) const;
    bool Remove(std::string_view name, ino_t* node);
    void Clear();

    size_t Count() const { return fEntries.size(); }
    std::string_view NameAt(size_t index) const;
    ino_t NodeAt(size_t index) const { return fEntries[index].node; }
    /// Bytes held, for those who watch the size of things.
    size_t MemoryBytes() const;

private:
    struct Entry
    {
        ino_t node;
        uint32 name; // where it starts in fNames
        uint32 length;
    };

    static constexpr uint32 kFree = UINT32_MAX;

    static size_t Hash(std::string_view name);
    size_t SlotOf(std::string_view name) const;
    void Rehash(size_t slots);
    void CloseGap(size_t slot);
    void PackNames();

    std::vector<Entry> fEntries;
    std::vector<char> fNames;
    std::vector<uint32> fSlots; // indices of entries; their number is a power of two
    size_t fWasted = 0;         // bytes of names that are gone
};

} // namespace kits
