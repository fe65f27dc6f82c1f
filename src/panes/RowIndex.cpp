#include "panes/RowIndex.h"

#include "panes/DirListItem.h"

#include <cstring>
#include <utility>

namespace norvane {

namespace {

constexpr std::size_t kFewestSlots = 16;

} // namespace

void RowIndex::Clear()
{
    fSlots.clear();
    fCount = 0;
}

void RowIndex::Reserve(std::size_t count)
{
    std::size_t slots = kFewestSlots;
    while (slots * 3 < count * 4) {
        slots *= 2;
    }
    if (slots > fSlots.size()) {
        Grow(slots);
    }
}

void RowIndex::Add(DirListItem* row)
{
    Reserve(fCount + 1);
    Put(row);
    fCount++;
}

void RowIndex::Put(DirListItem* row)
{
    const std::size_t mask = fSlots.size() - 1;
    std::size_t slot = HomeOf(row->NodeRef().node);
    while (fSlots[slot] != nullptr) {
        slot = (slot + 1) & mask;
        fProbes++;
    }
    fSlots[slot] = row;
}

void RowIndex::Grow(std::size_t slots)
{
    std::vector<DirListItem*> old(slots, nullptr);
    std::swap(old, fSlots);
    for (DirListItem* row : old) {
        if (row != nullptr) {
            Put(row);
        }
    }
}

std::size_t RowIndex::HomeOf(ino_t node) const
{
    // Neighbouring inode numbers are spread, or long runs of filled slots would form.
    constexpr uint64 kSpread = 0x9e3779b97f4a7c15;
    const uint64 spread = static_cast<uint64>(node) * kSpread;
    return static_cast<std::size_t>(spread >> 32) & (fSlots.size() - 1);
}

void RowIndex::Remove(DirListItem* row)
{
    if (fSlots.empty()) {
        return;
    }
    const std::size_t mask = fSlots.size() - 1;
    std::size_t slot = HomeOf(row->NodeRef().node);
    while (fSlots[slot] != row) {
        if (fSlots[slot] == nullptr) {
            return;
        }
        slot = (slot + 1) & mask;
    }
    fSlots[slot] = nullptr;
    fCount--;
    // Rows behind the gap that would have liked to stand in it move up, or a search would stop at
    // the gap.
    for (std::size_t next = (slot + 1) & mask; fSlots[next] != nullptr; next = (next + 1) & mask) {
        const std::size_t home = HomeOf(fSlots[next]->NodeRef().node);
        if (((next - home) & mask) >= ((next - slot) & mask)) {
            std::swap(fSlots[slot], fSlots[next]);
            slot = next;
        }
    }
}

std::vector<DirListItem*> RowIndex::FindAll(const node_ref& node) const
{
    std::vector<DirListItem*> found;
    if (fSlots.empty()) {
        return found;
    }
    const std::size_t mask = fSlots.size() - 1;
    for (std::size_t slot = HomeOf(node.node); fSlots[slot] != nullptr; slot = (slot + 1) & mask) {
        if (fSlots[slot]->NodeRef() == node) {
            found.push_back(fSlots[slot]);
        }
    }
    return found;
}

DirListItem* RowIndex::Find(const node_ref& node, const char* name) const
{
    if (fSlots.empty()) {
        return nullptr;
    }
    const std::size_t mask = fSlots.size() - 1;
    for (std::size_t slot = HomeOf(node.node); fSlots[slot] != nullptr; slot = (slot + 1) & mask) {
        DirListItem* row = fSlots[slot];
        if (row->NodeRef() == node &&
            (name == nullptr || std::strcmp(row->GetEntryName(), name) == 0)) {
            return row;
        }
    }
    return nullptr;
}

DirListItem* RowIndex::FindAny(const node_ref& node) const
{
    return Find(node, nullptr);
}

} // namespace norvane
