#pragma once

#include "panes/FolderTotals.h"
#include "panes/RowFilter.h"
#include "panes/RowIndex.h"
#include "panes/RowOrder.h"
#include "panes/RowSource.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

class BList;

namespace norvane {

class ColumnListView;

/// Whoever keeps rows in mind: told when they go.
class RowsListener
{
public:
    virtual ~RowsListener() = default;

    /// These rows are about to be deleted; there is at least one.
    virtual void RowsLeave(const std::vector<DirListItem*>& rows) = 0;
    /// All rows are about to be.
    virtual void AllRowsLeave() = 0;
    /// Rows came, went or changed; the others may have moved.
    virtual void RowsChanged() = 0;
};

/// The rows of a list: put in and taken out one by one in its order, and found by place, by name
/// and by node.
///
/// In the listing's order a row that changes keeps its place; where a person had rows sorted it
/// goes where it belongs.
///
/// A filter keeps rows out of the list: then those that are shown have indices, while all are found
/// by name and by node, change and go.
///
/// Thread: the list's window's. Ownership: every row in the list is its own; the list, the listener
/// and the rows that it returns are borrowed, a row until the listener hears that it leaves.
/// Clear() is called before the list dies.
class PaneRows : public RowSequence
{
public:
    using RowList = std::vector<std::unique_ptr<DirListItem>>;

    PaneRows(ColumnListView& list, RowsListener& listener) : fList(list), fListener(listener) {}
    PaneRows(const PaneRows&) = delete;
    PaneRows& operator=(const PaneRows&) = delete;

    // RowSequence, of the rows shown
    int32 CountRows() const override;
    /// Null outside the list.
    DirListItem* RowAt(int32 index) const override;

    // All rows
    /// Puts rows into the empty list. The listener hears nothing of it.
    void Fill(ListedRows rows);
    /// Makes the rows those of a fresh listing of the same folder: a row whose entry is still there
    /// keeps its place, selection and mark.
    void Become(ListedRows fresh);
    /// Deletes all rows; very many on a thread of their own.
    void Clear();
    /// Of those that are shown.
    FolderTotals Totals() const;

    /// Puts all rows into an order, and keeps them so.
    void SetSorting(const RowSorting& sorting);
    /// The same in steps, as another thread may sort: all rows, none when they are in that order.
    RowsToSort ToSort(const RowSorting& sorting) const;
    /// Shows them in the order that they have now; does nothing when there are none.
    void TakeSorted(const RowsToSort& sorted);
    const RowSorting& Sorting() const { return fOrder.Sorting(); }

    // The filter (PaneRowsFilter.cpp)
    /// Begins to filter, by no text yet.
    void BeginFilter() { fFilter.Begin(); }
    bool IsFiltered() const { return fFilter.IsOn(); }
    /// Shows the rows alone whose own names hold a text. When the selected row goes the next one
    /// that stays is selected; when none but ".." was, the first.
    void SetFilter(const std::string& text);
    const std::string& FilterText() const { return fFilter.Text(); }
    /// Shows all rows; the selected one stays in sight.
    void EndFilter();
    /// Another number whenever a marked row changed, or marked rows may have been hidden or shown.
    uint32 MarkedChanges() const { return fMarkedChanges; }

    // One row
    /// Puts a row in its place. One of its name gives way.
    void Insert(std::unique_ptr<DirListItem> row);
    /// Takes a row out and deletes it; when it was selected, the row that takes its place is.
    void Remove(DirListItem* row);
    /// Has a row read its entry anew, from `ref`; it keeps its place, selection and mark. A row
    /// that gets a name that is left out goes, here as below.
    void Rebuild(DirListItem* row, const entry_ref& ref);
    /// Makes a row show what is known of its entry, under a new name or its own; it keeps its
    /// place, selection and mark. A record of what was gone changes the name alone.
    /// `target` is what a link leads to.
    void Rebuild(DirListItem* row, const char* name, const BEntryRecord& record, mode_t target = 0);
    /// The same for a hit of a query, which shows its path.
    void RebuildHit(DirListItem* row, const char* name, const std::string& path,
                    const BEntryRecord& record);
    /// Shows what a folder occupies.
    void SetDirSize(DirListItem* row, int64 bytes);
    void Redraw(const DirListItem* row);
    void RedrawAll();

