#pragma once

#include "fileops/engine/NodeSet.h"

#include <NodeRef.h>

#include <sys/stat.h>

#include <string>
#include <unordered_set>

class BDirectory;

namespace norvane {

/// The node that a record speaks of.
inline node_ref NodeOf(const struct stat& record)
{
    return node_ref(record.st_dev, record.st_ino);
}

/// What an operation has made, so that it never takes that for something that was there before.
///
/// Thread: the operation's.
class MadeTargets
{
public:
    void Add(const node_ref& node) { fNodes.Add(node); }
    bool Has(const node_ref& node) const { return fNodes.Has(node); }

    /// The same by names, for volumes where the number of a node is another one each time it is
    /// looked at. Such volumes may take names for the same that differ by case, so these are taken
    /// for the same here, and letters beyond ASCII for each other. `folderPath` is as it is shown.
    void AddName(const std::string& folderPath, const char* name);
    bool HasName(const std::string& folderPath, const char* name) const;

private:
    NodeSet fNodes;
    std::unordered_set<std::string> fFoldedPaths;
};

/// Removes the entry `name` of the folder, when it is that node, with what was made below it; what
/// is not in `made` stays, with the folders above it. Says whether it is gone.
bool RemoveMadeTree(BDirectory& folder, const char* name, const node_ref& node,
                    const MadeTargets& made);

/// Removes the file or link `name` of the folder, but only when it is that node: another program
/// may have put something of its own there meanwhile. Says whether it is gone.
bool RemoveIfNode(BDirectory& folder, const char* name, const node_ref& node);

} // namespace norvane
