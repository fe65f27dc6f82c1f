#pragma once

#include "kernel/Mutex.h"

#include <Node.h>

#include <memory>
#include <unordered_map>
#include <vector>

class BMessenger;

namespace kits {

class FolderListing;
class NodeWatcher;

/// The watchers of all volumes: one for each on which something is watched, so that a volume which
/// does not answer keeps nobody from hearing of another.
///
/// Thread: any. Lives as long as the program.
class NodeWatchers
{
public:
    static NodeWatchers& Get();

    /// Waits for the node's volume. `listing` takes the names as they were read for the watch, for
    /// a caller who would read them next: what is told from here on goes on from there. Null when
    /// they could not be read.
    /// Errors: B_NO_MORE_THREADS when there is no thread to watch; those of the kernel's limits.
    [[nodiscard]] status_t Watch(const node_ref& node, uint32 flags, const BMessenger& target,
                                 std::shared_ptr<const FolderListing>* listing = nullptr);
    /// Ends what a target watches: of one node, of all nodes when it is null. Waits for no volume;
    /// nothing is sent to the target from here on.
    void StopWatching(const BMessenger& target, const node_ref* node = nullptr);
    /// A watcher that watches nothing any more has ended.
    void Forget(const NodeWatcher* watcher);

private:
    NodeWatchers() = default;

    std::shared_ptr<NodeWatcher> Of(dev_t device);
    std::vector<std::shared_ptr<NodeWatcher>> All();

    Mutex fMutex;
    std::unordered_map<dev_t, std::shared_ptr<NodeWatcher>> fWatchers GUARDED_BY(fMutex);
};

} // namespace kits
