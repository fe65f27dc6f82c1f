#pragma once

#include "panes/PlaceHistory.h"
#include "panes/RowSource.h"

#include <memory>
#include <optional>
#include <string>

namespace norvane {

class LiveUpdates;
class PaneNotifier;
class PaneRows;

/// How a list came to show other rows.
struct Arrival
{
    bool isElsewhere = false; // another place, not the same one read again
    bool isFirst = false;     // at the start
    std::string nameLeft;     // after going up: the row of the place left; empty when it has none
    std::optional<RowsView> view = {}; // after going back or forward: how it was looked at then
};

/// What a listing needs of its list.
class ListingOwner
{
public:
    virtual ~ListingOwner() = default;

    virtual OpenOrder OrderForOpening() const = 0;
    /// How the rows shown are looked at now.
    virtual RowsView View() const = 0;
    /// The new rows are in the list.
    virtual void Arrived(const Arrival& arrival) = 0;
    /// The folder shown was looked at again: it is followed now, or still cannot be, or is gone; or
    /// it could not be read where it was thought to be, which the status says.
    virtual void LookedAgain(status_t status) = 0;
    /// A link that was gone into leads to no folder: to nothing, or to something else by now.
    virtual void NoFolder(const entry_ref& link) = 0;
};

/// Which place a list shows, and the way from one to another: opens sources and puts their rows
/// into the list.
///
/// What is shown stays as it is until another source's rows are there; a source that is asked for
/// meanwhile takes the place of the one that is being opened. Thread: the list's window's.
class PaneListing : private RowTaker
{
public:
    PaneListing(const std::string& folder, PaneRows& rows, LiveUpdates& updates,
                PaneNotifier& notifier, ListingOwner& owner);
    ~PaneListing() override;
    PaneListing(const PaneListing&) = delete;
    PaneListing& operator=(const PaneListing&) = delete;

    /// Shows the first folder, or the home folder when that cannot be read. Says nothing then: the
    /// window is not even shown yet.
    void Start();
    /// Shows a place. False when it cannot be opened, which the person is told.
    bool Show(std::unique_ptr<RowSource> source);
    /// The same, but for what is shown may have a word to say first.
    void Leave(const std::string& folder);
    void ReadAgain();
    /// The same for rows that show already what they will show: nothing waits for it.
    void ReadAgainBehind();
    /// Looks for what changed in the folder shown, which may have moved to this path, unless
    /// something is being opened already. Rows stay where they are; nothing is said.
    void LookAgain(const std::string& path);
    /// Says that nobody tells of changes, unless that was said since it last began; false when
    /// there is nothing to say.
    bool TellOfMissingWatch();
    /// It was said of another list.
    void SayNothingOfMissingWatch();
    /// Goes to a folder that a person named: "~", relative paths and addresses are understood.
    void GoTo(const char* typed);
    void Up();
    void Down();
    /// Goes to the folder that was shown before this one, or, forward again, after it. Folders that
    /// are gone are passed over.
    void Go(PlaceHistory::Step step);
    void Enter(const DirListItem& row);
    /// Lets go of the place that is being opened.
    void Stop();
    /// There is news of the place that is being opened.
    void Proceed();
    /// Something changed in a folder that a source has watched for its hits.
    void NodeChanged(const BMessage& notice);
    /// Breaks off what the place shown, or the one being opened, is doing; false when that is
    /// nothing.
    bool CancelWork();

    /// What is shown. Lends; valid until other rows are there.
    RowSource& Source() const { return *fSource; }
    /// Whether its rows were ever there; before that none are.
    bool HasArrived() const { return fHasArrived; }
    /// Whether another place, or the same anew, is being opened.
    bool IsOpening() const { return fOpening != nullptr; }
    /// The first folder and why it could not be read; empty when it could.
    const std::string& UnreadableFolder() const { return fUnreadable; }
    const std::string& UnreadableReason() const { return fUnreadableReason; }

private:
    enum class Way : uint8 {
        kStraight,
        kAgain,
        kUp,
        kInto,
        kNamed,
        kFirst,
        kLook,
        kBack,
        kForward
    };

    // RowTaker
    void Counted(int32 entries) override;
    void Read(int32 entries) override;
    void Opened(RowSource& source, ListedRows rows) override;
    void NotOpened(RowSource& source, status_t status) override;
    void ReadAgain(RowSource& source) override;

    bool Open(std::unique_ptr<RowSource> source, Way way, bool isAwaited = true);
    void Failed(status_t status);
    void NoteWay(Way way, const std::string& folderLeft);
    std::optional<RowsView> NotePlace();
    void LookFailed(status_t status);

    PaneRows& fRows;
    LiveUpdates& fUpdates;
    PaneNotifier& fNotifier;
    ListingOwner& fOwner;

    std::unique_ptr<RowSource> fSource;  // what is shown; never null
    std::unique_ptr<RowSource> fOpening; // what will be; null when nothing is being opened
    Way fWay = Way::kStraight;           // to fOpening
    std::vector<BMessage> fNotices;      // for fOpening, of folders with its hits
    bool fHasToldOfWatch = false;        // that there is none
    entry_ref fLink;                     // that leads there by kInto; without a name: no link
    bool fHasArrived = false;            // at fSource
    bool fIsOpeningNow = false;          // it may hand its rows over at once
    PlaceHistory fHistory;
    std::string fDownPath;
    bool fMayGoDown = false;
    std::string fUnreadable;
    std::string fUnreadableReason;
};

} // namespace norvane
