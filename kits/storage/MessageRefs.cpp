#include "FolderTable.h"

#include "app/RefFolders.h"

#include <Entry.h>
#include <Message.h>

#include <cstring>
#include <new>
#include <vector>

// Entries in messages: device and directory as 64 bits each, the name's bytes and a zero.

namespace {

constexpr size_t kNumbersBytes = 2 * sizeof(int64);

/// Hands the bytes of `ref` to `use`. Errors: B_BAD_VALUE for null and for a ref without a name.
template<class Use>
status_t WithBytes(const entry_ref* ref, Use use)
{
    if (ref == nullptr || ref->name == nullptr) {
        return B_BAD_VALUE;
    }
    const int64 numbers[2] = {static_cast<int64>(ref->device), static_cast<int64>(ref->directory)};
    const size_t nameSize = std::strlen(ref->name) + 1;
    try {
        std::vector<char> bytes(kNumbersBytes + nameSize);
        std::memcpy(bytes.data(), numbers, kNumbersBytes);
        std::memcpy(bytes.data() + kNumbersBytes, ref->name, nameSize);
        return use(bytes.data(), static_cast<ssize_t>(bytes.size()));
    } catch (const std::bad_alloc&) {
        return B_NO_MEMORY;
    }
}

/// Whether the bytes are those of a ref; they may come from outside. A name is one step of a path.
bool IsRef(const char* bytes, size_t size)
{
    if (size < kNumbersBytes + 2 || bytes[size - 1] != '\0') {
        return false;
    }
    const char* name = bytes + kNumbersBytes;
    return std::strlen(name) == size - kNumbersBytes - 1 && std::strchr(name, '/') == nullptr;
}

// Messages name folders by number alone: what is known when a ref comes in stays known with it.
kits::FolderHold FolderOfBytes(const void* data, size_t size)
{
    if (!IsRef(static_cast<const char*>(data), size)) {
        return {};
    }
    int64 numbers[2];
    std::memcpy(numbers, data, kNumbersBytes);
    return kits::FolderTable::Get().Find(static_cast<dev_t>(numbers[0]),
                                         static_cast<ino_t>(numbers[1]));
}

[[maybe_unused]] const bool sIsRegistered = [] {
    kits::SetRefFolderHook(FolderOfBytes);
    return true;
}();

} // namespace

status_t BMessage::AddRef(const char* name, const entry_ref* value)
{
    return WithBytes(value, [&](const char* bytes, ssize_t size) {
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
    const char* bytes = static_cast<const char*>(data);
    if (!IsRef(bytes, static_cast<size_t>(size))) {
        return B_BAD_VALUE;
    }
    int64 numbers[2];
    std::memcpy(numbers, bytes, kNumbersBytes);
    *value = entry_ref(static_cast<dev_t>(numbers[0]), static_cast<ino_t>(numbers[1]),
                       bytes + kNumbersBytes);
    value->fFolder = kits::FolderTable::Get().Find(value->device, value->directory);
    return value->name == nullptr ? B_NO_MEMORY : B_OK;
}

status_t BMessage::ReplaceRef(const char* name, const entry_ref* value)
{
    return ReplaceRef(name, 0, value);
}

status_t BMessage::ReplaceRef(const char* name, int32 index, const entry_ref* value)
{
    return WithBytes(value, [&](const char* bytes, ssize_t size) {
        return ReplaceData(name, B_REF_TYPE, index, bytes, size);
    });
}

bool BMessage::HasRef(const char* name, int32 index) const
{
    return HasData(name, B_REF_TYPE, index);
}
