#pragma once

#include "panes/FolderTotals.h"
#include "panes/RowIndex.h"
#include "panes/RowOrder.h"
#include "panes/RowSource.h"

#include <memory>
#include <string>
#include <vector>

namespace norvane {

class ColumnListView;

/// Whoever keeps rows in mind: told when they go.
class RowsListener
{
public:
    virtual ~RowsListener() = default;

    /// This row is about to be taken out and deleted.
    virtual void RowLeaves(DirListItem* row) = 0;
    /// All rows are about to be.
    virtual void RowsLeave() = 0;
    /// A row came, went or changed; the others may have moved.
    virtual void RowsChanged() = 0;
};

/// The rows of a list: put in and taken out one by one in the listing's order, and found by place,
/// by name and by node.
///
/// Thread: the list's window's. Ownership: every row in the list is its own; the list, the listener
/// and the rows that it returns are borrowed, a row until the listener hears that it leaves.
/// Clear() is called before the list dies.
class PaneRows : public RowSequence
{
public:
    PaneRows(ColumnListView& list, RowsListener& listener) : fList(list), fListener(listener) {}
    PaneRows(const PaneRows&) = delete;
    PaneRows& operator=(const PaneRows&) = delete;

    // RowSequence
    int32 CountRows() const override;
    /// Null outside the list.
    DirListItem* RowAt(int32 index) const override;

    // All rows
    /// Puts rows into the empty list. The listener hears nothing of it.
    void Fill(ListedRows rows);
    /// Deletes all rows; very many on a thread of their own.
    void Clear();
    const FolderTotals& Totals() const { return fTotals; }

    // One row
    /// Puts a row in its place. One of its name that stands there is rebuilt instead.
    void Insert(std::unique_ptr<DirListItem> row);
    /// Takes a row out and deletes it; when it was selected, the row that takes its place is.
    void Remove(DirListItem* row);
    /// Has a row read its entry anew, from `ref`; it keeps its place, selection and mark.
    void Rebuild(DirListItem* row, const entry_ref& ref);
    void Redraw(const DirListItem* row);
    void RedrawAll();

    // Searches; null or -1 when there is none
    int32 IndexOf(const DirListItem* row) const { return fOrder.IndexOf(row); }
    int32 Find(const char* name) const { return fOrder.Find(name); }
    DirListItem* Find(const node_ref& node, const char* name) const;
    DirListItem* FindAny(const node_ref& node) const { return fIndex.FindAny(node); }
    std::vector<DirListItem*> FindAll(const node_ref& node) const { return fIndex.FindAll(node); }
    const RowIndex& Index() const { return fIndex; }

    // The Date column of rows that are made or rebuilt from now on
    void SetDateFormat(const std::string& pattern) { fDateFormat = pattern; }
    const std::string& DateFormat() const { return fDateFormat; }

private:
    void Note(DirListItem* row);
    void Forget(DirListItem* row);

    ColumnListView& fList;
    RowsListener& fListener;
    RowOrder fOrder{*this};
    RowIndex fIndex; // of the rows that have nodes
    FolderTotals fTotals;
    std::string fDateFormat;
};

} // namespace norvane
