#pragma once

#include "clv/ColumnListView.h"
#include "panes/DragOver.h"
#include "panes/EmptyNote.h"
#include "panes/FolderMeasure.h"
#include "panes/FolderWhereabouts.h"
#include "panes/LiveUpdates.h"
#include "panes/PaneGestures.h"
#include "panes/PaneKeys.h"
#include "panes/PaneListing.h"
#include "panes/PaneMarks.h"
#include "panes/PaneMenus.h"
#include "panes/PaneNotifier.h"
#include "panes/PaneRows.h"
#include "panes/RowRenaming.h"
#include "settings/Preferences.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

class BScrollView;

namespace norvane {

/// The file list of a pane: shows the rows of a source, keeps marks apart from the selection,
/// packs the chosen entries into messages, and follows the changes of its folder.
///
/// It answers the calls of pane and window; its parts do the work. Thread: its window's. Ownership:
/// owns its rows.
class DirView : public ColumnListView,
                public KeyTarget,
                private MenuTarget,
                private RowsListener,
                private ListingOwner
{
public:
    /// `parentPane` is told of every change; `iconLabel` heads the icon column.
    DirView(BRect frame, BScrollView** containerOut, const char* path, const char* iconLabel,
            BView* parentPane);
    ~DirView() override;

    // BView, BListView, ColumnListView
    void AttachedToWindow() override;
    void DetachedFromWindow() override;
    void WindowActivated(bool isActive) override;
    void MessageReceived(BMessage* message) override;
    void KeyDown(const char* bytes, int32 byteCount) override;
    bool TakesDrops() const override { return true; }
    void Draw(BRect updateRect) override;
    void ScrollTo(BPoint where) override;
    using ColumnListView::ScrollTo;
    void MouseDown(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragged) override;
    void MouseUp(BPoint where) override;
    bool GetToolTipAt(BPoint where, BToolTip** tip) override;
    void MakeFocus(bool isFocused = true) override;
    void SelectionChanged() override;
    status_t Invoke(BMessage* message = nullptr) override;
    bool InitiateDrag(BPoint where, int32 index, bool wasSelected) override;
    void ColumnWidthChanged(int32 columnIndex, float newWidth) override;
    void DisplayOrderChanged(const int32* order) override;
    void SetSortKey(int32 columnIndex) override;
    void AddSortKey(int32 columnIndex) override;
    void SetSortMode(int32 columnIndex, CLVSortMode mode) override;

    // Listing (DirViewPlaces.cpp)
    /// Lists a local folder; 1, or -1 when it cannot be read: the list stays as it was then.
    int Populate(const char* path);
    /// Shows query results: refs of the message's first ref field, "QueryString".
    int Populate(BMessage* queryResults);
    /// Shows any place; false when it cannot be opened. What cannot be told at once comes later.
    bool Populate(std::unique_ptr<RowSource> source);
    void Clear();
    void Refresh() override;
    /// Lists another folder, "/" for null.
    void SetPath(const char* path);
    /// Lists a folder that a person named; "~", relative paths and addresses are understood.
    void GoToDir(const char* path);
    void NavigateUp() override;
    /// To the folder shown before this one, and forward again.
    void GoBack() override { fListing.Go(PlaceHistory::Step::kBack); }
    void GoForward() override { fListing.Go(PlaceHistory::Step::kForward); }
    bool CancelWork() override { return fListing.CancelWork(); }
    void NavigateDown();
    /// Adds entries that were moved in from elsewhere since the last listing.
    void AddMissing() { fUpdates.AddMissing(); }

    PaneMode Mode() const { return fListing.Source().Mode(); }
    /// The local folder shown, or the one to come back to.
    const std::string& Path() const { return fListing.Source().LocalFolder(); }
    std::string HeaderText() const { return fListing.Source().HeaderText(); }
    /// The saved folder that could not be read when the list was first shown, and why; empty when
    /// it could.
    const std::string& UnreadableFolder() const { return fListing.UnreadableFolder(); }
    const std::string& UnreadableReason() const { return fListing.UnreadableReason(); }
    /// Says that nobody tells of the folder's changes, once; false when there is nothing to say.
    bool TellOfMissingWatch() { return fListing.TellOfMissingWatch(); }
    /// It was said of another list.
    void SayNothingOfMissingWatch() { fListing.SayNothingOfMissingWatch(); }
    /// A folder above the one shown may have another name.
    void CheckPlace() { fWhereabouts.Check(); }
    const node_ref& FolderNode() const { return fUpdates.FolderNode(); }
    /// That of the folder which is followed; 0 when none is.
    dev_t ShownVolume() const { return fUpdates.IsFollowing() ? FolderNode().device : 0; }

    // Changes of entries (DirViewEntries.cpp, DirViewNames.cpp)
    /// Asks, then deletes what is marked, else selected: into the Trash, or for good when the Trash
    /// is shown. An operation window does it.
    void Trash() override;
    /// Puts what is marked, else selected, on the desktop's clipboard.
    void CopyEntries();
    void CutEntries();
    /// Copies or moves what is on the clipboard to the place shown.
    void PasteEntries();
    /// Makes a folder under a free name and opens its rename field.
    void DoNewFolder();
    void MkDir(const char* name);
    /// Opens the rename field of the selected row.
    void DoRename() override;
    /// Shows the selected row's file in a window of its own.
    void OpenLister() override;
    /// Opens the selected rows that are no folders in the text editor.
    void OpenEditor() override;
    void OpenRowMenu() override { fMenus.OpenByKey(); }
    void Edit(int32 index) { fRename.Begin(index); }
    /// Renames a row's entry; index -1 means the selected row.
    void Rename(const char* newName, int32 index = -1);

    // Selection and marks (DirViewEntries.cpp)
    /// 0 when no row is selected, 1 for a folder's row, 2 for any other; `path` is the folder's, or
    /// that of the place shown.
    int GetSelected(std::string* path) const;
    void GetSelected(BList* rows) const;
    /// The message that carries the chosen entries; null when none is chosen. Returned to the
    /// caller.
    BMessage* GetRefMsg(int32 index) override;
    /// The footer's line.
    std::string GetFiles() const;
    /// Starts measuring the one selected folder; its cell is filled when that ends. Returns 0.
    int64 GetSize() override;
    void ToggleMark(int32 index) { fMarks.Toggle(index); }
    void Mark(int32 from, int32 to) { fMarks.Mark(from, to); }
    void Unmark(int32 from, int32 to) { fMarks.Unmark(from, to); }
    void EmptyMarked() { fMarks.Empty(); }
    const MarkTotals& Marked() const { return fMarks.Totals(); }
    const MarkList& Marks() const { return fMarks.List(); }
    DirListItem* RowAt(int32 index) const { return fRows.RowAt(index); }
    void OpenFilter() override; // of the filter: PaneFilter.cpp
    bool EndFilter() override;
    void SetFilter(const std::string& text)
    {
        fRows.SetFilter(text);
        RefreshNote();
    }
    const PaneRows& Rows() const { return fRows; }

    // Columns and preferences (DirViewColumns.cpp)
    int ColumnWidth(int32 index) const;
    void SetColumnWidth(int32 index, int width);
    /// Reads them from the settings.
    void GetPreferences();
    const Preferences& CurrentPreferences() const { return fPreferences; }
    void SetTo(const Preferences& preferences);
    /// The same for a list that shows something: has it drawn anew, and read again unless nothing
    /// but extras changed that leave all rows there.
    void Apply(const Preferences& preferences);
    /// The rows, when these preferences will have them sorted by columns; none when they are so
    /// already. Once they are, TakeSorted() shows them.
    RowsToSort ToSort(const Preferences& preferences) const;
    void TakeSorted(const RowsToSort& sorted) { fRows.TakeSorted(sorted); }
    void TakeFontSize(float size);
    void SetDateFormat(const char* pattern);
    void SetProgressFlag(bool isOn) { fNotifier.SetShowsProgress(isOn); }
    void SetHeaderFlag(bool isOn) { fShowsHeader = isOn; }
    void SetFooterFlag(bool isOn) { fShowsFooter = isOn; }
    bool ProgressFlag() const { return fNotifier.ShowsProgress(); }
    bool HeaderFlag() const { return fShowsHeader; }
    bool FooterFlag() const { return fShowsFooter; }

    void NotifyParent(uint32 code) override { fNotifier.Post(code); }
    /// The pane got MSG_PANE_INFO.
    void InfoArrived();
    /// What the list says in place of rows; empty when there are some.
    const std::string& NoteShown() const { return fNote.Text(); }

    // Live updates
    void StopNodeMonitoring() { fUpdates.Stop(); }
    /// Handles a notice of the folder's watch.
    void NodeChanged(const BMessage& notice);
    /// 1 for a folder's row, 2 for any other, 0 when the entry is gone or listed already.
    int AddEntry(const entry_ref* ref) { return fUpdates.AddEntry(*ref); }
    void RemoveEntry(const entry_ref* ref) { fUpdates.RemoveEntry(*ref); }
    void UpdateEntry(const node_ref* node) { fUpdates.UpdateEntry(*node); }
    void UpdateEntry(const entry_ref* newRef, const entry_ref* oldRef)
    {
        fUpdates.UpdateEntry(*newRef, *oldRef);
    }

private:
    // RowsListener, ListingOwner
    void RowsLeave(const std::vector<DirListItem*>& rows) override;
    void AllRowsLeave() override;
    void RowsChanged() override;
    OpenOrder OrderForOpening() const override;
    RowsView View() const override;
    void Arrived(const Arrival& arrival) override;
    void LookedAgain(status_t status) override;
    void NoFolder(const entry_ref& link) override;

    RowSorting SortingChosen(const Preferences& preferences) const;
    // MenuTarget (DirViewMenu.cpp)
    RowMenuFacts FactsOf(const DirListItem* row) override;
    std::string PlaceName() const override;
    void CarryOut(RowCommand command, DirListItem* row,
                  const std::vector<DirListItem*>& rows) override;
    void CarryOutOnRow(RowCommand command, int32 index);
    void CarryOutOnAll(RowCommand command, const std::vector<DirListItem*>& rows);
    void TrashRows(const std::vector<DirListItem*>& rows);

    std::string TipTextAt(BPoint where);
    std::string NoteText() const;
    void RefreshNote() { fNote.SetText(NoteText()); }
    void SortingChanged();
    void ShowFilterField();
    bool RefusesToView();
    void AddColumns(const char* iconLabel);
    int32 CurrentInt32(const char* field) const;
    void UnmappedKeyDown(const BMessage& message);
    std::vector<DirListItem*> SelectedRows() const;
    void ScrollToRow(int32 index);
    void LookAs(const RowsView& view);
    bool GoBySideButton(uint32 buttons);
    bool EditNamed(const std::string& name);
    void NewsOfSource();
    void AnswerSoonOrLater(const std::function<BMessage()>& ask);
    void EntryAnswered(const BMessage& answer);
    void FolderMade(const BMessage& answer);
    bool IsInShown(const BMessage& answer) const;
    void ShowMade(const BMessage& answer);
    void RenameRow(DirListItem* row, const TypedName& name);
    void RenameFailed(DirListItem* row, const char* reason, const TypedName& name);
    void Renamed(const BMessage& answer);
    void RenameEnded(bool isCommitted);
    void FolderMeasured(const BMessage& message);
    void EndMeasuring();
    void LinkAnswered(const BMessage& message);
    void IconFound(const BMessage& message);
    void StartDrag(int32 index);
    bool TakesEntries(const DirListItem& row, const BMessage& entries) const;
    void EntriesDropped(BMessage* message);
    DropMeaning::Act TakeEntries(const BMessage& entries, const DirListItem* onto);
    void EntriesArrived(BMessage* message);
    std::unique_ptr<BMessage> ChosenEntries();
    void ClipboardChanged();
    void StartOperation(const OperationRequest& request, BHandler* handler);

    BView* fPane; // the parent, may be null
    PaneNotifier fNotifier;
    PaneRows fRows{*this, *this};
    PaneMarks fMarks{fRows, fNotifier.Poster(MSG_PANE_INFO)};
    PaneGestures fGestures{fRows, fMarks};
    PaneKeys fKeys{*this, fRows, fMarks, *this};
    PaneMenus fMenus{*this, fRows, fMarks, *this};
    RowRenaming fRename{*this, fRows};
    DragOver fDragOver;
    LiveUpdates fUpdates{fRows};
    PaneListing fListing;
    FolderWhereabouts fWhereabouts{fUpdates, fListing};
    FolderMeasure fMeasure;
    node_ref fMeasured; // the folder that is being measured; none: 0
    EmptyNote fNote{*this};

    std::string fNameToEdit;   // of a folder that was asked for and is not listed yet
    uint32 fCutGeneration = 0; // of the cut entries that were painted last
    bool fIsFirstAttachment = true;
    bool fIsTakingWidth = false; // a column width that the window passes on
    bool fShowsHeader = true;
    bool fShowsFooter = true;
    Preferences fPreferences; // that were set last
};

} // namespace norvane
