#pragma once

#include <Directory.h>
#include <EntryRef.h>
#include <NodeRef.h>
#include <SupportDefs.h>

#include <string>

namespace norvane {

/// The folder that an item lies in: what most items of an operation have in common, looked up once
/// for all that follow each other.
///
/// Thread: the operation's.
class ItemFolder
{
public:
    /// Goes to the folder of `item`. Errors: those of finding it; there is none then.
    [[nodiscard]] status_t SetTo(const entry_ref& item);

    BDirectory& Folder() { return *fFolder; }
    /// Stays open as long as it is held.
    const std::shared_ptr<BDirectory>& Owner() const { return fFolder; }
    /// To be shown.
    const std::string& Path() const { return fPath; }
    const node_ref& Node() const { return fNode; }
    /// Whether its volume keeps node numbers; true when there is no folder.
    bool HasStableNodes() const { return fHasStableNodes; }

private:
    std::shared_ptr<BDirectory> fFolder = std::make_shared<BDirectory>(); // never null
    std::string fPath;
    node_ref fNode;
    bool fHasStableNodes = true;
};

} // namespace norvane
