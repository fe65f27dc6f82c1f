#pragma once

#include <SupportDefs.h>

// The numbers of <NodeMonitor.h>.

/// What to watch, as a set.
enum : uint32 {
    B_STOP_WATCHING = 0x0000,
    B_WATCH_NAME = 0x0001,
    B_WATCH_STAT = 0x0002,
    B_WATCH_DIRECTORY = 0x0008,
    B_WATCH_MOUNT = 0x0010,
    /// Of a folder: all that happens to its entries, in few messages, which BEntryChanges reads. An
    /// extension of the platform.
    B_WATCH_ENTRIES = 0x0100,
};

/// "opcode" of a B_NODE_MONITOR message.
enum : int32 {
    B_ENTRY_CREATED = 1, ///< "device", "directory", "node", "name"
    /// The same; "replaced" (bool, true) when another entry was renamed over it. That and the
    /// "name" are extensions of the platform.
    B_ENTRY_REMOVED = 2,
    /// "device", "node", "name", "from directory", "to directory" (0: not watched, so not known),
    /// "from name" when it is known.
    B_ENTRY_MOVED = 3,
    B_STAT_CHANGED =
        4, ///< "device", "node", and "directory", "name" for an entry of a watched folder
    B_DEVICE_MOUNTED = 6,   ///< "device" and "new device": that of the local volume
    B_DEVICE_UNMOUNTED = 7, ///< "device"
};
