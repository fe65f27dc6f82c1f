#pragma once

#include "panes/RowSource.h"

#include <OS.h>

#include <memory>

namespace norvane {

/// Reads the rows of a place.
class RowsReader
{
public:
    /// Told of how far it is.
    class Notes
    {
    public:
        virtual ~Notes() = default;
        /// So many of so many entries are read. False when nobody wants the rows any more.
        virtual bool Note(int32 entries, int32 read) = 0;
    };

    virtual ~RowsReader() = default;
    /// Called once, on the job's thread. Errors: those of the place.
    virtual status_t Read(Notes& notes, ListedRows* rows) = 0;
    /// Nobody will take what was read: ends what Read() began. After Read(), on any thread; maybe
    /// twice.
    virtual void LetGo() {}
};

/// Reads rows on a thread of its own, which waits for the disk as long as the disk wants and then
/// dies, whether or not anybody is still interested.
///
/// Thread: the functions are the owner's.
class RowsJob
{
public:
    /// How far it is.
    struct Progress
    {
        int32 entries = 0; // in the place; 0 while that is not known
        int32 read = 0;    // of them
        bool hasEnded = false;
    };

    /// Begins to read, and sends the order's list, where it is valid, kListingNews now and then and
    /// at the end. Without a thread to be had it is done when this returns.
    RowsJob(std::shared_ptr<RowsReader> reader, const OpenOrder& order);
    /// Lets go. Waits for nothing.
    ~RowsJob();
    RowsJob(const RowsJob&) = delete;
    RowsJob& operator=(const RowsJob&) = delete;

    /// Waits for the end, until `time` (of system_time()) at most. False when that came first.
    bool WaitUntil(bigtime_t time);
    Progress Look();

    // After the end:
    status_t Status();
    /// Once.
    ListedRows TakeRows();

private:
    class Work;

    const std::shared_ptr<Work> fWork;
};

} // namespace norvane
