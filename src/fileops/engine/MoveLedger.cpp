#include "fileops/engine/MoveLedger.h"

#include <algorithm>
#include <functional>

namespace norvane {

void MoveLedger::Begin(const std::string& folderPath)
{
    fFolderPathBytes = folderPath.size() + 1; // and the slash
    fRecords.clear();
}

MoveLedger::Record MoveLedger::RecordOf(std::string_view path, const struct stat& record)
{
    Record made{std::hash<std::string_view>()(path), record.st_ino, 0, 0};
    made.place ^= static_cast<uint64>(record.st_dev) * 0x9E3779B97F4A7C15ull;
    if (!S_ISDIR(record.st_mode)) {
        made.sizeBytes = record.st_size;
        made.modifiedNs = int64(record.st_mtim.tv_sec) * 1'000'000'000 + record.st_mtim.tv_nsec;
    }
    return made;
}

void MoveLedger::Add(const std::string& path, const struct stat& record)
{
    fRecords.push_back(RecordOf(std::string_view(path).substr(fFolderPathBytes), record));
    fIsSorted = false;
}

bool MoveLedger::Holds(std::string_view path, const struct stat& record) const
{
    if (!fIsSorted) {
        // All is added before anything is asked for.
        std::sort(fRecords.begin(), fRecords.end());
        fIsSorted = true;
    }
    return std::binary_search(fRecords.begin(), fRecords.end(), RecordOf(path, record));
}

} // namespace norvane
