#include "panes/PaneListing.h"

#include "MessageCodes.h"
#include "panes/FolderSource.h"
#include "panes/LiveUpdates.h"
#include "panes/PaneNotifier.h"
#include "panes/PaneRows.h"
#include "panes/PathText.h"
#include "settings/HomeFolder.h"
#include "settings/MsgBox.h"

#include <utility>

namespace norvane {

PaneListing::PaneListing(const std::string& folder, PaneRows& rows, LiveUpdates& updates,
                         PaneNotifier& notifier, ListingOwner& owner)
    : fRows(rows), fUpdates(updates), fNotifier(notifier), fOwner(owner),
      fSource(std::make_unique<FolderSource>(folder))
{
}

PaneListing::~PaneListing()
{
    Stop();
}

// Going

void PaneListing::Start()
{
    Open(fSource->Again(), Way::kFirst);
}

bool PaneListing::Show(std::unique_ptr<RowSource> source)
{
    return Open(std::move(source), Way::kStraight);
}

void PaneListing::Leave(const std::string& folder)
{
    if (fSource->MayLeave()) {
        Show(std::make_unique<FolderSource>(folder));
    }
}

void PaneListing::ReadAgain()
{
    Open(fSource->Again(), Way::kAgain);
}

void PaneListing::ReadAgainBehind()
{
    Open(fSource->Again(), Way::kAgain, false);
}

void PaneListing::LookAgain(const std::string& path)
{
    if (fOpening == nullptr && fUpdates.IsFollowing()) {
        Open(std::make_unique<FolderSource>(path), Way::kLook);
    }
}

void PaneListing::GoTo(const char* typed)
{
    const std::string folder = ResolveFolder(typed, fSource->LocalFolder(), HomeFolder());
    if (std::unique_ptr<RowSource> named = fSource->GoTo(folder)) {
        Open(std::move(named), Way::kNamed);
    } else if (fSource->LocalFolder() == folder) {
        fDownPath = folder;
        fNotifier.Post(MSG_PANE_INFO);
    }
}

void PaneListing::Up()
{
    Open(fSource->Up(), Way::kUp);
}

void PaneListing::Down()
{
    if (fMayGoDown) {
        Leave(fDownPath);
    }
}

void PaneListing::Go(PlaceHistory::Step step)
{
    const PlaceHistory::Place* place = fHistory.Ask(step);
    if (place == nullptr) {
        return;
    }
    if (!fSource->MayLeave()) {
        fHistory.Forget();
        return;
    }
    Open(std::make_unique<FolderSource>(place->folder),
         step == PlaceHistory::Step::kBack ? Way::kBack : Way::kForward);
}

void PaneListing::Enter(const DirListItem& row)
{
    if (row.IsParent()) {
        Up();
    } else {
        fLink = row.IsLink() ? *row.GetRef() : entry_ref();
        Open(fSource->Into(row), Way::kInto);
    }
}

// Opening

bool PaneListing::Open(std::unique_ptr<RowSource> source, Way way, bool isAwaited)
{
    if (source == nullptr) {
        return false;
    }
    Stop();
    if (way != Way::kBack && way != Way::kForward) {
        fHistory.Forget();
    }
    fOpening = std::move(source);
    fWay = way;
    fUpdates.KeepNotices(true); // about what is on its way
    if (way != Way::kLook) {
        fNotifier.StartProgress();
    }
    // A source that hands its rows over at once is fSource by the time Open() returns.
    fIsOpeningNow = true;
    OpenOrder order = fOwner.OrderForOpening();
    order.isAwaited = isAwaited;
    const status_t status = fOpening->Open(order, *this);
    if (status != B_OK) {
        Failed(status);
    }
    fIsOpeningNow = false;
    return status == B_OK;
}

void PaneListing::NodeChanged(const BMessage& notice)
{
    if (fOpening != nullptr && fOpening->Mode() == kQueryMode) {
        fNotices.push_back(notice);
    }
    fSource->NodeChanged(notice, fRows);
}

void PaneListing::Proceed()
{
    if (fOpening != nullptr) {
        fOpening->Proceed();
    }
}

bool PaneListing::CancelWork()
{
    if (fOpening != nullptr && fOpening->CancelWork()) {
        fHistory.Forget();
        Stop();
        return true;
    }
    return fSource->CancelWork();
}

void PaneListing::Stop()
{
    if (fOpening != nullptr) {
        fUpdates.Release(fOpening->Folder());
        fUpdates.KeepNotices(false);
        fOpening.reset();
        fNotices.clear();
        if (fWay != Way::kLook) {
            fNotifier.StopProgress();
        }
    }
}

void PaneListing::Counted(int32 entries)
{
    if (fWay != Way::kLook) {
        fNotifier.SetProgressMax(entries);
    }
}

void PaneListing::Read(int32 entries)
{
    if (fWay != Way::kLook) {
        fNotifier.Step(entries);
    }
}

void PaneListing::Opened(RowSource& source, ListedRows rows)
{
    if (&source != fOpening.get()) {
        return;
    }
    if (fWay != Way::kLook && fWay != Way::kAgain) {
        fHistory.NoteView(fOwner.View());
    }
    const std::unique_ptr<RowSource> left = std::exchange(fSource, std::move(fOpening));
    fHasArrived = true;
    if (fWay == Way::kLook) {
        fHistory.Rename(fSource->LocalFolder());
        fRows.Become(std::move(rows));
        fUpdates.Follow(fSource->Folder());
        fNotifier.Post(MSG_PANE_INFO);
        fHasToldOfWatch = fHasToldOfWatch && !fUpdates.IsWatching();
        fOwner.LookedAgain(B_OK);
        return;
    }
    fRows.Clear();
    if (fWay != Way::kAgain) {
        fRows.EndFilter(); // it was of the place left
    }
    fRows.Fill(std::move(rows));
    fNotifier.StopProgress();
    fNotifier.Post(MSG_PANE_INFO);
    fUpdates.Follow(fSource->Folder());
    for (const BMessage& notice : std::exchange(fNotices, {})) {
        fSource->NodeChanged(notice, fRows);
    }
    NoteWay(fWay, left->LocalFolder());
    fOwner.Arrived({fWay != Way::kAgain, fWay == Way::kFirst,
                    fWay == Way::kUp ? left->NameAbove() : std::string(), NotePlace()});
}

/// How the place shown now was looked at, when it was come back to.
std::optional<RowsView> PaneListing::NotePlace()
{
    if (fWay == Way::kBack || fWay == Way::kForward) {
        return fHistory.Arrive().view;
    }
    if (fSource->Mode() == kLocalMode) {
        fHistory.Show(fSource->LocalFolder());
    } else {
        fHistory.ShowOther();
    }
    return std::nullopt;
}

void PaneListing::NoteWay(Way way, const std::string& folderLeft)
{
    switch (way) {
    case Way::kUp:
        // Out of a query's hits it leads to the folder that was shown before them.
        if (folderLeft != fSource->LocalFolder()) {
            fDownPath = folderLeft;
        }
        fMayGoDown = true;
        break;
    case Way::kInto:
        fMayGoDown = false;
        break;
    case Way::kNamed:
        fDownPath = fSource->LocalFolder();
        break;
    default:
        break;
    }
}

void PaneListing::SayNothingOfMissingWatch()
{
    fHasToldOfWatch = fUpdates.IsFollowing() && !fUpdates.IsWatching();
}

bool PaneListing::TellOfMissingWatch()
{
    const std::optional<WatchedFolder> folder = fSource->Folder();
    if (!folder.has_value()) {
        return false;
    }
    const bool wasTold = std::exchange(fHasToldOfWatch, folder->status != B_OK);
    if (folder->status == B_OK || wasTold) {
        return false;
    }
    MsgBox("Err",
           folder->status == B_BAD_VALUE ? "A bad value was passed.  Node Monitoring disabled."
                                         : "Out of memory. Node Monitoring disabled.",
           "Oh Well", B_INFO_ALERT);
    return true;
}

void PaneListing::NotOpened(RowSource& source, status_t status)
{
    if (&source == fOpening.get()) {
        Failed(status);
    }
}

void PaneListing::Failed(status_t status)
{
    const std::unique_ptr<RowSource> failed = std::exchange(fOpening, nullptr);
    fUpdates.Release(failed->Folder());
    fUpdates.KeepNotices(false);
    if (fWay == Way::kLook) {
        LookFailed(status);
        return;
    }
    fNotifier.StopProgress();
    const bool isBack = fWay == Way::kBack;
    if (isBack || fWay == Way::kForward) {
        fHistory.Fail();
        if (status == B_ENTRY_NOT_FOUND) {
            Go(isBack ? PlaceHistory::Step::kBack : PlaceHistory::Step::kForward);
            return;
        }
    }
    if (fWay == Way::kInto && fLink.name != nullptr &&
        (status == B_ENTRY_NOT_FOUND || status == B_NOT_A_DIRECTORY)) {
        fOwner.NoFolder(entry_ref(fLink)); // a copy: it may begin to open another place
        return;
    }
    if (fWay != Way::kFirst) {
        const std::string complaint = failed->Complaint(status);
        if (!complaint.empty()) {
            MsgBox("Err", complaint.c_str(), "OK", B_INFO_ALERT);
        }
        return;
    }
    const std::string& home = HomeFolder();
    if (fUnreadable.empty()) {
        fUnreadable = failed->LocalFolder();
        fUnreadableReason = UnreadableText(fUnreadable, status);
        if (!fIsOpeningNow) {
            MsgBox("Err", fUnreadableReason.c_str(), "OK", B_INFO_ALERT); // nobody asks any more
        }
    }
    fNotifier.Post(MSG_PANE_INFO);
    if (failed->LocalFolder() != home) {
        fSource = std::make_unique<FolderSource>(home);
        Open(fSource->Again(), Way::kFirst);
    }
}

// What is shown stays. A folder that is not there any more is looked for where it was; of one that
// is watched nothing but its watch says so, for it may have moved once more.
void PaneListing::LookFailed(status_t status)
{
    if (status == B_ENTRY_NOT_FOUND && !fUpdates.IsWatching()) {
        fUpdates.NoteGone();
    }
    fOwner.LookedAgain(status);
}

void PaneListing::ReadAgain(RowSource& source)
{
    if (&source == fSource.get()) {
        ReadAgain();
    }
}

} // namespace norvane
