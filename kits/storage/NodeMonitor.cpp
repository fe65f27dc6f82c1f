#include <NodeMonitor.h>

#include "NodeWatcher.h"

#include <Messenger.h>

status_t watch_node(const node_ref* node, uint32 flags, const BMessenger& target)
{
    return kits::NodeWatcher::Get().Watch(node, flags, target);
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
    return kits::NodeWatcher::Get().StopWatching(target);
}

status_t stop_watching(const BHandler* handler, const BLooper* looper)
{
    status_t status = B_OK;
    const BMessenger target(handler, looper, &status);
    return status == B_OK ? stop_watching(target) : status_t(B_BAD_VALUE);
}
