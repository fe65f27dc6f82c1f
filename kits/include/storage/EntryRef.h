#pragma once

#include <Errors.h>
#include <SupportDefs.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <string>
#include <sys/types.h>
#include <utility>

namespace kits {

/// What a known folder's holders share: a count, and who to tell when the last one lets go.
struct FolderCount
{
    std::atomic<int32> holders{0}; // how many FolderHolds there are
    /// Takes the last holder away, under the lock of the table that owns the folder.
    void (*releaseLast)(FolderCount*) = nullptr;
};

/// A counted pointer to a known folder, one word wide: a hundred thousand rows hold one each.
///
/// Thread: as a plain pointer; the count itself may be changed by any thread.
class FolderHold
{
public:
    /// Holds no folder.
    FolderHold() = default;
    /// Adopts a count that the table has already taken for this holder.
    explicit FolderHold(FolderCount* adopted) : fFolder(adopted) {}
    /// Holds the same folder once more, or takes the hold over.
    FolderHold(const FolderHold& other) : fFolder(other.fFolder)
    {
        if (fFolder != nullptr) {
            fFolder->holders.fetch_add(1, std::memory_order_relaxed);
        }
    }
    FolderHold(FolderHold&& other) noexcept : fFolder(other.fFolder) { other.fFolder = nullptr; }
    /// Lets go what was held.
    FolderHold& operator=(FolderHold other) noexcept
    {
        std::swap(fFolder, other.fFolder);
        return *this;
    }
    ~FolderHold() { Release(); }

    /// What is held; null for none.
    FolderCount* Get() const { return fFolder; }
    explicit operator bool() const { return fFolder != nullptr; }

private:
    void Release()
    {
        if (fFolder == nullptr) {
            return;
        }
        int32 count = fFolder->holders.load(std::memory_order_relaxed);
        while (count > 1) {
            if (fFolder->holders.compare_exchange_weak(count, count - 1,
                                                       std::memory_order_acq_rel)) {
                return;
            }
        }
        fFolder->releaseLast(fFolder);
    }

    FolderCount* fFolder = nullptr;
};

} // namespace kits

/// Names an entry by its folder's node and its own name; the entry need not exist.
///
/// The folder is found through the table of known folders, so a ref still works after the folder
/// was renamed or moved while it is known. A ref is known to hold its folder once it came from a
/// BEntry, a BDirectory or a BMessage; messages hold the folders of the refs in them. Names are bytes: anything but '/' and zero.
struct entry_ref
{
    /// Names nothing.
    entry_ref() = default;
    /// Names `name`, which is copied and may be null, in a folder.
    entry_ref(dev_t dev, ino_t dir, const char* name);
    /// Copies the name, which is null when memory runs out, and holds the same folder.
    entry_ref(const entry_ref& other);
    entry_ref(entry_ref&& other) noexcept;
    /// As the constructors; the former name is freed.
    entry_ref& operator=(entry_ref other) noexcept;
    ~entry_ref();

    /// Copies `name`; null unsets it. Errors: B_NO_MEMORY.
    status_t set_name(const char* name);

    /// Whether folder and name are the same, byte for byte.
    bool operator==(const entry_ref& other) const;
    bool operator!=(const entry_ref& other) const { return !(*this == other); }

    dev_t device = 0;     // of the folder
    ino_t directory = 0;  // the folder's node
    char* name = nullptr; // owned

private:
    friend class BEntry;
    friend class BDirectory;
    friend class BEntryBatch;
    friend class BQuery;
    friend class BMessage;
    kits::FolderHold fFolder; // may be null: then the table is asked by (device, directory)
};

inline entry_ref::entry_ref(dev_t dev, ino_t dir, const char* leaf) : device(dev), directory(dir)
{
    set_name(leaf);
}

inline entry_ref::entry_ref(const entry_ref& other)
    : device(other.device), directory(other.directory), fFolder(other.fFolder)
{
    set_name(other.name);
}

inline entry_ref::entry_ref(entry_ref&& other) noexcept
    : device(other.device), directory(other.directory), name(std::exchange(other.name, nullptr)),
      fFolder(std::move(other.fFolder))
{
}

inline entry_ref& entry_ref::operator=(entry_ref other) noexcept
{
    std::swap(device, other.device);
    std::swap(directory, other.directory);
    std::swap(name, other.name);
    std::swap(fFolder, other.fFolder);
    return *this;
}

inline entry_ref::~entry_ref()
{
    std::free(name); // NOLINT(clang-analyzer-unix.Malloc): it ends std::optional's contents twice
}

inline status_t entry_ref::set_name(const char* newName)
{
    char* copy = nullptr;
    if (newName != nullptr) {
        copy = ::strdup(newName);
        if (copy == nullptr) {
            return B_NO_MEMORY;
        }
    }
    std::free(name);
    name = copy;
    return B_OK;
}

inline bool entry_ref::operator==(const entry_ref& other) const
{
    if (device != other.device || directory != other.directory) {
        return false;
    }
    if (name == nullptr || other.name == nullptr) {
        return name == other.name;
    }
    return std::strcmp(name, other.name) == 0;
}
