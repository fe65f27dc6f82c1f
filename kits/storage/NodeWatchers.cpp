#include "NodeWatchers.h"

#include "NodeWatcher.h"

#include <Messenger.h>

#include <utility>

namespace kits {

NodeWatchers& NodeWatchers::Get()
{
    // Never destroyed: the watchers' threads run to the end of the program.
    static auto* watchers = new NodeWatchers;
    return *watchers;
}

std::shared_ptr<NodeWatcher> NodeWatchers::Of(dev_t device)
{
    MutexLock lock(fMutex);
    std::shared_ptr<NodeWatcher>& watcher = fWatchers[device];
    if (watcher == nullptr) {
        watcher = std::make_shared<NodeWatcher>();
    }
    return watcher;
}

std::vector<std::shared_ptr<NodeWatcher>> NodeWatchers::All()
{
    std::vector<std::shared_ptr<NodeWatcher>> all;
    MutexLock lock(fMutex);
    for (const auto& [device, watcher] : fWatchers) {
        all.push_back(watcher);
    }
    return all;
}

status_t NodeWatchers::Watch(const node_ref& node, uint32 flags, const BMessenger& target,
                             std::shared_ptr<const FolderListing>* listing)
{
    for (;;) {
        const std::shared_ptr<NodeWatcher> watcher = Of(node.device);
        if (const auto status = watcher->Watch(node, flags, target, listing)) {
            return *status;
        }
        Forget(watcher.get()); // it ended just now; the next one takes it
    }
}

void NodeWatchers::StopWatching(const BMessenger& target, const node_ref* node)
{
    for (const auto& watcher : All()) {
        watcher->StopWatching(target, node);
    }
}

void NodeWatchers::Forget(const NodeWatcher* watcher)
{
    std::shared_ptr<NodeWatcher> last; // goes after the lock
    MutexLock lock(fMutex);
    for (auto it = fWatchers.begin(); it != fWatchers.end(); ++it) {
        if (it->second.get() == watcher) {
            last = std::move(it->second);
            fWatchers.erase(it);
            return;
        }
    }
}

} // namespace kits
