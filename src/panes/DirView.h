#pragma once

#include "MessageCodes.h"
#include "clv/ColumnListView.h"
#include "panes/DirListItem.h"
#include "panes/FolderMeasure.h"
#include "panes/MarkList.h"
#include "panes/MousePress.h"
#include "panes/PaneNotifier.h"
#include "panes/RenameField.h"
#include "panes/RowIndex.h"
#include "panes/RowOrder.h"

#include <Message.h>
#include <Node.h>

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

class BScrollView;

namespace norvane {

class FolderReader;

/// The file list of a pane: lists a folder or query results, keeps marks apart from the selection,
/// packs the chosen entries into messages, and follows the changes of its folder.
///
/// Thread: its window's. Ownership: owns its rows.
class DirView : public ColumnListView
{
public:
    static constexpr int32 kColumnCount = 5;

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
    void MouseDown(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragged) override;
    void MouseUp(BPoint where) override;
    void MakeFocus(bool isFocused = true) override;
    void SelectionChanged() override;
    status_t Invoke(BMessage* message = nullptr) override;
    bool InitiateDrag(BPoint where, int32 index, bool wasSelected) override;
    void ColumnWidthChanged(int32 columnIndex, float newWidth) override;

    // Listing
    /// Lists a local folder; 1, or -1 when it cannot be read: the list stays as it was then.
    int Populate(const char* path);
    /// Shows query results: refs of the message's first ref field, "QueryString".
    int Populate(BMessage* queryResults);
    void Clear();
    void Refresh();
    /// Lists another folder, "/" for null.
    void SetPath(const char* path);
    /// Lists a folder that a person named; "~", relative paths and addresses are understood.
    void GoToDir(const char* path);
    void NavigateUp();
    void NavigateDown();
    /// Adds entries that were moved in from elsewhere since the last listing.
    void AddMissing();

    PaneMode Mode() const { return fMode; }
    const std::string& Path() const { return fPath; }
    const std::string& QueryString() const { return fQuery; }
    /// The saved folder that could not be read when the list was first shown; empty when it could.
    const std::string& UnreadableFolder() const { return fUnreadable; }

    const node_ref& FolderNode() const { return fWatched; }

    // Changes of entries
    /// Asks, then deletes what is marked, else selected: into the Trash, or for good when the Trash
    /// is shown. An operation window does it.
    void Trash();
    /// Makes a folder under a free name and opens its rename field.
    void DoNewFolder();
    void MkDir(const char* name);
    /// Opens the rename field of the selected row.
    void DoRename();
    void Edit(int32 index);
    /// Renames a row's entry; index -1 means the selected row.
    void Rename(const char* newName, int32 index = -1);

    // Selection and marks
    /// 0 when no row is selected, 1 for a folder's row, 2 for any other; `path` is the folder's, or
    /// that of the folder shown.
    int GetSelected(std::string* path) const;
    void GetSelected(BList* rows) const;
    /// The message that carries the chosen entries; null when none is chosen. Returned to the
    /// caller.
    BMessage* GetRefMsg(int32 index);
    /// The footer's line.
    std::string GetFiles() const;
    /// Starts measuring the one selected folder; its cell is filled when that ends. Returns 0.
    int64 GetSize();
    void ToggleMark(int32 index);
    void Mark(int32 from, int32 to);
    void Unmark(int32 from, int32 to);
    void EmptyMarked();
    const MarkList& Marks() const { return fMarks; }
    DirListItem* RowAt(int32 index) const;

    // Columns and preferences
    int ColumnWidth(int32 index) const;
    void SetColumnWidth(int32 index, int width);
    void GetPreferences();
    void SetDateFormat(const char* pattern);
    void SetProgressFlag(bool isOn) { fShowsProgress = isOn; }
    void SetHeaderFlag(bool isOn) { fShowsHeader = isOn; }
    void SetFooterFlag(bool isOn) { fShowsFooter = isOn; }
    bool ProgressFlag() const { return fShowsProgress; }
    bool HeaderFlag() const { return fShowsHeader; }
    bool FooterFlag() const { return fShowsFooter; }

    void NotifyParent(uint32 code);
    /// The pane got MSG_PANE_INFO.
    void InfoArrived() { fIsInfoOnItsWay = false; }

