// What a BDirectory does with its entries by name, and with its volume.

#include "EntryName.h"
#include "SystemCalls.h"

#include <Directory.h>

using kits::IsEntryName;

status_t BDirectory::RenameChild(const char* name, const char* newName)
{
    if (InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    if (!IsEntryName(name) || !IsEntryName(newName)) {
        return B_BAD_VALUE;
    }
    return kits::sys::RenameNewAt(Descriptor(), name, Descriptor(), newName);
}

status_t BDirectory::ReplaceChild(const char* name, const char* newName)
{
    if (InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    if (!IsEntryName(name) || !IsEntryName(newName)) {
        return B_BAD_VALUE;
    }
    return kits::sys::RenameAt(Descriptor(), name, Descriptor(), newName);
}

status_t BDirectory::ExchangeChildren(const char* name, const char* other)
{
    if (InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    if (!IsEntryName(name) || !IsEntryName(other)) {
        return B_BAD_VALUE;
    }
    return kits::sys::ExchangeAt(Descriptor(), name, other);
}

status_t BDirectory::RemoveChildFile(const char* name)
{
    if (InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    return IsEntryName(name) ? kits::sys::RemoveFileAt(Descriptor(), name) : B_BAD_VALUE;
}

status_t BDirectory::RemoveChildFolder(const char* name)
{
    if (InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    return IsEntryName(name) ? kits::sys::RemoveFolderAt(Descriptor(), name) : B_BAD_VALUE;
}

status_t BDirectory::SyncVolume()
{
    return InitCheck() == B_OK ? kits::sys::SyncVolume(Descriptor()) : B_NO_INIT;
}
