#include "MessageCodes.h"
#include "panes/DirPane.h"
#include "panes/DirView.h"
#include "panes/FolderSource.h"
#include "panes/OpenEntry.h"
#include "panes/QuerySource.h"
#include "panes/ScrollIntoSight.h"
#include "settings/MsgBox.h"
#include "viewer/ViewerWindow.h"

#include <Window.h>

#include <algorithm>
#include <utility>

// Which place the list shows.

namespace norvane {

int DirView::Populate(const char* path)
{
    return Populate(std::make_unique<FolderSource>(path)) ? 1 : -1;
}

int DirView::Populate(BMessage* queryResults)
{
    return Populate(std::make_unique<QuerySource>(*queryResults, Path())) ? 1 : -1;
}

bool DirView::Populate(std::unique_ptr<RowSource> source)
{
    return fListing.Show(std::move(source));
}

void DirView::Clear()
{
    fListing.Stop();
    fUpdates.Stop();
    fRows.Clear();
}

void DirView::Refresh()
{
    fListing.ReadAgain();
}

void DirView::SetPath(const char* path)
{
    fListing.Leave(path != nullptr ? path : "/");
}

void DirView::GoToDir(const char* path)
{
    fListing.GoTo(path);
}

void DirView::NavigateUp()
{
    fListing.Up();
}

void DirView::NavigateDown()
{
    fListing.Down();
}

status_t DirView::Invoke(BMessage*)
{
    const DirListItem* row = RowAt(CurrentSelection());
    if (row == nullptr) {
        return B_ERROR;
    }
    if (const entry_ref* entry = fListing.Source().EntryToOpen(*row)) {
        OpenEntry(*entry, BMessenger(nullptr, Window()));
        return B_OK;
    }
    fListing.Enter(*row);
    return B_OK;
}

void DirView::NoFolder(const entry_ref& link)
{
    OpenEntry(link, BMessenger(nullptr, Window()));
}

/// What it is doing is seen before anything is asked or told.
void DirView::NewsOfSource()
{
    if (auto* pane = dynamic_cast<DirPane*>(fPane)) {
        pane->SetPath(nullptr);
    }
    fListing.Source().NewsWhileShown();
}

void DirView::OpenLister()
{
    if (RefusesToView()) {
        return;
    }
    const DirListItem* row = RowAt(CurrentSelection());
    if (row != nullptr && Mode() == kLocalMode) {
        const std::string path = Path() + "/" + row->GetEntryName();
        (new ViewerWindow(BRect(50, 50, 300, 500), path.c_str()))->Show();
    }
}

bool DirView::RefusesToView()
{
    if (Mode() == kFtpMode) {
        MsgBox("Foo", "Sorry can't view a file on an FTP server.", "OK", B_INFO_ALERT);
    }
    return Mode() == kFtpMode;
}

void DirView::OpenEditor()
{
    if (RefusesToView()) {
        return;
    }
    std::vector<entry_ref> entries;
    for (const DirListItem* row : SelectedRows()) {
        if (const entry_ref* entry = fListing.Source().EntryToOpen(*row)) {
            entries.push_back(*entry);
        }
    }
    OpenInEditor(std::move(entries), BMessenger(nullptr, Window()));
}

OpenOrder DirView::OrderForOpening() const
{
    if (Window() == nullptr) {
        return {fRows.DateFormat(), BMessenger(), BMessenger(), fRows.Sorting()};
    }
    // Without a pane nobody is there to be told of changes.
    return {fRows.DateFormat(), fPane != nullptr ? BMessenger(fPane) : BMessenger(),
            BMessenger(this), fRows.Sorting()};
}

void DirView::InfoArrived()
{
    fNotifier.InfoArrived();
    RefreshNote();
}

/// Why there are no rows.
std::string DirView::NoteText() const
{
    const DirListItem* first = RowAt(0);
    if (CountItems() > 1 || (first != nullptr && !first->IsParent()) || Window() == nullptr) {
        return {};
    }
    if (!fListing.HasArrived()) {
        return fListing.IsOpening() ? "Reading the folder..." : "The folder cannot be read.";
    }
    if (fUpdates.IsGone()) {
        return "This folder was removed.";
    }
    if (fRows.IsFiltered() && !fRows.FilterText().empty()) {
        return "No name here holds \"" + fRows.FilterText() + "\".";
    }
    return fRows.HasLeftOut() ? "All names here begin with a dot, and are hidden."
                              : fListing.Source().EmptyText();
}

void DirView::Arrived(const Arrival& arrival)
{
    RefreshNote();
    fWhereabouts.LookOut();
    if (arrival.isElsewhere) {
        ShowFilterField();
        ScrollTo(BPoint(0, 0));
    }
    if (arrival.view.has_value()) {
        LookAs(*arrival.view);
    }
    if (!arrival.nameLeft.empty()) {
        ScrollToRow(fRows.Find(arrival.nameLeft.c_str()));
    }
    EditNamed(std::exchange(fNameToEdit, {}));
    // At the start the window is not even shown yet; else the strips show the folder by then.
    if (!arrival.isFirst && fUpdates.IsFollowing() && !fUpdates.IsWatching() && fPane != nullptr) {
        BMessenger(this).SendMessage(kTellOfMissingWatch);
    }
}

/// The fourth and the fifth of a mouse; false for all others.
bool DirView::GoBySideButton(uint32 buttons)
{
    constexpr uint32 kBackButton = 0x08;
    constexpr uint32 kForwardButton = 0x10;
    if ((buttons & (kBackButton | kForwardButton)) == 0) {
        return false;
    }
    MakeFocus();
    (buttons & kBackButton) != 0 ? GoBack() : GoForward();
    return true;
}

RowsView DirView::View() const
{
    const DirListItem* row = RowAt(CurrentSelection());
    return {row != nullptr ? row->GetEntryName() : "", Bounds().top};
}

/// As far as the rows are still there.
void DirView::LookAs(const RowsView& view)
{
    const float last = ItemFrame(CountItems() - 1).bottom - Bounds().Height();
    ScrollTo(BPoint(Bounds().left, std::max(0.0f, std::min(view.top, last))));
    const int32 row = fRows.Find(view.selected.c_str());
    if (row >= 0) {
        Select(row);
        ScrollToRow(row);
    }
}

void DirView::ScrollToRow(int32 index)
{
    if (index >= 0) {
        BRect row = ItemFrame(index);
        row.left = row.right = Bounds().left; // up and down only
        ScrollTo(ScrolledToShow(Bounds(), row));
    }
}

} // namespace norvane