    // Live updates
    void StopNodeMonitoring();
    /// Handles a notice of the folder's watch.
    void NodeChanged(const BMessage& notice);
    /// 1 for a folder's row, 2 for any other, 0 when the entry is gone or listed already.
    int AddEntry(const entry_ref* ref);
    void RemoveEntry(const entry_ref* ref);
    void RemoveEntry(const node_ref& node, const char* name);
    void UpdateEntry(const node_ref* node);
    void UpdateEntry(const entry_ref* newRef, const entry_ref* oldRef);

private:
    enum class Complaint { kAlert, kNone };
    using RowList = std::vector<std::unique_ptr<DirListItem>>;

    /// The list as what the searches of places and characters look at.
    class Rows : public RowSource
    {
    public:
        explicit Rows(const DirView& list) : fList(list) {}
        int32 CountRows() const override { return fList.CountItems(); }
        const DirListItem* RowAt(int32 index) const override { return fList.RowAt(index); }

    private:
        const DirView& fList;
    };

    void AddColumns(const char* iconLabel);
    int32 CurrentInt32(const char* field) const;

    // Listing
    int List(const std::string& path, Complaint complaint);
    void ReadRecords(FolderReader& reader);
    void ShowRows(RowList folders, RowList files);
    void DeleteRows();
    void EnterFolder(const DirListItem& row);

    // Marks
    void ToggleMarks(int32 from, int32 to);
    std::vector<DirListItem*> RowsBetween(int32 from, int32 to) const;
    void FolderMeasured(const BMessage& message);

    // Keys
    bool HandleKey(const char* bytes, int32 byteCount);
    bool HandleFunctionKey(int32 key);
    bool TypeAhead(const char* bytes, int32 byteCount);
    void MarkSelected();
    void MarkSelectedAndGoOn();
    bool IsRepeat() const;
    void StartOperation(int32 key, uint32 held);
    void StartCopy(const char* type);

    // Changes of entries
    std::vector<DirListItem*> ChosenRows() const;
    status_t MakeFolder(const char* name) const;
    void PlaceRenameField();
    void DropRenameField();
    void FieldClosed(bool hadFocus);
    void RenameEnded(bool isCommitted);
    void RenameRow(DirListItem* row, const char* newName);

    // Mouse and drops
    void MarkWithCommand(int32 index);
    void MarkWithShift(int32 index);
    void ForgetPressedRow(const DirListItem* row);
    void EntriesDropped(BMessage* message);

    // Live updates
    status_t BeginWatch(FolderReader& folder, status_t* watchStatus);
    void EndWatch(const node_ref& folder);
    void TakeWatch(const FolderReader& folder, status_t status, Complaint complaint);
    void EntryCreated(const BMessage& notice);
    void EntryRemoved(const BMessage& notice);
    void EntryMoved(const BMessage& notice);
    void MovedHere(const char* name, const char* fromName, bool isRename, DirListItem* moved,
                   DirListItem* target);
    void StatChanged(const BMessage& notice);
    bool IsShown(const BMessage& notice, const char* directoryField) const;
    entry_ref RefOf(const char* name) const;
    void InsertRow(std::unique_ptr<DirListItem> row);
    void RemoveRow(DirListItem* row);
    void RebuildRow(DirListItem* row, const entry_ref& ref);
    int32 IndexOfRow(const DirListItem* row) const;
    void RedrawRow(const DirListItem* row);

    PaneMode fMode = kLocalMode;
    std::string fPath;
    std::string fDownPath;
    bool fMayNavigateDown = false;
    std::string fQuery;
    std::string fUnreadable;
    bool fIsFirstAttachment = true;

    Rows fSource{*this};
    RowOrder fOrder;
    RowIndex fIndex;
    FolderTotals fTotals;
    MarkList fMarks;
    DirListItem* fAnchor = nullptr; // where the last range of marks started; a row of ours
    FolderMeasure fMeasure;

    BView* fPane; // the parent, may be null
    PaneNotifier fNotifier;
    bool fIsInfoOnItsWay = false; // MSG_PANE_INFO was posted and has not arrived yet
    bool fIsTakingWidth = false;  // a column width that the window passes on

    std::string fDateFormat;
    bool fShowsProgress = true;
    bool fShowsHeader = true;
    bool fShowsFooter = true;

    bool fIsWatching = false;
    node_ref fWatched;   // the folder listed last
    entry_ref fInFolder; // some name in it; keeps it known
    BMessenger fWatcher;
    DirListItem* fReplaced = nullptr; // another entry is about to take its name; a row of ours
    std::set<std::string> fMovedIn;   // names moved in from elsewhere, not listed yet
    std::optional<MousePress> fPress; // empty unless a press is being followed
    RenameField fRename;
};

} // namespace norvane
