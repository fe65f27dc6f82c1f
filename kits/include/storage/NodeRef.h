#pragma once

#include <sys/types.h>

/// Names a node: a file, folder or link, whatever it is called. Valid while the node exists.
struct node_ref
{
    node_ref() = default;
    node_ref(dev_t dev, ino_t ino) : device(dev), node(ino) {}

    bool operator==(const node_ref& other) const
    {
        return device == other.device && node == other.node;
    }
    bool operator!=(const node_ref& other) const { return !(*this == other); }
    bool operator<(const node_ref& other) const
    {
        return device != other.device ? device < other.device : node < other.node;
    }

    dev_t device = 0;
    ino_t node = 0;
};
