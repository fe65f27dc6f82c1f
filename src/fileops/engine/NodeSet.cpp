#include "fileops/engine/NodeSet.h"

#include <algorithm>
#include <utility>

namespace norvane {

namespace {

constexpr size_t kFewestSlots = 64;

size_t Hash(const node_ref& node)
{
    const auto number = static_cast<size_t>(node.node) ^ static_cast<size_t>(node.device) << 32;
    return (number * 0x9E3779B97F4A7C15ull) >> 32;
}

} // namespace

/// The node's slot, or the free one that it would get.
size_t NodeSet::SlotOf(const node_ref& node) const
{
    const size_t mask = fSlots.size() - 1;
    size_t slot = Hash(node) & mask;
    while (fSlots[slot] != node && fSlots[slot] != node_ref()) {
        slot = (slot + 1) & mask;
    }
    return slot;
}

bool NodeSet::Has(const node_ref& node) const
{
    return node != node_ref() && !fSlots.empty() && fSlots[SlotOf(node)] == node;
}

void NodeSet::Add(const node_ref& node)
{
    if (node == node_ref() || Has(node)) {
        return;
    }
    if ((fCount + 1) * 2 > fSlots.size()) {
        Grow();
    }
    fSlots[SlotOf(node)] = node;
    fCount++;
}

void NodeSet::Grow()
{
    std::vector<node_ref> before(std::max(kFewestSlots, fSlots.size() * 2));
    std::swap(before, fSlots);
    for (const node_ref& node : before) {
        if (node != node_ref()) {
            fSlots[SlotOf(node)] = node;
        }
    }
}

} // namespace norvane
