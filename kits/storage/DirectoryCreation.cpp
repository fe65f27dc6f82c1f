// What a BDirectory makes: folders, files and links.

#include "EntryName.h"
#include "PathLookup.h"

#include <Directory.h>
#include <File.h>
#include <Path.h>
#include <SymLink.h>

#include <string>

using kits::FolderTable;
using kits::IsEntryName;
using kits::kOpenFolderFlags;
using kits::OpenFolder;

status_t BDirectory::CreateDirectory(const char* path, BDirectory* directory)
{
    if (InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    kits::Place place;
    OpenFolder folder;
    status_t status = kits::LookUpFrom(Folder(), path, kits::LastLink::kKept, &place);
    if (status == B_OK) {
        status = FolderTable::Get().Open(place.folder, &folder);
    }
    if (status == B_OK) {
        status = kits::sys::MakeFolderAt(folder->Get(), place.name.c_str(), 0777);
    }
    if (status != B_OK || directory == nullptr) {
        return status;
    }
    const int made =
        kits::sys::OpenAt(folder->Get(), place.name.c_str(), kOpenFolderFlags | O_NOFOLLOW);
    directory->Unset();
    return directory->AdoptFolder(made, {});
}

status_t BDirectory::CreateFile(const char* path, BFile* file, bool failIfExists)
{
    if (InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    BFile unwanted;
    BFile* made = file == nullptr ? &unwanted : file;
    return made->SetTo(this, path,
                       B_READ_WRITE | B_CREATE_FILE |
                           (failIfExists ? B_FAIL_IF_EXISTS : B_ERASE_FILE));
}

status_t BDirectory::CreateSymLink(const char* path, const char* linkToPath, BSymLink* link)
{
    if (InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    if (linkToPath == nullptr) {
        return B_BAD_VALUE;
    }
    kits::Place place;
    OpenFolder folder;
    status_t status = kits::LookUpFrom(Folder(), path, kits::LastLink::kKept, &place);
    if (status == B_OK) {
        status = FolderTable::Get().Open(place.folder, &folder);
    }
    if (status == B_OK) {
        status = kits::sys::MakeLinkAt(linkToPath, folder->Get(), place.name.c_str());
    }
    return status == B_OK && link != nullptr ? link->SetTo(this, path) : status;
}

status_t BDirectory::CreateNewFile(const char* name, mode_t mode, BFile* file)
{
    if (InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    if (!IsEntryName(name) || file == nullptr) {
        return B_BAD_VALUE;
    }
    const int made =
        kits::sys::OpenAt(Descriptor(), name, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW, mode & 0777);
    if (made < 0) {
        return made;
    }
    file->Unset();
    file->AdoptFile(made, B_READ_WRITE);
    return B_OK;
}

status_t BDirectory::CreateNewDirectory(const char* name, mode_t mode, BDirectory* directory)
{
    if (InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    if (!IsEntryName(name) || directory == nullptr) {
        return B_BAD_VALUE;
    }
    const status_t status = kits::sys::MakeFolderAt(Descriptor(), name, (mode & 0777) | S_IRWXU);
    if (status != B_OK) {
        return status;
    }
    const int made = kits::sys::OpenAt(Descriptor(), name, kOpenFolderFlags | O_NOFOLLOW);
    if (made < 0) {
        kits::sys::RemoveFolderAt(Descriptor(), name); // nobody is told that it was made
    }
    directory->Unset();
    return directory->AdoptFolder(made, {});
}

status_t create_directory(const char* path, mode_t mode)
{
    const BPath normalized(path);
    if (normalized.InitCheck() != B_OK) {
        return normalized.InitCheck();
    }
    const std::string whole = normalized.Path();
    for (size_t slash = whole.find('/', 1);; slash = whole.find('/', slash + 1)) {
        const std::string part = whole.substr(0, slash);
        const status_t status =
            kits::sys::MakeFolderAt(kits::sys::kWorkingDirectory, part.c_str(), mode);
        if (slash == std::string::npos) {
            // A link to a folder is as good.
            const bool isThere =
                status == B_FILE_EXISTS && BEntry(part.c_str(), true).IsDirectory();
            return isThere ? status_t(B_OK) : status;
        }
        // What cannot be made here because it is there, or may not be, shows at the last step.
        if (status == B_DEVICE_FULL || status == B_IO_ERROR) {
            return status;
        }
    }
}
