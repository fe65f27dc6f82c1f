#pragma once

#include <Entry.h>
#include <EntryList.h>
#include <Node.h>

#include <memory>

class BFile;
class BSymLink;

namespace kits {
class FolderListing;
}

/// An open folder: its entries in byte order of their names, and the making of new ones.
///
/// All calls go through the folder's descriptor, so it works on the same folder whatever is renamed
/// or swapped above it. A path of several steps follows links in all of its steps but the last. The
/// listing is read whole at the first call that asks for an entry, and again after Rewind(). "."
/// and ".." are not given.
class BDirectory : public BNode, public BEntryList
{
public:
    /// Holds no folder, or opens one as SetTo() does; InitCheck() tells what became of it.
    BDirectory();
    explicit BDirectory(const entry_ref* ref);
    /// Opens a folder known to the kit: one that was opened, or asked for its node_ref.
    explicit BDirectory(const node_ref* ref);
    explicit BDirectory(const BEntry* entry);
    explicit BDirectory(const char* path);
    /// Opens the folder at `path` from `directory`.
    BDirectory(const BDirectory* directory, const char* path);
    /// Opens the same folder again; the copy's listing begins anew.
    BDirectory(const BDirectory& other);
    BDirectory& operator=(const BDirectory& other);
    ~BDirectory() override;

    /// Opens a folder, following links. Errors: B_BAD_VALUE for null, B_ENTRY_NOT_FOUND,
    /// B_NOT_A_DIRECTORY, B_PERMISSION_DENIED, B_LINK_LIMIT ...
    status_t SetTo(const entry_ref* ref);
    status_t SetTo(const node_ref* ref);
    status_t SetTo(const BEntry* entry);
    status_t SetTo(const char* path);
    /// Opens the folder at `path` from `directory`, which may be this object.
    status_t SetTo(const BDirectory* directory, const char* path);
    /// An extension of the platform: opens the child folder `name` itself: a link, even to a
    /// folder, is B_NOT_A_DIRECTORY.
    status_t SetToChild(const BDirectory& parent, const char* name);
    /// An extension of the platform: the same, but nothing that is mounted there: B_BUSY then.
    status_t SetToUnmountedChild(const BDirectory& parent, const char* name);
    /// An extension of the platform: opens the folder that `child` lies in now; that of the top is
    /// itself.
    status_t SetToParent(const BDirectory& child);
    /// Lets the folder go.
    void Unset() override;

    /// The folder itself as an entry. Errors: B_NO_INIT, B_BAD_VALUE for null; those of finding its
    /// name.
    status_t GetEntry(BEntry* entry) const;
    /// Whether it is the top of a volume, or of the whole tree.
    bool IsRootDirectory() const;

    /// Finds the entry at `path`, which must exist; a link at its end is followed with `traverse`.
    /// Errors: B_ENTRY_NOT_FOUND when there is no such entry; `entry` is unset then.
    status_t FindEntry(const char* path, BEntry* entry, bool traverse = false) const;
    /// Whether the entry at `path`, or `entry`, is inside this folder, at any depth, and is of one
    /// of the kinds.
    bool Contains(const char* path, uint32 nodeFlags = B_ANY_NODE) const;
    bool Contains(const BEntry* entry, uint32 nodeFlags = B_ANY_NODE) const;
    /// An extension of the platform: GetStat of the entry `name` of this folder, itself, in one
    /// call.
    status_t GetStatFor(const char* name, struct stat* st) const;

    // BEntryList
    status_t GetNextEntry(BEntry* entry, bool traverse = false) override;
    status_t GetNextRef(entry_ref* ref) override;
    int32 GetNextDirents(dirent* buffer, size_t length, int32 count = INT32_MAX) override;
    status_t Rewind() override;
    /// Reads the folder anew; the place in the listing stays.
    int32 CountEntries() override;
    /// An extension of the platform: the next name and what the listing calls it: one of the
    /// B_..._NODE, 0 when it is none of them or the file system says nothing. Ownership: lent until
    /// the next call that reads the folder.
    status_t GetNextName(const char** name, uint32* kind = nullptr);

    /// Makes a folder (mode 0777 & ~umask). `directory` may be null. Errors: B_FILE_EXISTS,
    /// B_ENTRY_NOT_FOUND without the folder above ...
    status_t CreateDirectory(const char* path, BDirectory* directory);
    /// Makes an empty file (mode 0666 & ~umask), open for reading and writing. Without
    /// `failIfExists` an existing file is emptied. `file` may be null.
    status_t CreateFile(const char* path, BFile* file, bool failIfExists = false);
    /// Makes a link named `path` whose text is `linkToPath`. `link` may be null.
    status_t CreateSymLink(const char* path, const char* linkToPath, BSymLink* link);

    /// An extension of the platform: makes the new file `name` with (mode & ~umask); B_FILE_EXISTS
    /// when there is anything of that name. From its first moment it is open to nobody whom `mode`
    /// leaves out.
    status_t CreateNewFile(const char* name, mode_t mode, BFile* file);
    /// An extension of the platform: makes the new folder `name` with (mode & ~umask) and the
    /// owner's rwx for the time it is being filled. Afterwards `GetPermissions(&p);
    /// SetPermissions(p & mode)` brings it to (mode & ~umask).
    status_t CreateNewDirectory(const char* name, mode_t mode, BDirectory* directory);

    // Extensions of the platform: entries of this folder, themselves, by one system call each.
    // Nothing is done for what lies in a Trash: its records are BEntry's.

    /// Renames an entry; B_FILE_EXISTS when there is anything of the new name.
    [[nodiscard]] status_t RenameChild(const char* name, const char* newName);
    /// Renames a file or link over whatever file or link has the new name.
    [[nodiscard]] status_t ReplaceChild(const char* name, const char* newName);
    /// Exchanges two entries, so that there is no moment in which either name is free. Errors:
    /// B_UNSUPPORTED where the file system cannot; nothing is done then.
    [[nodiscard]] status_t ExchangeChildren(const char* name, const char* other);
    /// Removes a file or link; a folder is B_IS_A_DIRECTORY.
    status_t RemoveChildFile(const char* name);
    /// Removes an empty folder.
    status_t RemoveChildFolder(const char* name);

    /// An extension of the platform: brings all that was written on the folder's volume to the
    /// medium. Errors: also of what was written behind since this folder was opened, by anybody: so
    /// open it before the first byte. May take many seconds.
    [[nodiscard]] status_t SyncVolume();

private:
    friend class BEntry;
    friend class BEntryBatch;
    friend class BFile;
    friend class BNode;
    friend class BSymLink;
    friend class BTrashClaim;
    friend bool is_trash_folder(const BDirectory* folder);
    friend status_t is_trash_folder(const BDirectory* folder, bool* isTrash);

    status_t AdoptFolder(int descriptor, const kits::FolderHold& known);
    const kits::FolderHold& Folder() const;
    status_t OpenKnown(const kits::FolderHold& folder);
    status_t ReadListing();
    void KnowFolder(const struct stat& st) const override;

    mutable kits::FolderHold fFolder; // made when first needed
    std::unique_ptr<kits::FolderListing> fListing;
    int32 fNext = 0;
};

/// Makes the folder at `path` and the missing ones above it. B_OK when it is there already.
status_t create_directory(const char* path, mode_t mode);
