#pragma once

#include <Invoker.h>
#include <List.h>
#include <ListItem.h>
#include <View.h>

#include <memory>

class BScrollView;

namespace kits {
class ListPress;
class ListSelection;
class RowHeights;
} // namespace kits

/// How many rows a person can select.
enum list_view_type {
    B_SINGLE_SELECTION_LIST,
    B_MULTIPLE_SELECTION_LIST,
};

/// A column of rows that a person selects and invokes.
///
/// Only visible rows are drawn; a row is found by its place in O(1) when all heights are equal,
/// else in O(log n). Thread: call with the window locked once the list is in one. Ownership:
/// borrows its rows. Adopts its messages.
class BListView : public BView, public BInvoker
{
public:
    /// Makes an empty list; rows are invoked and selected without a message until one is set.
    BListView(BRect frame, const char* name, list_view_type type = B_SINGLE_SELECTION_LIST,
              uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
              uint32 flags = B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE);
    ~BListView() override;

    // BView; BListView's own virtual functions follow in the platform's order
    void Describe(BViewDescription* description) const override;
    void Draw(BRect updateRect) override;
    void MessageReceived(BMessage* message) override;
    void MouseDown(BPoint where) override;
    void KeyDown(const char* bytes, int32 byteCount) override;
    void MakeFocus(bool focused = true) override;
    void FrameResized(float width, float height) override;
    void AttachedToWindow() override;
    void DetachedFromWindow() override;
    void WindowActivated(bool active) override;
    void MouseUp(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragged) override;
    void SetFont(const BFont* font, uint32 mask = B_FONT_ALL) override;
    void GetPreferredSize(float* width, float* height) override;

    /// Keeps the bars of the scroll view as long as the rows.
    void TargetedByScrollView(BScrollView* scrollView) override;

    /// Adds a row at the end, or at `index`. False, and nothing added, when the index is outside
    /// 0..CountItems() or the row is null.
    virtual bool AddItem(BListItem* item);
    virtual bool AddItem(BListItem* item, int32 index);
    /// Adds the rows in `items` at the end, or at `index`.
    virtual bool AddList(BList* items);
    virtual bool AddList(BList* items, int32 index);
    /// Takes a row out; the caller deletes it. False (null) when it is not there.
    virtual bool RemoveItem(BListItem* item);
    virtual BListItem* RemoveItem(int32 index);
    /// Takes `count` rows out, fewer at the end. False when `index` is outside the list.
    virtual bool RemoveItems(int32 index, int32 count);

    /// Sets the message sent whenever the selection changes, with "when", "source" and the selected
    /// rows' "index" entries.
    /// Ownership: adopts the message; null for none.
    virtual void SetSelectionMessage(BMessage* message);
    /// Sets the message sent when rows are invoked by double click, Enter or Space; fields as
    /// above.
    virtual void SetInvocationMessage(BMessage* message);
    /// Lends the message sent when rows are invoked, null for none; and its `what`, 0 for none.
    BMessage* InvocationMessage() const;
    uint32 InvocationCommand() const;
    /// The same of the message sent when the selection changes.
    BMessage* SelectionMessage() const { return fSelectionMessage.get(); }
    uint32 SelectionCommand() const;

    /// Allows one selected row, or several. Going to one keeps the first selected row.
    virtual void SetListType(list_view_type type);
    /// What SetListType() set.
    list_view_type ListType() const { return fType; }

