#pragma once

#include "panes/DirListItem.h"
#include "panes/LinkTargets.h"

#include <Directory.h>
#include <EntryBatch.h>
#include <Messenger.h>

#include <memory>
#include <string>
#include <vector>

namespace norvane {

/// Reads a folder into rows. Needs no window, so it may run on any thread.
///
/// Use: Open(), ReadNames(), ReadMore() until it says false, TakeRows().
class FolderReader
{
public:
    /// Errors: those of opening a folder.
    [[nodiscard]] status_t Open(const std::string& path);
    /// Errors: those of reading a folder.
    [[nodiscard]] status_t ReadNames();
    /// Has the folder watched for `target` first, so that nothing is missed in between.
    [[nodiscard]] status_t WatchAndReadNames(uint32 watchFlags, const BMessenger& target,
                                             status_t* watchStatus);
    /// How many entries the folder has.
    int32 CountEntries() const { return fBatch.CountItems(); }
    /// Reads some hundred more entries; false when all are there.
    bool ReadMore() { return fBatch.StatNext(); }
    int32 CountRead() const { return fBatch.CountStatted(); }
    /// Whether a row ".." opens the list.
    bool HasParent() const { return fHasParent; }
    node_ref Node() const { return fNode; }
    /// Whether it is some volume's Trash.
    bool IsTrash() const;
    /// A ref of some name in the folder, which keeps the folder known.
    entry_ref Ref() const;

    /// The rows in the listing's order: folders with ".." at the top, then everything else. Left
    /// out are links of which it is not known within a second what they lead to: `links` tells.
    void TakeRows(const DatePattern& dates, LinkTargets& links,
                  std::vector<std::unique_ptr<DirListItem>>& folders,
                  std::vector<std::unique_ptr<DirListItem>>& files);

    /// Whether TakeRows() left links out.
    bool HasLeftLinksOut() const { return fHasLeftLinksOut; }

private:
    std::vector<int64> FindTargets(LinkTargets& links) const;

    BDirectory fDirectory;
    BEntryBatch fBatch;
    node_ref fNode;
    bool fHasParent = false;
    bool fHasLeftLinksOut = false;
};

} // namespace norvane
