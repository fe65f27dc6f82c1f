#include "fileops/engine/CopyAccess.h"

#include <Node.h>

namespace norvane {

namespace {

constexpr mode_t kBits = S_IRWXU | S_IRWXG | S_IRWXO;
constexpr mode_t kFileBits = 0666;

/// Takes the list away that came from the folder, then sets the mode. Were it to stay, the group's
/// bits would open the node to all whom it names.
status_t SetBitsAlone(BNode* made, mode_t mode)
{
    const status_t removed = BNodeAccess::RemoveList(made);
    if (removed != B_OK) {
        mode &= ~mode_t(S_IRWXG);
    }
    const status_t status = made->SetPermissions(mode);
    return removed != B_OK ? removed : status;
}

/// The group that `made` has after it was to get `group`.
gid_t TakeGroup(BNode* made, const struct stat& before, gid_t group)
{
    return before.st_gid == group || made->SetGroup(group) == B_OK ? group : before.st_gid;
}

/// The mode with bits that `access` allows where `made` is of the group `group`, after its list, if
/// it has one, was given along.
struct Given
{
    mode_t bits = 0;
    status_t listStatus = B_OK;
    bool hasList = false;
};

Given GiveBits(BNode* made, const BNodeAccess& access, gid_t group)
{
    if (access.HasList()) {
        const status_t status = access.GiveList(made, group);
        struct stat now;
        if (status == B_OK && made->GetStat(&now) == B_OK) {
            return {now.st_mode & kBits, B_OK, true};
        }
        return {access.MostFor(group), status, false};
    }
    return {access.MostFor(group), B_OK, false};
}

/// Opens `made`, which is of the group `group`, to the people of `source` as far as `mode` says,
/// and sets the bits beyond these.
status_t GiveAccess(BNode* made, const BNode& source, mode_t mode, gid_t group)
{
    const BNodeAccess access(source);
    const Given given = GiveBits(made, access, group);
    const mode_t special = mode & ~kBits;
    if (!given.hasList) {
        SetBitsAlone(made, (given.bits & mode) | special);
    } else if (special != 0) {
        made->SetPermissions(given.bits | special);
    }
    return access.InitCheck() != B_OK ? access.InitCheck() : given.listStatus;
}

} // namespace

CopyAccess::CopyAccess() : fUmask(current_umask()) {}

status_t CopyAccess::FinishNew(BNode* made, const BNode& source, const struct stat& record) const
{
    struct stat now;
    const status_t status = made->GetStat(&now);
    // Who may use it is looked at only now, and the record from before counts as well: then no
    // change meanwhile, of the mode or the list, can open the copy to more.
    return status == B_OK ? FinishNew(made, now, BNodeAccess(source), record) : status;
}

status_t CopyAccess::FinishNew(BNode* made, const struct stat& now, const BNodeAccess& access,
                               const struct stat& record) const
{
    const bool isFolder = S_ISDIR(now.st_mode);
    const mode_t wanted = record.st_mode & (isFolder ? kBits : kFileBits) & ~fUmask;
    mode_t most = wanted & (access.MostFor(now.st_gid) | S_IRWXU);
    // A folder that gives its group to what is made in it has made this one such a folder, too.
    most |= isFolder ? now.st_mode & S_ISGID : 0;
    const bool isSet = most == (now.st_mode & 07777);
    const status_t set = isSet ? BNodeAccess::RemoveList(made) : SetBitsAlone(made, most);
    const bool isForOthers = (wanted & ~mode_t(S_IRWXU)) != 0;
    return isForOthers && access.InitCheck() != B_OK ? access.InitCheck() : set;
}

status_t CopyAccess::FinishMoved(BNode* made, const BNode& source, const struct stat& record) const
{
    struct stat now;
    status_t status = made->GetStat(&now);
    if (status != B_OK) {
        return status;
    }
    mode_t special = record.st_mode & (S_ISUID | S_ISGID | S_ISVTX);
    if (now.st_uid != record.st_uid && made->SetOwner(record.st_uid) != B_OK) {
        special &= ~mode_t(S_ISUID);
    }
    const gid_t group = TakeGroup(made, now, record.st_gid);
    if (group != record.st_gid) {
        special &= ~mode_t(S_ISGID);
    }
    if (!S_ISLNK(record.st_mode)) {
        status = GiveAccess(made, source, record.st_mode & (kBits | special), group);
    }
    if (S_ISDIR(record.st_mode)) {
        const status_t copied = BNodeAccess::CopyDefaultList(source, made);
        status = status != B_OK ? status : copied;
    }
    made->SetTimesLike(record);
    return status;
}

status_t CopyAccess::FinishReplacement(BNode* made, const BNodeAccess& replaced) const
{
    struct stat now;
    status_t status = made->GetStat(&now);
    if (status == B_OK) {
        status = replaced.InitCheck();
    }
    if (status != B_OK) {
        return status; // it stays its owner's alone
    }
    const gid_t group = TakeGroup(made, now, replaced.Group());
    const Given given = GiveBits(made, replaced, group);
    return given.hasList ? status_t(B_OK) : SetBitsAlone(made, given.bits);
}

} // namespace norvane
