#include "FolderTable.h"

#include "app/RefFolders.h"

#include <Entry.h>
#include <Message.h>

#include <cstring>
#include <new>
#include <vector>

// Entries in messages: device and directory as 64 bits each, the name's bytes and a zero. The
// system counts devices with 32 bits; above them stands what tells the folder from another of its
// numbers.

namespace {

constexpr size_t kNumbersBytes = 2 * sizeof(int64);
constexpr size_t kTagBytes = sizeof(uint32);

/// `folder`: what the ref holds, which counts as long as it has the ref's numbers.
uint32 TagOf(const entry_ref& ref, const kits::FolderHold& folder)
{
    kits::FolderTable& table = kits::FolderTable::Get();
    const bool isCurrent =
        folder && table.DeviceOf(folder) == ref.device && table.NodeOf(folder) == ref.directory;
    return table.TagOf(isCurrent ? folder : table.Find(ref.device, ref.directory));
}

/// Hands the bytes of `ref` to `use`. Errors: B_BAD_VALUE for null and for a ref without a name.
template<class Use>
status_t WithBytes(const entry_ref* ref, const kits::FolderHold& folder, Use use)
{
    if (ref == nullptr || ref->name == nullptr) {
        return B_BAD_VALUE;
    }
    const int64 numbers[2] = {static_cast<int64>(ref->device), static_cast<int64>(ref->directory)};
    const size_t nameSize = std::strlen(ref->name) + 1;
    const uint32 tag = TagOf(*ref, folder);
    try {
        std::vector<char> bytes(kNumbersBytes + nameSize + (tag != 0 ? kTagBytes : 0));
        std::memcpy(bytes.data(), numbers, kNumbersBytes);
        std::memcpy(bytes.data() + kNumbersBytes, ref->name, nameSize);
        if (tag != 0) {
            std::memcpy(bytes.data() + kNumbersBytes + nameSize, &tag, kTagBytes);
        }
        return use(bytes.data(), static_cast<ssize_t>(bytes.size()));
    } catch (const std::bad_alloc&) {
        return B_NO_MEMORY;
    }
}

/// What the bytes say of an entry.
struct RefBytes
{
    int64 numbers[2] = {};
    const char* name = nullptr;
    uint32 tag = 0;

    kits::FolderHold Folder() const
    {
        return kits::FolderTable::Get().Find(static_cast<dev_t>(numbers[0]),
                                             static_cast<ino_t>(numbers[1]), tag);
    }
};

/// False when the bytes are not those of a ref; they may come from outside. A name is one step of a
/// path.
bool ReadRef(const void* data, size_t size, RefBytes* ref)
{
    if (size < kNumbersBytes + 2) {
        return false;
    }
    const char* bytes = static_cast<const char*>(data);
    const size_t room = size - kNumbersBytes;
    ref->name = bytes + kNumbersBytes;
    const size_t length = ::strnlen(ref->name, room);
    if (length == 0 || length == room || std::strchr(ref->name, '/') != nullptr) {
        return false;
    }
    const size_t after = room - length - 1;
    if (after == kTagBytes) {
        std::memcpy(&ref->tag, ref->name + length + 1, kTagBytes);
    } else if (after != 0) {
        return false;
    }
    std::memcpy(ref->numbers, bytes, kNumbersBytes);
    return true;
}

// Messages name folders by numbers: what is known when a ref comes in stays known with it.
kits::FolderHold FolderOfBytes(const void* data, size_t size)
{
    RefBytes ref;
    return ReadRef(data, size, &ref) ? ref.Folder() : kits::FolderHold();
}

[[maybe_unused]] const bool sIsRegistered = [] {
    kits::SetRefFolderHook(FolderOfBytes);
    return true;
}();

} // namespace

status_t BMessage::AddRef(const char* name, const entry_ref* value)
{
    const kits::FolderHold folder = value == nullptr ? kits::FolderHold() : value->fFolder;
    return WithBytes(value, folder, [&](const char* bytes, ssize_t size) {
        return AddData(name, B_REF_TYPE, bytes, size, false);
    });
}

status_t BMessage::FindRef(const char* name, entry_ref* value) const
{
    return FindRef(name, 0, value);
}

status_t BMessage::FindRef(const char* name, int32 index, entry_ref* value) const
{
    if (value == nullptr) {
        return B_BAD_VALUE;
    }
    *value = entry_ref();
    const void* data = nullptr;
    ssize_t size = 0;
    const status_t status = FindData(name, B_REF_TYPE, index, &data, &size);
    if (status != B_OK) {
        return status;
    }
    RefBytes read;
    if (!ReadRef(data, static_cast<size_t>(size), &read)) {
        return B_BAD_VALUE;
    }
    *value = entry_ref(static_cast<dev_t>(read.numbers[0]), static_cast<ino_t>(read.numbers[1]),
                       read.name);
    value->fFolder = read.Folder();
    return value->name == nullptr ? B_NO_MEMORY : B_OK;
}

status_t BMessage::ReplaceRef(const char* name, const entry_ref* value)
{
    return ReplaceRef(name, 0, value);
}

status_t BMessage::ReplaceRef(const char* name, int32 index, const entry_ref* value)
{
    const kits::FolderHold folder = value == nullptr ? kits::FolderHold() : value->fFolder;
    return WithBytes(value, folder, [&](const char* bytes, ssize_t size) {
        return ReplaceData(name, B_REF_TYPE, index, bytes, size);
    });
}

bool BMessage::HasRef(const char* name, int32 index) const
{
    return HasData(name, B_REF_TYPE, index);
}
