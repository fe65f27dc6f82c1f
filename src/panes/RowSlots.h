#pragma once

#include <SupportDefs.h>

#include <cstddef>
#include <utility>
#include <vector>

namespace norvane {

class DirListItem;

/// A hash table of rows: `HashOf` gives a row's number, spread over 64 bits. Several rows may have
/// one.
///
/// Plain data: the rows are borrowed. One word and a half per row.
template<typename HashOf>
class RowSlots
{
public:
    void Add(DirListItem* row)
    {
        Reserve(fCount + 1);
        Put(row);
        fCount++;
    }

    /// Takes out a row whose number is still the one it was added with; nothing when it is not
    /// there.
    void Remove(const DirListItem* row)
    {
        if (fSlots.empty()) {
            return;
        }
        const std::size_t mask = fSlots.size() - 1;
        std::size_t slot = HomeOf(HashOf()(*row));
        while (fSlots[slot] != row) {
            if (fSlots[slot] == nullptr) {
                return;
            }
            slot = (slot + 1) & mask;
        }
        fCount--;
        CloseGap(slot);
    }

    void Clear()
    {
        fSlots.clear();
        fCount = 0;
    }

    /// Makes room, so that adding that many rows moves nothing.
    void Reserve(std::size_t count)
    {
        std::size_t room = kFewestSlots;
        while (room * 3 < count * 4) {
            room *= 2;
        }
        if (room > fSlots.size()) {
            Grow(room);
        }
    }

    /// The rows that may have that number, one after the other, until `take` says true.
    template<typename Take>
    void Visit(uint64 hash, Take take) const
    {
        if (fSlots.empty()) {
            return;
        }
        const std::size_t mask = fSlots.size() - 1;
        std::size_t slot = HomeOf(hash);
        while (fSlots[slot] != nullptr && !take(fSlots[slot])) {
            slot = (slot + 1) & mask;
        }
    }

    std::size_t Count() const { return fCount; }
    /// How many filled slots adding rows went past so far: what it costs, for tests.
    std::size_t CountProbes() const { return fProbes; }

private:
    static constexpr std::size_t kFewestSlots = 16;

    std::size_t HomeOf(uint64 hash) const
    {
        return static_cast<std::size_t>(hash >> 32) & (fSlots.size() - 1);
    }

    void Grow(std::size_t room)
    {
        std::vector<DirListItem*> old(room, nullptr);
        std::swap(old, fSlots);
        for (DirListItem* row : old) {
            if (row != nullptr) {
                Put(row);
            }
        }
    }

    void Put(DirListItem* row)
    {
        const std::size_t mask = fSlots.size() - 1;
        std::size_t slot = HomeOf(HashOf()(*row));
        while (fSlots[slot] != nullptr) {
            slot = (slot + 1) & mask;
            fProbes++;
        }
        fSlots[slot] = row;
    }

    /// Rows behind the gap that would have liked to stand in it move up, or a search would stop at
    /// the gap.
    void CloseGap(std::size_t slot)
    {
        const std::size_t mask = fSlots.size() - 1;
        fSlots[slot] = nullptr;
        for (std::size_t next = (slot + 1) & mask; fSlots[next] != nullptr;
             next = (next + 1) & mask) {
            const std::size_t home = HomeOf(HashOf()(*fSlots[next]));
            if (((next - home) & mask) >= ((next - slot) & mask)) {
                std::swap(fSlots[slot], fSlots[next]);
                slot = next;
            }
        }
    }

    std::vector<DirListItem*> fSlots; // a power of two, never more than three quarters full
    std::size_t fCount = 0;
    std::size_t fProbes = 0;
};

} // namespace norvane
