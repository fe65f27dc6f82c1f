#include "FolderListing.h"

#include "SystemCalls.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace kits {

namespace {

constexpr size_t kReadBytes = size_t{64} * 1024;
constexpr size_t kChunkBytes = size_t{64} * 1024;

/// A record as the kernel writes it.
struct Record
{
    uint64 node;
    int64 next;
    unsigned short length;
    unsigned char kind;
    char name[1];
};

bool IsDots(const char* name)
{
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

template<typename Visit>
status_t ForEachRecord(int folder, const FolderListing::IsStopped& isStopped, Visit visit)
{
    status_t status = sys::RewindFolder(folder);
    if (status != B_OK) {
        return status;
    }
    const auto buffer = std::make_unique_for_overwrite<uint64[]>(kReadBytes / sizeof(uint64));
    char* start = reinterpret_cast<char*>(buffer.get());
    for (;;) {
        if (isStopped && isStopped()) {
            return B_CANCELED;
        }
        const ssize_t length = sys::ListFolder(folder, start, kReadBytes);
        if (length <= 0) {
            return static_cast<status_t>(length);
        }
        for (char* at = start; at < start + length;) {
            const Record* record = reinterpret_cast<const Record*>(at);
            const char* name = at + offsetof(Record, name);
            if (!IsDots(name)) {
                visit(*record, name);
            }
            at += record->length;
        }
    }
}

} // namespace

const char* FolderListing::Keep(const char* name)
{
    const size_t size = std::strlen(name) + 1;
    if (size > fRoom) {
        // A small folder stays small: the first chunk is a fraction of the others.
        fRoom = fChunks.empty() ? 2048 : kChunkBytes;
        fChunks.push_back(std::make_unique_for_overwrite<char[]>(fRoom));
        fNext = fChunks.back().get();
    }
    char* kept = fNext;
    std::memcpy(kept, name, size);
    fNext += size;
    fRoom -= size;
    return kept;
}

status_t FolderListing::Read(int folder, const IsStopped& isStopped)
{
    fItems.clear();
    fChunks.clear();
    fRoom = 0;
    return ForEachRecord(folder, isStopped, [this](const Record& record, const char* name) {
        fItems.push_back({Keep(name), static_cast<ino_t>(record.node), record.kind});
    });
}

void FolderListing::Sort()
{
    std::sort(fItems.begin(), fItems.end(),
              [](const Item& a, const Item& b) { return std::strcmp(a.name, b.name) < 0; });
}

int64 FolderListing::Count(int folder)
{
    int64 count = 0;
    const status_t status =
        ForEachRecord(folder, {}, [&count](const Record&, const char*) { ++count; });
    return status == B_OK ? count : status;
}

} // namespace kits
