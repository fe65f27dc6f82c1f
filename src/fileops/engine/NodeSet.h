#pragma once

#include <NodeRef.h>

#include <cstddef>
#include <vector>

namespace norvane {

/// Nodes, each once; made for millions of them.
class NodeSet
{
public:
    /// An unset node is left out.
    void Add(const node_ref& node);
    /// False for an unset node.
    bool Has(const node_ref& node) const;

private:
    size_t SlotOf(const node_ref& node) const;
    void Grow();

    std::vector<node_ref> fSlots; // a power of two, at most half of them taken
    size_t fCount = 0;
};

} // namespace norvane
