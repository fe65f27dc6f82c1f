#pragma once

#include "panes/RowSource.h"

#include <OS.h>

#include <memory>
#include <string>

namespace norvane {

/// Reads a folder into rows on a thread of its own, which waits for the disk as long as the disk
/// wants and then dies, whether or not anybody is still interested.
///
/// Thread: the functions are the owner's.
class ListingJob
{
public:
    /// How far it is.
    struct Progress
    {
        int32 entries = 0; // in the folder; 0 while that is not known
        int32 read = 0;    // of them
        bool hasEnded = false;
    };

    /// Begins to read. Without a thread to be had it is done when this returns.
    ListingJob(const std::string& folder, const OpenOrder& order);
    /// Lets go. Waits for nothing; the watch that was begun ends, unless it was taken.
    ~ListingJob();
    ListingJob(const ListingJob&) = delete;
    ListingJob& operator=(const ListingJob&) = delete;

    /// Waits for the end, until `time` (of system_time()) at most. False when that came first.
    bool WaitUntil(bigtime_t time);
    Progress Look();

    // After the end:
    /// Of opening and reading the folder.
    status_t Status();
    /// The rows, and the folder with its watch, which is the caller's to end. Once.
    ListedRows TakeRows();
    WatchedFolder TakeFolder();
    /// Whether the folder is some volume's Trash.
    bool IsTrash();

private:
    class Work;

    const std::shared_ptr<Work> fWork;
};

} // namespace norvane
