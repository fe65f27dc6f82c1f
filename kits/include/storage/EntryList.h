#pragma once

#include <SupportDefs.h>

#include <cstddef>

class BEntry;
struct dirent;
struct entry_ref;

/// Entries that are given one after the other.
class BEntryList
{
public:
    /// What it gave stays good.
    virtual ~BEntryList() = default;

    /// Gives the next entry, a link followed with `traverse`. Errors: B_ENTRY_NOT_FOUND at the end.
    virtual status_t GetNextEntry(BEntry* entry, bool traverse = false) = 0;
    virtual status_t GetNextRef(entry_ref* ref) = 0;
    /// Fills `buffer` with at most `count` records, each `d_reclen` bytes after the one before;
    /// returns their number, 0 at the end, or a status.
    virtual int32 GetNextDirents(dirent* buffer, size_t length, int32 count = INT32_MAX) = 0;
    /// Begins anew, and tells how many entries there are in all.
    virtual status_t Rewind() = 0;
    virtual int32 CountEntries() = 0;
};
