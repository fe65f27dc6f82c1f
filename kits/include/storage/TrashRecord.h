#pragma once

#include <Entry.h>

#include <string>

class BDirectory;
class BPath;

// The Trash beyond find_directory() and BEntry. All in this header is an extension of the platform.
//
// What BEntry does by itself: an entry that MoveTo() or Rename() brings into the `files` folder of
// a Trash gets its record of origin first (B_FILE_EXISTS when the record or the entry is there
// already: try the next name); one that it takes out of that folder, or Remove() removes there,
// loses it; one that is renamed there keeps it. A name that leaves no room for the record's ending
// is moved in under a shorter free one: Name() tells it.
//
// To copy something into the Trash instead (the source lies on another volume):
//
//     BTrashClaim claim;
//     claim.SetTo(&trash, &source, name); // B_FILE_EXISTS: try the next name
//     // Copy the source to claim.Name() in `trash`, creating, never replacing.
//     claim.Keep();                       // when it is there; else Drop(), or let the claim end
//
// A partial copy is removed through BEntry, which takes the record along.

/// A name in a Trash, taken for a copy that is about to be made there: its record of origin is
/// written.
///
/// The record goes again when the claim ends without Keep(). Thread: one at a time.
class BTrashClaim
{
public:
    /// Claims nothing; its end drops what was claimed and not kept.
    BTrashClaim() = default;
    ~BTrashClaim() { Drop(); }
    BTrashClaim(const BTrashClaim&) = delete;
    BTrashClaim& operator=(const BTrashClaim&) = delete;

    /// Takes `name` in `trash`, the `files` folder of a Trash, and writes down where `original`
    /// lies and that it was deleted now. Drops what was claimed before. A name too long for its
    /// record is shortened to a free one. Errors: B_FILE_EXISTS when an entry or a record of that
    /// name is there; B_BAD_VALUE when `trash` is no Trash; B_DEVICE_FULL ... Nothing is left
    /// behind then.
    status_t SetTo(const BDirectory* trash, const BEntry* original, const char* name);
    /// The name to copy to, null when nothing is claimed. Ownership: lent until the claim changes.
    const char* Name() const { return fFolder ? fName.c_str() : nullptr; }
    /// The copy is there: the record stays.
    void Keep();
    /// Removes the record, unless an entry of that name lies in the Trash: it stays with that.
    void Drop();

private:
    kits::FolderHold fFolder; // the Trash's `files`; null when nothing is claimed
    std::string fName;
};

/// Whether `folder` is the `files` folder of a Trash of this user, that of the home folder or of
/// any volume.
bool is_trash_folder(const BDirectory* folder);
/// The same for those who must know: `isTrash` is the answer. Errors: B_BAD_VALUE; those of looking
/// (no descriptor left, a bad disk), which leave it open.
status_t is_trash_folder(const BDirectory* folder, bool* isTrash);

/// Whether the entry lies in the `files` folder of a Trash of this user, directly or at any depth.
bool is_in_trash(const BEntry* entry);

/// Where an entry of a Trash's `files` folder was before, as its record says: an absolute path.
/// Nothing says that anything of it is there still. Errors: B_BAD_VALUE for an entry that lies in
/// no such folder itself; B_ENTRY_NOT_FOUND without a record; B_MISMATCHED_VALUES for one that does
/// not name a place as records do (in a volume's own Trash: one on that volume).
status_t find_trash_origin(const BEntry* entry, BPath* path);

/// Finds the `files` folder of the Trash into which `entry` can be moved without leaving its
/// volume: the home Trash where that lies on the same one, else the volume's own. Errors:
/// B_ENTRY_NOT_FOUND when there is none and `createIt` is false; B_NOT_ALLOWED when what lies in
/// its place is not safe (a link, another user's); those of creation; B_UNSUPPORTED for the
/// kernel's own file systems.
status_t find_trash_for(const BEntry* entry, BPath* path, bool createIt);