    /// The row at `index`, or null.
    BListItem* ItemAt(int32 index) const;
    /// The row at a point of the view, by height alone; -1 above the first and below the last.
    int32 IndexOf(BPoint where) const;
    /// The index of a row, or -1. Walks the list.
    int32 IndexOf(BListItem* item) const;
    /// The row at an end, null in an empty list.
    BListItem* FirstItem() const;
    BListItem* LastItem() const;
    /// Whether the row is in the list; walks it.
    bool HasItem(BListItem* item) const;
    /// The number of rows.
    int32 CountItems() const;
    /// Shows these rows, each once, in this order, in place of all it has. Those that stay keep
    /// their selection; the others are the caller's to delete. An extension of the platform, for
    /// many changes at once.
    void SetItems(const BList* items);
    /// Takes all rows out; they are not deleted.
    virtual void MakeEmpty();
    /// Whether there are no rows.
    bool IsEmpty() const;
    /// Calls `function` for every row until it returns true.
    void DoForEach(bool (*function)(BListItem* item));
    void DoForEach(bool (*function)(BListItem* item, void* data), void* data);
    /// Lends the rows as an array, valid until the list changes.
    const BListItem** Items() const;
    /// Has one row drawn again.
    void InvalidateItem(int32 index);
    /// Scrolls the first selected row into sight, as little as needed.
    void ScrollToSelection();

    /// Selects a row; the others are deselected unless `extend` and the list allows several.
    void Select(int32 index, bool extend = false);
    /// Selects the rows from `start` to `finish`, both included.
    void Select(int32 start, int32 finish, bool extend = false);
    /// Whether that row is selected; false outside the list.
    bool IsItemSelected(int32 index) const;
    /// The index of the n-th selected row, or -1.
    int32 CurrentSelection(int32 n = 0) const;
    /// Sends a copy of `message` (null: the invocation message) with the fields described above.
    /// Errors: B_BAD_VALUE without a message.
    status_t Invoke(BMessage* message = nullptr) override;

    /// Deselects all rows, all but those from `start` to `finish`, or one; tells SelectionChanged()
    /// when that changes any.
    void DeselectAll();
    void DeselectExcept(int32 start, int32 finish);
    void Deselect(int32 index);
    /// Is told after every change of the selection. Does nothing.
    virtual void SelectionChanged();

    /// Sorts the rows; `compare` gets pointers to two BListItem pointers. The selection stays with
    /// its rows.
    void SortItems(int (*compare)(const void*, const void*));
    /// Exchanges two rows, or moves one. False when an index is outside the list.
    bool SwapItems(int32 a, int32 b);
    bool MoveItem(int32 from, int32 to);
    /// Puts `item` in place of the row at `index`, which the caller deletes. False outside the
    /// list, for null.
    bool ReplaceItem(int32 index, BListItem* item);

    /// The row's frame in the view, or an invalid rectangle.
    BRect ItemFrame(int32 index) const;

    /// Is asked when a person drags a pressed row; returns true when a drag was started.
    /// Returns false here: the press goes on as a selection.
    virtual bool InitiateDrag(BPoint where, int32 index, bool wasSelected);

private:
    friend class BListItem;

    void Insert(int32 index, BListItem* const* items, int32 count);
    int32 UpdateNewRows(const BList& items);
    bool ExchangeOwners(const BList& items);
    void NoteHeights(int32 index, BListItem* const* items, int32 count) const;
    void HeightsChanged() { fHeightsAreStale = true; }
    kits::RowHeights& Heights() const;
    void UpdateAllRows();
    void FixScrollBar();
    void InvalidateFrom(int32 index);
    void InvalidateRows(int32 first, int32 last);
    void DrawRows(BRect updateRect);
    void DrawFocus();
    void SelectionDidChange(int32 first, int32 last);
    void SelectByPointer(int32 index, uint32 modifiers);
    void MoveSelection(int32 index, uint32 modifiers);
    void SweepTo(BPoint where);
    void AutoScroll();
    int32 PageTarget(int32 from, int32 direction) const;
    void ScrollRowIntoView(int32 index);
    void FillSelectionInto(BMessage* message);

    BList fRows;
    mutable std::unique_ptr<kits::RowHeights> fHeights;
    std::unique_ptr<kits::ListSelection> fSelection;
    std::unique_ptr<kits::ListPress> fPress; // null unless a press is being followed
    std::unique_ptr<BMessage> fSelectionMessage;
    BScrollView* fScrollView = nullptr; // borrowed
    list_view_type fType;
    mutable bool fHeightsAreStale = false;
};
