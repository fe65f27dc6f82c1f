#pragma once

#include "clv/CLVColumn.h"
#include "clv/CLVListItem.h"
#include "clv/ColumnOwner.h"
#include "clv/OutlineRows.h"

#include <ListView.h>
#include <ScrollView.h>

#include <memory>
#include <vector>

namespace norvane {

class CLVColumnLabelView;
class CLVContainerView;
class PrefilledBitmap;
class ScrollViewCorner;

/// A list of several columns with a header strip, sort keys and, when asked for, an outline.
///
/// Column indices count in the order of adding. In an outline the full list holds every row and the
/// BListView's own list the visible ones; a flat list has no full list.
class ColumnListView : public BListView, private ColumnOwner
{
public:
    using CompareFunction = int (*)(const CLVListItem*, const CLVListItem*, int32 columnIndex);

    /// Makes the list and its container, which goes out through `containerOut` (may be null): add
    /// that to a view, not the list.
    ColumnListView(BRect frame, CLVContainerView** containerOut, const char* name,
                   uint32 resizingMode, uint32 flags, list_view_type type, bool isHierarchical,
                   bool horizontal, bool vertical, border_style border, const BFont* labelFont);
    /// Deletes the columns, not the rows; and the container when nobody adopted it.
    ~ColumnListView() override;

    // BListView
    void AttachedToWindow() override;
    void MouseDown(BPoint where) override;
    void KeyDown(const char* bytes, int32 byteCount) override;
    void FrameResized(float width, float height) override;
    void SetFont(const BFont* font, uint32 mask = B_FONT_ALL) override;
    void ScrollTo(BPoint where) override;
    using BListView::AddItem;
    using BListView::RemoveItem;
    using BListView::ScrollTo;
    using BListView::SortItems;
    bool AddList(BList* rows) override;
    bool AddList(BList* rows, int32 index) override;
    BListItem* RemoveItem(int32 index) override;
    bool RemoveItems(int32 index, int32 count) override;
    void MakeEmpty() override;
    /// Shows these rows in place of all others; those that stay keep their selection in a flat
    /// list.
    void SetItems(const BList* rows);

    // Columns
    virtual bool AddColumn(CLVColumn* column);
    virtual bool AddColumnList(BList* columns);
    virtual bool RemoveColumn(CLVColumn* column);
    virtual bool RemoveColumns(CLVColumn* first, int32 count);
    int32 CountColumns() const;
    int32 IndexOfColumn(const CLVColumn* column) const;
    CLVColumn* ColumnAt(int32 index) const;
    virtual bool SetDisplayOrder(const int32* order);
    /// A new array of column indices, returned to the caller (delete[]).
    int32* DisplayOrder() const;
    int32 CountDisplayed() const;
    CLVColumn* DisplayedAt(int32 place) const;
    virtual void ColumnWidthChanged(int32 columnIndex, float newWidth);
    virtual void DisplayOrderChanged(const int32* order);

    // Sorting
    void SetSortFunction(CompareFunction compare);
    virtual void SetSortKey(int32 columnIndex);
    virtual void AddSortKey(int32 columnIndex);
    virtual void SetSortMode(int32 columnIndex, CLVSortMode mode);
    void ReverseSortMode(int32 columnIndex);
    int32 Sorting(int32* keys, CLVSortMode* modes) const;
    void SetSorting(int32 count, const int32* keys, const CLVSortMode* modes);
    void SortItems();
    /// The place of a column among the sort keys, -1 when it is none.
    int32 SortKeyPlace(const CLVColumn* column) const;

    // Rows
    virtual bool AddUnder(CLVListItem* row, CLVListItem* superitem);
    virtual bool AddItem(CLVListItem* row, int32 index);
    virtual bool AddItem(CLVListItem* row);
    virtual bool RemoveItem(CLVListItem* row);
    virtual void Expand(CLVListItem* row);
    virtual void Collapse(CLVListItem* row);
    bool IsExpanded(int32 fullIndex) const;
    CLVListItem* Superitem(const CLVListItem* row) const;
    int32 FullListNumberOfSubitems(const CLVListItem* row) const;
    CLVListItem* FullListItemAt(int32 index) const;
    int32 FullListIndexOf(const CLVListItem* row) const;
    int32 FullListIndexOf(BPoint where);
    CLVListItem* FullListFirstItem() const;
    CLVListItem* FullListLastItem() const;
    bool FullListHasItem(const CLVListItem* row) const;
    int32 FullListCountItems() const;
    bool FullListIsEmpty() const;
    int32 FullListCurrentSelection(int32 index = 0) const;
    void FullListDoForEach(bool (*function)(CLVListItem*));
    void FullListDoForEach(bool (*function)(CLVListItem*, void*), void* data);

    // Layout
    /// The height of the header strip's frame as a whole number.
    int GetHdrHeight() const;
    /// Gives header strip and rows together this size.
    void ResizeTo(float width, float height);
    CLVColumnLabelView* HeaderStrip() const { return fStrip; }
    CLVContainerView* Container() const { return fContainer; }
    bool IsHierarchical() const { return fIsHierarchical; }
    float DataWidth() const { return fDataWidth; }
    float DataHeight() const { return fDataHeight; }
    int32 ExpanderColumnIndex() const { return fExpanderColumn; }
    const BBitmap* ArrowBitmap(bool isExpanded) const;
    /// The end of the last shown column that is indented, where indented cells are cut; -1 when
    /// there is none.
    float IndentationLimit() const;

protected:
    /// Measures columns and rows and sets the scroll bars accordingly.
    void UpdateColumnSizesDataRectSizeScrollBars();

private:
    // ColumnOwner
    void ColumnWidened(CLVColumn& column) override;
    void ColumnShownChanged(CLVColumn& column) override;

    bool HasExpanderColumn() const;
    void RelayOutFrom(float left);
    void MoveBehind(const CLVColumn& column);
    void ForgetContainer();
    void UpdateScrollBars();
    void ScrollBackToData();
    void InvalidateSortKeys();
    int PlainCompare(const CLVListItem* a, const CLVListItem* b) const;
    static int CompareRows(const void* a, const void* b);
    static int ComparePlaces(const void* a, const void* b);
    void SortFlat();
    void SortOutline();
    void SortFullListSegment(std::vector<CLVListItem*>& rows) const;
    void SortListArray(CLVListItem** rows, int32 count) const;
    int32 VisibleIndexOf(const CLVListItem* row) const;
    int32 VisibleIndexBefore(int32 fullIndex) const;
    bool ShowRows(BList& rows, int32 visibleIndex);
    void HideRows(int32 visibleIndex, int32 count);
    void ToggleExpansion(CLVListItem* row);
    bool WalkOutline(char key);
    void SelectRow(const CLVListItem* row);
    void RowsChanged();
    bool RemoveFullItems(int32 index, int32 count);

    BList fColumns;       // CLVColumn*, order of adding, owned
    BList fDisplayed;     // CLVColumn*, left to right
    BList fSortKeys;      // CLVColumn*, primary first
    OutlineRows fOutline; // all rows, outlines only
    const bool fIsHierarchical;
    int32 fExpanderColumn = -1;
    CompareFunction fCompare = nullptr;
    float fDataWidth = 0;
    float fDataHeight = 0;
    std::unique_ptr<PrefilledBitmap> fRightArrow;
    std::unique_ptr<PrefilledBitmap> fDownArrow;
    CLVColumnLabelView* fStrip = nullptr;   // a child of the container
    CLVContainerView* fContainer = nullptr; // its parent deletes it, or we when it has none
};

} // namespace norvane