    /// Leaves out rows whose names begin with a dot: those that are there now, and those that come.
    /// Ones that were left out are there again when the folder is read again. Results of queries,
    /// which are listed by their paths, stay.
    void SetLeavesOutDotNames(bool isOn);
    /// Whether some were left out since all rows went last.
    bool HasLeftOut() const { return fHasLeftOut; }

    // Many rows at once: between these two rows are found by name and by node as they are, while
    // the list is brought up to date at the end, in one pass over it.
    void BeginChanges();
    void EndChanges();

    // Searches; null or -1 when there is none, or for an index when it is filtered away
    int32 IndexOf(const DirListItem* row) const;
    int32 Find(const char* name) const;
    /// The row of that name; never "..".
    DirListItem* FindRow(const char* name) const { return Names().Find(name); }
    DirListItem* Find(const node_ref& node, const char* name) const
    {
        return Nodes().Find(node, name);
    }
    DirListItem* FindAny(const node_ref& node) const { return Nodes().FindAny(node); }
    std::vector<DirListItem*> FindAll(const node_ref& node) const { return Nodes().FindAll(node); }

    // Made when they are first asked for: most folders are left before that.
    const RowIndex& Nodes() const;
    const RowNames& Names() const;

    /// The Date column of rows that are made or rebuilt from now on; of all that are there, too,
    /// after RewriteDates().
    void SetDateFormat(const std::string& pattern) { fDateFormat = pattern; }
    void RewriteDates();
    const std::string& DateFormat() const { return fDateFormat; }

private:
    /// What the list does not know yet.
    struct Changes
    {
        std::vector<std::unique_ptr<DirListItem>> leaving;
        std::unordered_set<const DirListItem*> leavers; // of these, those that the list has
        std::unordered_set<DirListItem*> coming;        // not in the list
        std::unordered_set<DirListItem*> rebuilt;
    };

    /// Those of the list as it will be when the changes have ended, in no order.
    void VisitRows(const std::function<void(DirListItem*)>& visit) const;
    bool LeavesOut(const char* name);
    void Leave(const std::vector<DirListItem*>& leaving, std::unique_ptr<RowList> left, BList& kept,
               int32 selected);
    void Note(DirListItem* row);
    void Forget(DirListItem* row);
    void Rebuilt(DirListItem* row, const std::string& oldName, bool wasFolder);
    bool IsInPlace(int32 index) const;
    bool AreInPlace(const std::unordered_set<DirListItem*>& rows) const;
    void Place(DirListItem* row);
    void PlaceFiltered(DirListItem* row, int32 from, int32 to);
    void TakeOut(int32 index);
    bool IsFollowed(const DirListItem* row) const;
    int32 PlaceAmongOthers(int32 index) const;
    bool JudgeAll(const Changes& changes);
    bool GoesFrom(const DirListItem* row, const Changes& changes) const;
    void SelectFiltered(const DirListItem* selected, int32 place);
    void RemoveAllBut(const std::unordered_set<std::string_view>& names);
    void BecomeOrInsert(std::unique_ptr<DirListItem> fresh);
    void MergeInto(const Changes& changes);
    void MergeInOrder(const Changes& changes, bool showsOthers);
    void SetRows(const BList& rows, int32 selected);
    void RedrawSeen(const std::unordered_set<DirListItem*>& rows);

    ColumnListView& fList;
    RowsListener& fListener;
    RowFilter fFilter{*this}; // all rows
    RowOrder fOrder{fFilter};
    mutable std::optional<RowIndex> fNodes; // of the rows that have nodes
    mutable std::optional<RowNames> fNames;
    std::optional<Changes> fChanges; // between BeginChanges() and EndChanges()
    FolderTotals fTotals;
    std::string fDateFormat;
    uint32 fMarkedChanges = 0;
    bool fLeavesOutDotNames = false;
    bool fHasLeftOut = false;
};

} // namespace norvane
