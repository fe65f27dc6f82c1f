#include "FolderListing.h"

#include "FolderRecords.h"

#include <algorithm>
#include <cstring>

namespace kits {

namespace {

constexpr size_t kChunkBytes = size_t{64} * 1024;

template<typename Visit>
status_t ForEachRecord(int folder, const FolderListing::IsStopped& isStopped, Visit visit)
{
    status_t status = sys::RewindFolder(folder);
    if (status != B_OK) {
        return status;
    }
    return FolderRecords().ForEach(
        folder, [&isStopped] { return isStopped && isStopped(); }, visit);
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
    return ForEachRecord(folder, isStopped, [this](const FolderRecord& record, const char* name) {
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
        ForEachRecord(folder, {}, [&count](const FolderRecord&, const char*) { ++count; });
    return status == B_OK ? count : status;
}

} // namespace kits
