#pragma once

#include <StorageDefs.h>

struct node_ref;

/// What can be asked of and set in the stat record of an entry or a node.
///
/// A link answers for itself, never for what it points to.
class BStatable
{
public:
    virtual ~BStatable();

    /// Reads the whole record. Errors: B_NO_INIT, B_ENTRY_NOT_FOUND ...; `st` is unchanged then.
    virtual status_t GetStat(struct stat* st) const = 0;

    /// Tells the kind; false also when the record cannot be read.
    bool IsFile() const;
    bool IsDirectory() const;
    bool IsSymLink() const;

    /// Device and inode; a folder asked this way becomes known, so that it can be watched and
    /// referred to. Errors: B_BAD_VALUE for null; those of GetStat().
    status_t GetNodeRef(node_ref* ref) const;

    /// Tells and sets the owner and the group, by number. Errors: B_NOT_ALLOWED where the person
    /// may not; those of GetStat().
    status_t GetOwner(uid_t* owner) const;
    status_t SetOwner(uid_t owner);
    status_t GetGroup(gid_t* group) const;
    status_t SetGroup(gid_t group);
    /// Tells the twelve permission bits.
    status_t GetPermissions(mode_t* permissions) const;
    /// Sets the twelve permission bits. Errors: B_UNSUPPORTED for a link, which has none of its
    /// own; B_NOT_ALLOWED.
    status_t SetPermissions(mode_t permissions);
    /// Tells the size in bytes.
    status_t GetSize(off_t* size) const;
    /// Tells and sets the time of the last change, in seconds since 1970; setting keeps the part
    /// below the second at zero.
    status_t GetModificationTime(time_t* modified) const;
    status_t SetModificationTime(time_t modified);
    /// Tells the earlier of the last changes of contents and record: older times no file system
    /// tells for certain.
    status_t GetCreationTime(time_t* created) const;
    /// Tells and sets the time of the last reading, in the same way.
    status_t GetAccessTime(time_t* accessed) const;
    status_t SetAccessTime(time_t accessed);
    /// Takes the access and modification times of `like` over, to the nanosecond. An extension of
    /// the platform, for moves.
    status_t SetTimesLike(const struct stat& like);

protected:
    /// The parts of a record that SetStat() can set.
    enum : uint32 {
        kSetMode = 1,
        kSetOwner = 2,
        kSetGroup = 4,
        kSetModified = 8,
        kSetAccessed = 16,
    };
    /// Applies the parts of `st` that `what` names.
    virtual status_t SetStat(const struct stat& st, uint32 what) = 0;
    /// Makes the folder of `st` known when the object has a way to it.
    virtual void KnowFolder(const struct stat& st) const;
};
