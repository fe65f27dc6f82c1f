#include "fileops/engine/MoveLedger.h"

#include <algorithm>
#include <functional>

namespace norvane {

uint64 PlaceBelow(uint64 folder, std::string_view name)
{
    const uint64 mixed = (folder ^ (folder >> 29)) * 0x9E3779B97F4A7C15ull;
    return mixed ^ std::hash<std::string_view>()(name);
}

MoveLedger::Record MoveLedger::RecordOf(uint64 place, const struct stat& record) const
{
    Record made{place, 0, 0, 0, 0};
    if (fHasStableNodes) {
        made.node = record.st_ino ^ static_cast<ino_t>(record.st_dev) * 0x9E3779B97F4A7C15ull;
    }
    if (S_ISDIR(record.st_mode)) {
        made.sizeBytes = -1; // never a file's
    } else {
        made.sizeBytes = record.st_size;
        made.modifiedNs = int64(record.st_mtim.tv_sec) * 1'000'000'000 + record.st_mtim.tv_nsec;
    }
    return made;
}

void MoveLedger::Add(uint64 place, const struct stat& record, const node_ref& target)
{
    fRecords.push_back(RecordOf(place, record));
    fRecords.back().target = target.node;
    fIsSorted = false;
}

bool MoveLedger::Holds(uint64 place, const struct stat& record, ino_t* target) const
{
    if (!fIsSorted) {
        // All is added before anything is asked for.
        std::sort(fRecords.begin(), fRecords.end());
        fIsSorted = true;
    }
    const Record wanted = RecordOf(place, record); // its target is below every other
    const auto found = std::lower_bound(fRecords.begin(), fRecords.end(), wanted);
    if (found == fRecords.end()) {
        return false;
    }
    Record without = *found;
    without.target = 0;
    *target = found->target;
    return without == wanted;
}

} // namespace norvane
