#pragma once

#include "SystemCalls.h"

#include <cstddef>
#include <memory>

namespace kits {

/// An entry as the kernel's listing of a folder gives it.
struct FolderRecord
{
    uint64 node; // of a mount point: the folder it covers
    int64 next;
    unsigned short length;
    unsigned char kind; // DT_ value
    char name[1];       // as long as it takes, ended by a zero
};

/// Reads the records of open folders, one folder after the other, into one buffer.
///
/// Thread: one at a time.
class FolderRecords
{
public:
    /// Calls `visit(record, name)` for each entry from where the open folder stands, without "."
    /// and "..", and `isStopped()` now and then: true ends it. Errors: B_CANCELED, of reading.
    template<typename IsStopped, typename Visit>
    [[nodiscard]] status_t ForEach(int folder, IsStopped isStopped, Visit visit);

private:
    static constexpr size_t kReadBytes = size_t{64} * 1024;

    static bool IsDots(const char* name)
    {
        return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
    }

    // In words, so that records lie on their boundaries.
    std::unique_ptr<uint64[]> fBuffer =
        std::make_unique_for_overwrite<uint64[]>(kReadBytes / sizeof(uint64));
};

template<typename IsStopped, typename Visit>
status_t FolderRecords::ForEach(int folder, IsStopped isStopped, Visit visit)
{
    char* start = reinterpret_cast<char*>(fBuffer.get());
    for (;;) {
        if (isStopped()) {
            return B_CANCELED;
        }
        const ssize_t length = sys::ListFolder(folder, start, kReadBytes);
        if (length <= 0) {
            return static_cast<status_t>(length);
        }
        for (char* at = start; at < start + length;) {
            const FolderRecord* record = reinterpret_cast<const FolderRecord*>(at);
            const char* name = at + offsetof(FolderRecord, name);
            if (!IsDots(name)) {
                visit(*record, name);
            }
            at += record->length;
        }
    }
}

} // namespace kits
