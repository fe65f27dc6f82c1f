#pragma once

#include <Errors.h>
#include <StorageDefs.h>

/// What a stat tells of an entry, itself: a link is the link. An extension of the platform.
struct BEntryRecord
{
    status_t status = B_OK;         // of the stat; where it is not B_OK all below is 0
    mode_t mode = 0;                // kind and permissions
    uid_t owner = 0;                // the user's number
    gid_t group = 0;                // the group's number
    ino_t node = 0;                 // with the device, names the node
    dev_t device = 0;               // differs from the folder's at a mount point
    nlink_t links = 0;              // how many names the node has
    off_t size = 0;                 // bytes
    time_t modified = 0;            // seconds since 1970
    uint32 modifiedNanoseconds = 0; // and the part of a second
    time_t changed = 0;             // of anything, the mode and the names included
};
