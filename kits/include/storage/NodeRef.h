#pragma once

#include <sys/types.h>

/// Names a node: a file, folder or link, whatever it is called. Valid while the node exists.
struct node_ref
{
    /// Names nothing, or a node by its numbers.
    node_ref() = default;
    node_ref(dev_t dev, ino_t ino) : device(dev), node(ino) {}

    /// Whether both name the same node; the order is that of the numbers.
    bool operator==(const node_ref& other) const
    {
        return device == other.device && node == other.node;
    }
    bool operator!=(const node_ref& other) const { return !(*this == other); }
    bool operator<(const node_ref& other) const
    {
        return device != other.device ? device < other.device : node < other.node;
    }

    dev_t device = 0; // the volume
    ino_t node = 0;   // unique on it while the node exists
};
