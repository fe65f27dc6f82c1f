#pragma once

#include <NodeAccess.h>
#include <SupportDefs.h>

#include <sys/stat.h>

class BNode;

namespace norvane {

/// Brings what an operation made to whom it is open to at the end.
///
/// Whatever is made is made for its owner alone (a file 0600, a folder 0700) and handed to one of
/// these functions when it is whole. At no moment is it open to more people than what it is a copy
/// of; a list that it got from the folder it lies in is taken away first. When something fails it
/// stays open to fewer.
///
/// Thread: any, several at once.
class CopyAccess
{
public:
    /// Reads the program's umask; make one for each operation.
    CopyAccess();
    explicit CopyAccess(mode_t umask) : fUmask(umask) {}

    /// A plain copy: the bits of `source`, which was `record` when it was opened, for its people as
    /// far as they can be told from `made`'s group, without the umask. Owner, list and set-id bits
    /// stay behind. Errors: those of reading and of changing the mode; B_NOT_ALLOWED also where the
    /// file system keeps no modes.
    status_t FinishNew(BNode* made, const BNode& source, const struct stat& record) const;

    /// The same for who has just looked at both: `now` is what `made` is, `access` that of the
    /// source.
    status_t FinishNew(BNode* made, const struct stat& now, const BNodeAccess& access,
                       const struct stat& record) const;

    /// A move: owner, group, mode and lists of `source`, and last the times of `record`. Writing to
    /// `made`, or into it, changes its times again.
    ///
    /// Owner and group only where that is allowed: the rights to act as one that could not be had
    /// are left out. Errors: B_UNSUPPORTED when the file system cannot keep a list that `source`
    /// has, others of reading and writing lists; all else is done then.
    status_t FinishMoved(BNode* made, const BNode& source, const struct stat& record) const;

    /// What takes the place of a file: mode, group and list of that one, which was `replaced`
    /// before. Where group or list cannot be kept, bits for the same people or fewer. Errors: as
    /// FinishNew(); those of reading `replaced`.
    status_t FinishReplacement(BNode* made, const BNodeAccess& replaced) const;

private:
    const mode_t fUmask;
};

} // namespace norvane
