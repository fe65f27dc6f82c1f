#include <Statable.h>

#include <NodeRef.h>

namespace {

bool IsOfKind(const BStatable& statable, mode_t kind)
{
    struct stat st;
    return statable.GetStat(&st) == B_OK && (st.st_mode & S_IFMT) == kind;
}

/// Reads the record and gives one part of it away.
template<typename Part>
status_t Get(const BStatable& statable, Part* part, Part (*take)(const struct stat&))
{
    if (part == nullptr) {
        return B_BAD_VALUE;
    }
    struct stat st;
    const status_t status = statable.GetStat(&st);
    if (status == B_OK) {
        *part = take(st);
    }
    return status;
}

} // namespace

BStatable::~BStatable() = default;

void BStatable::KnowFolder(const struct stat&) const {}

bool BStatable::IsFile() const
{
    return IsOfKind(*this, S_IFREG);
}

bool BStatable::IsDirectory() const
{
    return IsOfKind(*this, S_IFDIR);
}

bool BStatable::IsSymLink() const
{
    return IsOfKind(*this, S_IFLNK);
}

status_t BStatable::GetNodeRef(node_ref* ref) const
{
    if (ref == nullptr) {
        return B_BAD_VALUE;
    }
    struct stat st;
    const status_t status = GetStat(&st);
    if (status != B_OK) {
        return status;
    }
    if (S_ISDIR(st.st_mode)) {
        KnowFolder(st);
    }
    *ref = node_ref(st.st_dev, st.st_ino);
    return B_OK;
}

status_t BStatable::GetOwner(uid_t* owner) const
{
    return Get<uid_t>(*this, owner, [](const struct stat& st) { return st.st_uid; });
}

status_t BStatable::SetOwner(uid_t owner)
{
    struct stat st = {};
    st.st_uid = owner;
    return SetStat(st, kSetOwner);
}

status_t BStatable::GetGroup(gid_t* group) const
{
    return Get<gid_t>(*this, group, [](const struct stat& st) { return st.st_gid; });
}

status_t BStatable::SetGroup(gid_t group)
{
    struct stat st = {};
    st.st_gid = group;
    return SetStat(st, kSetGroup);
}

status_t BStatable::GetPermissions(mode_t* permissions) const
{
    return Get<mode_t>(*this, permissions,
                       [](const struct stat& st) -> mode_t { return st.st_mode & 07777; });
}

status_t BStatable::SetPermissions(mode_t permissions)
{
    struct stat st = {};
    st.st_mode = permissions & 07777;
    return SetStat(st, kSetMode);
}

status_t BStatable::GetSize(off_t* size) const
{
    return Get<off_t>(*this, size, [](const struct stat& st) { return st.st_size; });
}

status_t BStatable::GetModificationTime(time_t* modified) const
{
    return Get<time_t>(*this, modified, [](const struct stat& st) { return st.st_mtime; });
}

status_t BStatable::SetModificationTime(time_t modified)
{
    struct stat st = {};
    st.st_mtime = modified;
    return SetStat(st, kSetModified);
}

status_t BStatable::GetCreationTime(time_t* created) const
{
    return Get<time_t>(*this, created, [](const struct stat& st) {
        return st.st_ctime < st.st_mtime ? st.st_ctime : st.st_mtime;
    });
}

status_t BStatable::GetAccessTime(time_t* accessed) const
{
    return Get<time_t>(*this, accessed, [](const struct stat& st) { return st.st_atime; });
}

status_t BStatable::SetAccessTime(time_t accessed)
{
    struct stat st = {};
    st.st_atime = accessed;
    return SetStat(st, kSetAccessed);
}

status_t BStatable::SetTimesLike(const struct stat& like)
{
    return SetStat(like, kSetModified | kSetAccessed);
}
