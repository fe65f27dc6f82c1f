#include "NameTable.h"

#include "FolderListing.h"

#include <functional>

namespace kits {

namespace {

constexpr size_t kFirstSlots = 16;
constexpr size_t kWorthPacking = size_t{64} * 1024;

} // namespace

size_t NameTable::Hash(std::string_view name)
{
    return std::hash<std::string_view>()(name);
}

std::string_view NameTable::NameAt(size_t index) const
{
    const Entry& entry = fEntries[index];
    return {fNames.data() + entry.name, entry.length};
}

size_t NameTable::SlotOf(std::string_view name) const
{
    const size_t mask = fSlots.size() - 1;
    size_t slot = Hash(name) & mask;
    while (fSlots[slot] != kFree && NameAt(fSlots[slot]) != name) {
        slot = (slot + 1) & mask;
    }
    return slot;
}

void NameTable::Rehash(size_t slots)
{
    fSlots.assign(slots, kFree);
    for (size_t i = 0; i < fEntries.size(); ++i) {
        fSlots[SlotOf(NameAt(i))] = static_cast<uint32>(i);
    }
}

void NameTable::Fill(const FolderListing& listing)
{
    const size_t count = fEntries.size() + listing.Items().size();
    size_t slots = kFirstSlots;
    while (count * 4 >= slots * 3) {
        slots *= 2;
    }
    if (slots > fSlots.size()) {
        Rehash(slots);
    }
    fEntries.reserve(count);
    for (const FolderListing::Item& item : listing.Items()) {
        Set(item.name, item.node);
    }
}

void NameTable::Set(std::string_view name, ino_t node)
{
    if (fSlots.size() < kFirstSlots || fEntries.size() * 4 >= fSlots.size() * 3) {
        Rehash(fSlots.empty() ? kFirstSlots : fSlots.size() * 2);
    }
    const size_t slot = SlotOf(name);
    if (fSlots[slot] != kFree) {
        fEntries[fSlots[slot]].node = node;
        return;
    }
    fSlots[slot] = static_cast<uint32>(fEntries.size());
    fEntries.push_back(
        {node, static_cast<uint32>(fNames.size()), static_cast<uint32>(name.size())});
    fNames.insert(fNames.end(), name.begin(), name.end());
}

bool NameTable::Find(std::string_view name, ino_t* node) const
{
    if (fSlots.empty()) {
        return false;
    }
    const uint32 index = fSlots[SlotOf(name)];
    if (index == kFree) {
        return false;
    }
    *node = fEntries[index].node;
    return true;
}

bool NameTable::Remove(std::string_view name, ino_t* node)
{
    if (fSlots.empty()) {
        return false;
    }
    const size_t slot = SlotOf(name);
    const uint32 index = fSlots[slot];
    if (index == kFree) {
        return false;
    }
    *node = fEntries[index].node;
    fWasted += fEntries[index].length;
    CloseGap(slot);
    // The last entry takes the free place.
    const size_t last = fEntries.size() - 1;
    if (index != last) {
        fSlots[SlotOf(NameAt(last))] = index;
        fEntries[index] = fEntries[last];
    }
    fEntries.pop_back();
    if (fWasted > kWorthPacking && fWasted > fNames.size() / 2) {
        PackNames();
    }
    return true;
}

/// Frees a slot and moves those behind it up that would not be found any more.
void NameTable::CloseGap(size_t slot)
{
    const size_t mask = fSlots.size() - 1;
    size_t gap = slot;
    for (size_t next = (gap + 1) & mask; fSlots[next] != kFree; next = (next + 1) & mask) {
        const size_t home = Hash(NameAt(fSlots[next])) & mask;
        if (((next - home) & mask) >= ((next - gap) & mask)) {
            fSlots[gap] = fSlots[next];
            gap = next;
        }
    }
    fSlots[gap] = kFree;
}

void NameTable::PackNames()
{
    std::vector<char> packed;
    packed.reserve(fNames.size() - fWasted);
    for (Entry& entry : fEntries) {
        const size_t start = packed.size();
        const char* name = fNames.data() + entry.name;
        packed.insert(packed.end(), name, name + entry.length);
        entry.name = static_cast<uint32>(start);
    }
    fNames = std::move(packed);
    fWasted = 0;
}

void NameTable::Clear()
{
    *this = NameTable();
}

size_t NameTable::MemoryBytes() const
{
    return fEntries.capacity() * sizeof(Entry) + fNames.capacity() +
           fSlots.capacity() * sizeof(uint32);
}

} // namespace kits
