#include <Path.h>

#include "PathLookup.h"

#include <Directory.h>
#include <Entry.h>

#include <fcntl.h>

BPath::BPath(const char* path, const char* leaf, bool normalize)
{
    SetTo(path, leaf, normalize);
}

BPath::BPath(const BDirectory* directory, const char* leaf, bool normalize)
{
    SetTo(directory, leaf, normalize);
}

BPath::BPath(const BEntry* entry)
{
    SetTo(entry);
}

BPath::BPath(const entry_ref* ref)
{
    SetTo(ref);
}

status_t BPath::Fail(status_t status)
{
    fPath.clear();
    fStatus = status;
    return status;
}

status_t BPath::SetTo(const char* path, const char* leaf, bool)
{
    if (path == nullptr || *path == '\0' || (leaf != nullptr && *leaf == '/')) {
        return Fail(B_BAD_VALUE);
    }
    std::string text = kits::SystemPath(path);
    if (text.front() != '/') {
        std::string here;
        const kits::UniqueFd folder(
            kits::sys::OpenAt(kits::sys::kWorkingDirectory, ".", O_PATH | O_DIRECTORY));
        const status_t status =
            folder.IsOpen() ? kits::sys::PathOf(folder.Get(), &here) : folder.Get();
        if (status != B_OK) {
            return Fail(status);
        }
        text = here + "/" + text;
    }
    if (leaf != nullptr) {
        text += '/';
        text += leaf;
    }
    fPath = kits::NormalizedPath(text);
    fStatus = B_OK;
    return B_OK;
}

status_t BPath::SetTo(const BDirectory* directory, const char* leaf, bool normalize)
{
    if (directory == nullptr) {
        return Fail(B_BAD_VALUE);
    }
    BEntry entry;
    const status_t status = directory->GetEntry(&entry);
    if (status != B_OK) {
        return Fail(status);
    }
    BPath path;
    const status_t found = entry.GetPath(&path);
    return found == B_OK ? SetTo(path.Path(), leaf, normalize) : Fail(found);
}

status_t BPath::SetTo(const BEntry* entry)
{
    if (entry == nullptr) {
        return Fail(B_BAD_VALUE);
    }
    BPath path;
    const status_t status = entry->GetPath(&path);
    if (status != B_OK) {
        return Fail(status);
    }
    *this = std::move(path);
    return B_OK;
}

status_t BPath::SetTo(const entry_ref* ref)
{
    const BEntry entry(ref);
    const status_t status = entry.InitCheck();
    return status == B_OK ? SetTo(&entry) : Fail(status);
}

void BPath::Unset()
{
    Fail(B_NO_INIT);
}

status_t BPath::Append(const char* path, bool normalize)
{
    if (fStatus != B_OK || path == nullptr) {
        return Fail(B_BAD_VALUE);
    }
    const std::string base = fPath;
    return SetTo(base.c_str(), path, normalize);
}

const char* BPath::Leaf() const
{
    return fStatus == B_OK ? fPath.c_str() + fPath.rfind('/') + 1 : nullptr;
}

status_t BPath::GetParent(BPath* path) const
{
    if (path == nullptr) {
        return B_BAD_VALUE;
    }
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    if (fPath == "/") {
        return B_ENTRY_NOT_FOUND;
    }
    const size_t slash = fPath.rfind('/');
    const std::string parent = fPath.substr(0, slash == 0 ? 1 : slash);
    path->fPath = parent;
    path->fStatus = B_OK;
    return B_OK;
}

bool BPath::operator==(const BPath& other) const
{
    return fStatus == B_OK ? other.fStatus == B_OK && fPath == other.fPath : other.fStatus != B_OK;
}

bool BPath::operator==(const char* path) const
{
    const BPath other(path);
    return *this == other;
}
