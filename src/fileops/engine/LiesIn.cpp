#include "fileops/engine/LiesIn.h"

#include "fileops/engine/MadeTargets.h"
#include "fileops/engine/NodeSet.h"

#include <Errors.h>

#include <cstring>

namespace norvane {

status_t LiesIn(const BEntry& entry, const node_ref& node, bool* lies)
{
    NodeSet nodes;
    nodes.Add(node);
    return LiesIn(entry, nodes, lies);
}

status_t LiesIn(BEntry entry, const NodeSet& nodes, bool* lies)
{
    struct stat record;
    status_t status = entry.GetStat(&record);
    while (status == B_OK) {
        const bool isNode = nodes.Has(NodeOf(record));
        const bool isRoot = std::strcmp(entry.Name(), ".") == 0;
        if (isNode || isRoot) {
            *lies = isNode;
            return B_OK;
        }
        status = entry.GetParent(&entry);
        if (status == B_OK) {
            status = entry.GetStat(&record);
        }
    }
    return status;
}

} // namespace norvane
