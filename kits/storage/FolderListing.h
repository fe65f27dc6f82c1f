#pragma once

#include <StorageDefs.h>

#include <functional>
#include <memory>
#include <vector>

namespace kits {

/// The names of a folder, read in one pass of the kernel's listing. "." and ".." are left out.
class FolderListing
{
public:
    struct Item
    {
        const char* name; // lent by the listing
        ino_t node;       // of a mount point: the folder it covers
        uint8 kind;       // DT_ value
    };

    /// Asked now and then while a folder is being read; true ends that.
    using IsStopped = std::function<bool()>;

    /// Reads the open folder from its start. `isStopped` may be empty. Errors: B_CANCELED, of
    /// reading; what was read until then stays.
    [[nodiscard]] status_t Read(int folder, const IsStopped& isStopped = {});
    /// Brings the items into byte order of their names.
    void Sort();

    const std::vector<Item>& Items() const { return fItems; }

    /// How many entries the open folder has; keeps nothing. Returns the count or a status.
    static int64 Count(int folder);

private:
    const char* Keep(const char* name);

    std::vector<Item> fItems;
    std::vector<std::unique_ptr<char[]>> fChunks; // the names, end to end
    size_t fRoom = 0;                             // left in the last chunk
    char* fNext = nullptr;
};

} // namespace kits
