#pragma once

#include <SupportDefs.h>

#include <sys/stat.h>

#include <compare>
#include <string>
#include <string_view>
#include <vector>

namespace norvane {

/// What a move has read whole, so that afterwards exactly that is deleted: what was added, changed
/// or put in another's place since then is not in it.
///
/// An entry is its place, its node, size and time of change; the place is kept as a number made of
/// its path. 32 bytes each: a million files take 32 MB for as long as their move lasts. Thread: the
/// operation's.
class MoveLedger
{
public:
    /// Forgets all; paths given to Add() from now on start with that of the folder the item lies
    /// in.
    void Begin(const std::string& folderPath);
    /// Notes that the entry at `path` was read as `record` describes it. Of a folder only its node
    /// counts: what changes in it is known by its entries.
    void Add(const std::string& path, const struct stat& record);

    /// Whether the entry is there as it was read. `path` leads to it from the folder the item lies
    /// in; `record` is what it is now.
    bool Holds(std::string_view path, const struct stat& record) const;

private:
    struct Record
    {
        uint64 place = 0;
        ino_t node = 0;
        int64 sizeBytes = 0;
        int64 modifiedNs = 0;

        auto operator<=>(const Record&) const = default;
    };

    static Record RecordOf(std::string_view path, const struct stat& record);

    size_t fFolderPathBytes = 0;
    mutable std::vector<Record> fRecords;
    mutable bool fIsSorted = true;
};

} // namespace norvane
