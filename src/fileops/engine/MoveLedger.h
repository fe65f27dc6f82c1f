#pragma once

#include "fileops/engine/CopyPlace.h"

#include <NodeRef.h>
#include <SupportDefs.h>

#include <sys/stat.h>

#include <compare>
#include <vector>

namespace norvane {

/// What a move has read whole, and what it became, so that afterwards exactly that is deleted: what
/// was added, changed or put in another's place since then is not in it.
///
/// An entry is its place below the folder of the item, its node, size and time of change. 40 bytes
/// each: a million files take 40 MB for as long as their move lasts. Thread: the operation's.
class MoveLedger
{
public:
    /// `hasStableNodes` is false where the file system of the sources makes node numbers up as it
    /// goes: an entry is known by its place, size and time alone then.
    explicit MoveLedger(bool hasStableNodes = true) : fHasStableNodes(hasStableNodes) {}

    /// Notes that the entry at `place` was read as `record` describes it, and became `target`. Of a
    /// folder only its node counts: what changes in it is known by its entries.
    void Add(uint64 place, const struct stat& record, const node_ref& target);

    /// Whether the entry that is at `place` now is there as it was read; `target` is the number of
    /// the node that it became.
    bool Holds(uint64 place, const struct stat& record, ino_t* target) const;

private:
    struct Record
    {
        uint64 place = 0;
        ino_t node = 0;
        int64 sizeBytes = 0;
        int64 modifiedNs = 0;
        ino_t target = 0;
        auto operator<=>(const Record&) const = default;
    };

    Record RecordOf(uint64 place, const struct stat& record) const;

    const bool fHasStableNodes;
    mutable std::vector<Record> fRecords;
    mutable bool fIsSorted = true;
};

} // namespace norvane
