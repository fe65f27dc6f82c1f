#pragma once

#include <EntryRecord.h>

#include <memory>

class BDirectory;
class BMessenger;
struct entry_ref;

/// Reads a whole folder with the stat records of its entries, as a file list needs it. An extension
/// of the platform.
///
/// One pass of the listing, one stat per entry in the order in which the folder yields them (large
/// folders with a second thread), one sort. Use: SetTo(); StatNext() until it says false, doing
/// something else in between; Sort(); ItemAt(). Thread: one at a time; needs no window.
class BEntryBatch
{
public:
    /// One entry. The record's status is B_ENTRY_NOT_FOUND when it went meanwhile.
    struct Item : BEntryRecord
    {
        const char* name = nullptr; // lent until the batch changes
        uint8 kind = 0;             // DT_ value of the listing
    };

    /// Holds nothing.
    BEntryBatch();
    ~BEntryBatch();
    BEntryBatch(const BEntryBatch&) = delete;
    BEntryBatch& operator=(const BEntryBatch&) = delete;

    /// Reads the names. `directory` is borrowed until StatNext() has said false. Errors: those of
    /// reading.
    status_t SetTo(const BDirectory& directory);
    /// Watches the folder as watch_node() does, then reads the names; watch and batch share one
    /// reading, so that what the watch tells goes on from there. `watchStatus` takes the watch's
    /// status; the names are read also without a watch.
    status_t SetTo(const BDirectory& directory, uint32 watchFlags, const BMessenger& target,
                   status_t* watchStatus);
    /// How many entries the folder has; 0 before SetTo().
    int32 CountItems() const;
    /// Reads the records of some hundred more entries; false when all are there.
    bool StatNext();
    /// How many records have been read.
    int32 CountStatted() const;
    /// Brings the items into byte order of their names; before, their order is unspecified. All
    /// records have been read by then.
    void Sort();
    /// The item at `index`, which must exist. Ownership: lent until the batch changes.
    const Item& ItemAt(int32 index) const;
    /// The ref of an item, which holds the folder. Errors: B_BAD_INDEX, B_BAD_VALUE for null,
    /// B_NO_MEMORY.
    status_t GetRef(int32 index, entry_ref* ref) const;

private:
    class Impl;

    status_t Take(const BDirectory& directory, std::unique_ptr<Impl> read);

    std::unique_ptr<Impl> fImpl;
};
