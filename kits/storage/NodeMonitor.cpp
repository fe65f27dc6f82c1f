#include <NodeMonitor.h>

#include "MountWatcher.h"
#include "NodeWatchers.h"

#include <Messenger.h>
#include <Node.h>

status_t watch_node(const node_ref* node, uint32 flags, const BMessenger& target)
{
    const bool isOfMounts = (flags & B_WATCH_MOUNT) != 0;
    if (!target.IsValid() || (node == nullptr && !isOfMounts)) {
        return B_BAD_VALUE;
    }
    if (isOfMounts) {
        const status_t status = kits::MountWatcher::Get().Watch(target);
        if (status != B_OK || node == nullptr || flags == B_WATCH_MOUNT) {
            return status;
        }
    }
    if (flags == B_STOP_WATCHING) {
        kits::NodeWatchers::Get().StopWatching(target, node);
        return B_OK;
    }
    return kits::NodeWatchers::Get().Watch(*node, flags, target);
}

status_t watch_node(const node_ref* node, uint32 flags, const BHandler* handler,
                    const BLooper* looper)
{
    status_t status = B_OK;
    const BMessenger target(handler, looper, &status);
    return status == B_OK ? watch_node(node, flags, target) : status_t(B_BAD_VALUE);
}

status_t stop_watching(const BMessenger& target)
{
    kits::MountWatcher::Get().StopWatching(target);
    kits::NodeWatchers::Get().StopWatching(target);
    return B_OK;
}

status_t stop_watching(const BHandler* handler, const BLooper* looper)
{
    status_t status = B_OK;
    const BMessenger target(handler, looper, &status);
    return status == B_OK ? stop_watching(target) : status_t(B_BAD_VALUE);
}
