#pragma once

#include "panes/DirListItem.h"
#include "panes/FolderTotals.h"
#include "panes/PaneMode.h"
#include "panes/RowSorting.h"

#include <Entry.h>
#include <Message.h>
#include <Messenger.h>
#include <Node.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace norvane {

class PaneRows;
class RowSource;

/// Rows on their way into a list: folders, with ".." at the top, before all others.
struct ListedRows
{
    std::vector<std::unique_ptr<DirListItem>> folders;
    std::vector<std::unique_ptr<DirListItem>> files;
    RowSorting sorting; // the order that both are in
};

/// A local folder whose changes a list follows while it shows the folder's rows.
struct WatchedFolder
{
    node_ref node;
    entry_ref inside;         // some name in it, which keeps the folder known
    BMessenger watcher;       // whom the watch tells; nobody when it is not valid
    status_t status = B_OK;   // of beginning the watch
    bool awaitsLinks = false; // some have no row yet: it is not known what they lead to
};

/// What a source needs to know to read its rows.
struct OpenOrder
{
    std::string dateFormat; // of the Date column
    BMessenger watcher;     // is to be told of changes; nobody when it is not valid
    /// Is sent kListingNews when Proceed() is to be called. Not valid: nobody, and opening waits.
    BMessenger list = {};
    RowSorting sorting = {}; // the order that the rows are wanted in
    bool isAwaited = true;   // for a moment, so that most folders come without a flicker
};

/// Something that is done to an entry, on any thread, which may wait for a disk: it keeps what it
/// needs.
using EntryWork = std::function<status_t()>;
/// The same for a folder that is made under a name. Errors: B_FILE_EXISTS for one that is taken.
using FolderWork = std::function<status_t(const std::string& name)>;

/// A file operation, to be opened in a window of its own.
struct OperationRequest
{
    std::string title;
    std::string path; // the folder it works in
    std::unique_ptr<BMessage> message;
};

/// What entries that reached a list are for.
struct DropMeaning
{
    enum class Act : uint8 {
        kPassOn, // nothing that a pane knows
        kIgnore,
        kRefuse,  // with an alert of `title` and `text`
        kOperate, // `operation` takes them
    };

    Act act = Act::kIgnore;
    const char* title = "";
    const char* text = "";
    OperationRequest operation = {};
};

/// Whoever opens sources: told of how it goes, on the window's thread.
class RowTaker
{
public:
    virtual ~RowTaker() = default;

    /// There are so many entries to read; steps of progress.
    virtual void Counted(int32 entries) = 0;
    /// So many more of them are read.
    virtual void Read(int32 entries) = 0;
    /// Takes the rows over: the source is the one shown from here on.
    virtual void Opened(RowSource& source, ListedRows rows) = 0;
    /// A source whose Open() said B_OK could not be read after all. It may be deleted in here.
    virtual void NotOpened(RowSource& source, status_t status) = 0;
    /// The source shown did something that nobody watches: its rows are to be read again. It may
    /// be deleted in here.
    virtual void ReadAgain(RowSource& source) = 0;
};

/// A place whose contents a list shows: a local folder, the hits of a query, a server's folder. All
/// in which these differ is answered here.
///
/// A source is one place and never becomes another: going somewhere makes a new one, and the old
/// one stays, with its rows in the list, until the new one's rows are there. So what several places
/// share (a connection) is an object of its own that they hold together.
///
/// Thread: its window's. A source may read on a thread of its own; it tells its RowTaker on the
/// window's. Ownership: the list owns it, and lets go of it by deleting it, also while it is being
/// opened: from then on it tells nobody anything, and no destructor waits for a disk or a server.
class RowSource
{
public:
    virtual ~RowSource() = default;

    // Rows
    /// Starts reading. Rows are handed over now or later, by RowTaker::Opened(). Ownership: borrows
    /// `taker` for its whole life. Called once.
    /// Errors: those of the place; `taker` hears of nothing then.
    [[nodiscard]] virtual status_t Open(const OpenOrder& order, RowTaker& taker) = 0;
    /// Goes on with what Open() began: there is news. It may be deleted in here.
    virtual void Proceed() {}
    /// There is news of what it began, while it is shown. It may be deleted in here.
    virtual void NewsWhileShown() {}
    /// Something changed in a folder that it has watched: brings its rows up to date. What came
    /// while it was being opened is told once the rows are there.
    virtual void NodeChanged(const BMessage&, PaneRows&) {}
    /// A person answered what it asked.
    virtual void TakeReply(const BMessage&) {}
    /// Breaks off what it is doing; false when that is nothing, or cannot be broken off.
    virtual bool CancelWork() { return false; }
    /// What a person is told when it could not be opened; empty: nothing.
    virtual std::string Complaint(status_t status) const = 0;
    /// The local folder to follow while its rows are shown; none before it was opened, and none of
    /// places that nobody watches. The watch began with Open(); who got the rows ends it.
    virtual std::optional<WatchedFolder> Folder() const { return std::nullopt; }

    // Other places, not opened yet; null where there is none
    /// The same place, to be read again.
    virtual std::unique_ptr<RowSource> Again() const = 0;
    virtual std::unique_ptr<RowSource> Up() const = 0;
    /// What one of the rows leads into.
    virtual std::unique_ptr<RowSource> Into(const DirListItem& row) const = 0;
    /// The local entry that a row which leads nowhere is opened as; null where there is none. Lent
    /// until the row is updated or deleted.
    virtual const entry_ref* EntryToOpen(const DirListItem& row) const;
    /// A local folder that a person named. Null also when the source only takes note of it.
    virtual std::unique_ptr<RowSource> GoTo(const std::string& folder) = 0;
    /// Asks the person, where something would be lost, before the list goes to a place that has
    /// nothing to do with this one.
    virtual bool MayLeave() { return true; }

    // Changes of entries
    /// What makes a folder here, or begins to: then ReadAgain() follows. Null where that cannot be.
    virtual FolderWork MakingFolder() const = 0;
    /// What renames a row's entry, or begins to. The row stays as it is.
    virtual EntryWork Renaming(const DirListItem& row, const std::string& newName) const = 0;
    /// Whether entries that are deleted here are gone; else they go into the Trash.
    virtual bool DeletesForGood() const = 0;
    /// Deletes the rows' entries, after the person agreed to what `isForGood` says, or says which
    /// operation does it.
    virtual std::optional<OperationRequest> Delete(const std::vector<DirListItem*>& rows,
                                                   bool isForGood) = 0;

    // Messages
    /// The message that carries the rows' entries elsewhere; there is at least one row, and never
    /// "..".
    virtual std::unique_ptr<BMessage> MessageFor(const std::vector<DirListItem*>& rows) const = 0;
    /// What entries mean that were dropped on a row, or on none of them (null).
    virtual DropMeaning MeaningOf(const BMessage& entries, const DirListItem* onto) const = 0;

    // Texts
    virtual PaneMode Mode() const = 0;
    virtual std::string HeaderText() const = 0;
    virtual std::string FooterText(const FolderTotals& selected, const FolderTotals& all) const;
    /// What the list says in place of rows when there are none.
    virtual std::string EmptyText() const { return "The folder is empty."; }
    /// The whole name of a row that leads somewhere.
    virtual std::string PathOf(const DirListItem& row) const = 0;
    /// Under which name the place above lists this one; empty when it does not.
    virtual std::string NameAbove() const { return {}; }
    /// The folder shown, or the one to come back to from a place that is no local folder.
    virtual const std::string& LocalFolder() const = 0;
};

} // namespace norvane
