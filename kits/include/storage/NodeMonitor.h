#pragma once

#include <NodeMonitorCodes.h>
#include <SupportDefs.h>

class BHandler;
class BLooper;
class BMessenger;
struct node_ref;

/// Sends B_NODE_MONITOR messages about `node` to `target` from now on, in the order of the changes.
///
/// "device" is an int32 and the watched folder's, also where its entries have another; "directory",
/// "node" and the like are int64. A folder is watched by
/// B_WATCH_DIRECTORY: its entries made, removed and renamed. B_WATCH_STAT for a file of a folder
/// that `target` watches turns stat notices of all files of that folder on, as B_WATCH_DIRECTORY |
/// B_WATCH_STAT for the folder does; those of one file come at most every 100 ms, the last one
/// always. B_WATCH_ENTRIES tells both together with the entries' records, and nothing one by one;
/// a target that began it several times for a folder ends it as often.
/// B_WATCH_NAME for a folder tells its own removal and renaming. Calls add to what is watched
/// already; B_STOP_WATCHING ends the watch of this node. With B_WATCH_MOUNT, `node` may be null.
/// Start the watch, then read the folder: no change is lost in between.
///
/// Thread: any. Beginning a watch waits for the folder's volume; ending one, and all about mounts,
/// waits for no disk. A volume that does not answer holds up no watch of another. Errors:
/// B_BAD_VALUE (null, no such target), B_ENTRY_NOT_FOUND when the node is not known to the kit,
/// B_PERMISSION_DENIED when the folder cannot be read, B_NO_MEMORY when the limit of watches is
/// reached.
status_t watch_node(const node_ref* node, uint32 flags, const BMessenger& target);
status_t watch_node(const node_ref* node, uint32 flags, const BHandler* handler,
                    const BLooper* looper = nullptr);
/// Ends all watches of a target. A notice that is already in its queue still comes.
status_t stop_watching(const BMessenger& target);
status_t stop_watching(const BHandler* handler, const BLooper* looper = nullptr);
