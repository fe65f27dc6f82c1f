#pragma once

#include <SupportDefs.h>

#include <string>
#include <sys/stat.h>
#include <sys/types.h>

class BNode;

/// Who may use a node, as it was when it was read: its mode, its group and its access list.
///
/// An extension of the platform. Where a node has an access list, the group's bits of its mode show
/// the list's mask; the rights of the owning group stand in the list itself. Unset, or after a
/// failure, it gives rights to nobody but the owner. Thread: as a plain value.
class BNodeAccess
{
public:
    /// Holds nothing, or reads what SetTo() does; InitCheck() tells what became of it.
    BNodeAccess() = default;
    explicit BNodeAccess(const BNode& node);

    /// Reads mode, group and list of `node`. Errors: B_NO_INIT for an unset node, those of reading.
    status_t SetTo(const BNode& node);
    /// The same for who has looked at the node before, and wants to know how it is now: `record` is
    /// what GetStat() said then, and takes what it says now. Costs less when nothing has changed.
    status_t SetTo(const BNode& node, struct stat* record);
    /// Errors: B_NO_INIT, or what the last SetTo() said.
    status_t InitCheck() const { return fStatus; }

    /// The bits 07777 of the mode.
    mode_t Mode() const { return fMode; }
    /// The owning group.
    gid_t Group() const { return fGroup; }
    /// Whether there is a list that says more than the mode.
    bool HasList() const { return !fList.empty(); }

    /// The most (0777) that a copy without a list may be opened to when its group is `group`:
    /// nobody who could not do a thing with this node can do it with the copy, its owner excepted.
    ///
    /// The group has the rights of this node's group where it is the same. Members of another group
    /// count as others; these have what both this node's group and others have, since its members
    /// are among them. Who is named in the list is among them too.
    mode_t MostFor(gid_t group) const;

    /// Gives `node` the list, and the bits 0777 that belong to it. Where its group is another one,
    /// the rights of group and others in it are cut as MostFor() says; who is named keeps his.
    /// Errors: B_BAD_VALUE when there is none; B_UNSUPPORTED where the file system cannot keep it;
    /// others of writing. Nothing is changed then.
    status_t GiveList(BNode* node, gid_t group) const;
    /// Takes the access list away that `node` has, one it got from its folder included; the group's
    /// bits of its mode are its group's from then on. B_OK when there is none, too.
    static status_t RemoveList(BNode* node);
    /// Gives the folder `to` the list by which `from` gives new entries theirs, cut as GiveList()
    /// does; B_OK when it has none. Errors: as GiveList().
    static status_t CopyDefaultList(const BNode& from, BNode* to);
    /// Whether the file system of the new node `made` can keep the lists of `from`; B_OK when it
    /// has none. `made` has none of its own afterwards, and is open to nobody but its owner.
    /// Errors: as GiveList().
    static status_t CheckLists(const BNode& from, BNode* made);

private:
    status_t Read(const BNode& node, const struct stat* before, struct stat* now);

    status_t fStatus = B_NO_INIT;
    mode_t fMode = 0;
    gid_t fGroup = 0;
    std::string fList; // as the system writes it
};

/// The bits that new nodes do not get, read without changing them: they belong to all threads. An
/// extension of the platform. All of 077 when the system does not tell.
mode_t current_umask();
