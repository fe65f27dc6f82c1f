#pragma once

#include <EntryRef.h>
#include <Statable.h>

#include <memory>
#include <string>

class BDirectory;
class BPath;
class BTreeHooks;

/// An entry in a folder: a place that a file, folder or link has or may have.
///
/// Holds no descriptor of its own; it works through its folder, which is known as long as this
/// entry lives. Calls act on the entry itself: a link is the link. Thread: one at a time.
class BEntry : public BStatable
{
public:
    /// Names nothing.
    BEntry() = default;
    /// `traverse`: a link is followed to what it points to, which need not exist, though its folder
    /// must.
    BEntry(const BDirectory* directory, const char* path, bool traverse = false);
    /// The same of a ref, and of a path from the working directory.
    explicit BEntry(const entry_ref* ref, bool traverse = false);
    explicit BEntry(const char* path, bool traverse = false);
    /// Copies the place; both hold the folder.
    BEntry(const BEntry&) = default;
    BEntry& operator=(const BEntry&) = default;
    ~BEntry() override;

    /// Errors: B_NO_INIT, or what the last SetTo() said.
    status_t InitCheck() const { return fStatus; }
    /// Names the entry at `path`. Errors: B_ENTRY_NOT_FOUND when the folder is not there (the entry
    /// itself may be absent), B_NOT_A_DIRECTORY, B_LINK_LIMIT, B_NAME_TOO_LONG, B_BAD_VALUE. The
    /// entry is unset then.
    status_t SetTo(const BDirectory* directory, const char* path, bool traverse = false);
    status_t SetTo(const entry_ref* ref, bool traverse = false);
    status_t SetTo(const char* path, bool traverse = false);
    /// Names nothing from now on.
    void Unset();

    /// Whether there is something of this name now.
    bool Exists() const;

    // BStatable
    status_t GetStat(struct stat* st) const override;

    /// The path of the entry, as its folder is reached now. Errors: B_NO_INIT, B_BAD_VALUE for
    /// null; those of finding the folder's path.
    status_t GetPath(BPath* path) const;
    /// The parent folder as an entry. Errors: B_ENTRY_NOT_FOUND for "/".
    status_t GetParent(BEntry* entry) const;
    status_t GetParent(BDirectory* directory) const;
    /// Copies the name. `buffer` holds at least B_FILE_NAME_LENGTH bytes. Errors: B_NO_INIT,
    /// B_BAD_VALUE for null.
    status_t GetName(char* buffer) const;
    /// The name, "" when unset. Ownership: lent until the entry changes. An extension of the
    /// platform.
    const char* Name() const { return fName.c_str(); }
    /// The entry as a ref, which holds the folder. Errors: B_NO_INIT, B_BAD_VALUE for null.
    status_t GetRef(entry_ref* ref) const;

    /// Gives the entry another name; `path` may also lead elsewhere, relative to the entry's
    /// folder. What comes into a Trash, is renamed there or leaves it takes its record of origin
    /// along: see <TrashRecord.h>. Errors: B_FILE_EXISTS without `clobber` when the name is taken,
    /// B_CROSS_DEVICE_LINK for another volume ... Nothing changes then.
    status_t Rename(const char* path, bool clobber = false);
    /// Moves the entry into `directory`, under `path` when given, else under its own name.
    status_t MoveTo(BDirectory* directory, const char* path = nullptr, bool clobber = false);
    /// Removes the entry; a folder must be empty. Errors: B_DIRECTORY_NOT_EMPTY, B_BUSY for a mount
    /// point ... What is removed in a Trash loses its record of origin.
    status_t Remove();

    /// An extension of the platform: removes the entry, a folder with all below it, in one walk
    /// with several threads. No link is followed and no mount point entered: that and the folders
    /// above it stay. Goes on where something cannot be removed; `hooks` (may be null) hears of it.
    /// Errors: what was told first; B_CANCELED when the walk was stopped; B_NOT_ALLOWED when a hook
    /// kept something. The entry is gone when the status is B_OK, and only then.
    status_t RemoveTree(BTreeHooks* hooks = nullptr);
    /// What MeasureTree() does about volumes that are mounted below the entry.
    enum measure_scope : uint8 {
        kAllVolumes, ///< enters them, but for the kernel's own
        kOneVolume,  ///< stays on the volume where it starts
    };
    /// An extension of the platform: adds up the bytes of all regular files in and below the entry,
    /// in one walk with several threads; links count 0 and are not followed. `bytes` gets what was
    /// found also on failure. Errors: of what could not be read first; B_CANCELED.
    status_t MeasureTree(int64* bytes, measure_scope scope = kAllVolumes,
                         BTreeHooks* hooks = nullptr) const;

    /// The same place: folder and name are equal. Two unset entries are equal.
    bool operator==(const BEntry& other) const;
    bool operator!=(const BEntry& other) const { return !(*this == other); }

private:
    friend class BDirectory;
    friend class BFile;
    friend class BNode;
    friend class BSymLink;
    friend class BPath;
    friend class BTrashClaim;

    // BStatable
    status_t SetStat(const struct stat& st, uint32 what) override;

    void KnowFolder(const struct stat& st) const override;

    status_t Set(const kits::FolderHold& base, const char* path, bool traverse);
    status_t MoveInto(const kits::FolderHold& base, const char* path, bool clobber);
    status_t Fail(status_t status);
    void ForgetOrigin() const;
    status_t RemoveAll(BTreeHooks* hooks);
    status_t MeasureAll(int64* bytes, measure_scope scope, BTreeHooks* hooks) const;

    kits::FolderHold fFolder;
    std::string fName;
    status_t fStatus = B_NO_INIT;
};

/// Makes the ref of the entry at `path`; the entry itself need not exist, its folder must.
status_t get_ref_for_path(const char* path, entry_ref* ref);
/// Orders refs by device, folder and name.
bool operator<(const entry_ref& a, const entry_ref& b);

// In the header, so that messages carry refs without the storage kit.
