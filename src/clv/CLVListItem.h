#pragma once

#include <List.h>
#include <ListItem.h>
#include <Rect.h>

#include <atomic>

class BBitmap;

namespace norvane {

class ColumnListView;
class CLVColumn;
class OutlineRows;

/// A row of a ColumnListView, drawn column by column.
///
/// Ownership: the list only borrows rows; whoever added them deletes them.
class CLVListItem : public BListItem
{
public:
    static constexpr float kIndentation = 20;

    explicit CLVListItem(uint32 level = 0, bool isSuperitem = false, bool isExpanded = false,
                         float minimumHeight = 0);
    ~CLVListItem() override;

    // BListItem
    void DrawItem(BView* owner, BRect itemRect, bool complete = false) override;
    void Update(BView* owner, const BFont* font) override;

    /// Draws one cell; `columnIndex` counts in the order of adding, -1 is the area right of the
    /// last column.
    virtual void DrawItemColumn(BView* owner, BRect columnRect, int32 columnIndex,
                                bool complete) = 0;

    bool IsSuperItem() const { return fIsSuperitem; }
    void SetSuperItem(bool isSuperitem) { fIsSuperitem = isSuperitem; }
    uint32 OutlineLevel() const { return fLevel; }
    void SetOutlineLevel(uint32 level);
    /// Grows whenever a row that is in an outline changes its level. Thread: any.
    static uint32 LevelChanges() { return sLevelChanges; }
    /// The row's indentation in the column at a place of the display order.
    float ExpanderShift(int32 displayIndex, BView* owner) const;
    /// Where a click expands or collapses the row; (-1,-1,-1,-1) until drawn or when there is no
    /// arrow.
    BRect ExpanderButtonRect() const { return fExpanderButton; }
    /// The row's cell in the expander column; (-1,-1,-1,-1) until drawn.
    BRect ExpanderColumnRect() const { return fExpanderColumn; }

private:
    friend class ColumnListView;
    friend class OutlineRows;

    /// Where the row is in an outline: kept there, so that nobody has to search for it.
    struct Place
    {
        const OutlineRows* outline = nullptr; // compared only: it may be gone
        CLVListItem* superitem = nullptr;
        int32 below = 0;      // rows below it
        int32 index = 0;      // about where it is among all rows
        int32 shownIndex = 0; // and among those shown
        bool isShown = false;
    };

    void DrawExpanderCell(ColumnListView& list, const CLVColumn& column, BRect cell, bool complete,
                          bool isVisible);

    static std::atomic<uint32> sLevelChanges;

    uint32 fLevel;
    bool fIsSuperitem;
    float fMinimumHeight;
    BRect fExpanderButton{-1, -1, -1, -1};
    BRect fExpanderColumn{-1, -1, -1, -1};
    // A sort's callback receives two rows and nothing else.
    ColumnListView* fSortOwner = nullptr;
    int32 fSortPlace = 0;
    mutable Place fPlace;
};

} // namespace norvane
