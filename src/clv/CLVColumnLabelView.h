#pragma once

#include "clv/DragGroups.h"

#include <Font.h>
#include <View.h>

#include <memory>
#include <vector>

class BMessageFilter;
class BMessageRunner;

namespace norvane {

class CLVColumn;
class ColumnListView;

/// The strip of column headers above the rows of a ColumnListView: labels and sort marks. A click
/// sorts, a drag moves a column, a drag of a column's right edge resizes it.
class CLVColumnLabelView : public BView
{
public:
    CLVColumnLabelView(BRect frame, ColumnListView* list, const BFont* labelFont);
    ~CLVColumnLabelView() override;

    // BView
    void AttachedToWindow() override;
    void DetachedFromWindow() override;
    void Describe(BViewDescription* description) const override;
    void Draw(BRect updateRect) override;
    void MessageReceived(BMessage* message) override;
    void MouseDown(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* message) override;
    void MouseUp(BPoint where) override;
    void WindowActivated(bool active) override;

    /// Ends the gesture that goes on on this column's cell or edge: it is not seen any more.
    void ForgetColumn(const CLVColumn& column);
    /// The columns lie elsewhere: one that is being dragged goes back.
    void ColumnsChanged();
    /// Repaints the header cell of a column.
    void InvalidateColumn(const CLVColumn& column);
    /// Shows whether the list has the focus; used where no other header says so.
    void SetHighlighted(bool isHighlighted);
    /// Takes back what the held button has done so far: the place or the width of a column. False
    /// when there was nothing.
    bool CancelGesture();

private:
    enum class Gesture { kNone, kPress, kDrag, kResize };
    enum class CellLook { kFlat, kPressed, kVacant, kLifted };

    /// A column's part of the strip. Cells that share one frame have the same run.
    struct Cell
    {
        CLVColumn* column;
        BRect frame;
        int32 run;
        bool joinsLeft;
        bool joinsRight;
    };

    DragGroups::Columns Displayed() const;
    std::vector<Cell> CellsOf(const DragGroups::Columns& order, float left) const;
    CellLook LookOf(const Cell& cell, int32 pressedRun) const;
    void DrawCell(const Cell& cell, CellLook look);
    void DrawLabel(const Cell& cell, rgb_color face);
    void DrawSortMark(const Cell& cell);
    void DrawFrame(BRect cell, CellLook look);
    void DrawLifted();

    // Gestures (CLVColumnLabelViewMouse.cpp)

    void Press(BPoint where);
    void EndGesture();
    void Resize(BPoint where);
    bool HasMoved(BPoint where) const;
    void BeginDrag();
    void DragTo(BPoint where);
    void Drop();
    void UpdateDragGroups();
    void SetSnapMinMax();
    void ShiftDragGroup(float left);
    bool IsDragged(const CLVColumn* column) const;
    void ScrollForDrag();
    float ScrollStep() const;
    void Click(const CLVColumn& column);
    void SortBy(const CLVColumn& column);
    void ShapePointer(BPoint where, uint32 transit);
    uint32 HeldModifiers() const;
    uint32 HeldButtons(uint32 unknown) const;
    BPoint PlaceOnStrip(BPoint where) const;
    CLVColumn* EdgeAt(BPoint where) const;
    CLVColumn* CellAt(BPoint where) const;

    ColumnListView* fList; // owns the container that owns this view
    BFont fFont;
    std::unique_ptr<BMessageFilter> fKeyFilter; // Escape; the window's while we are in one
    Gesture fGesture = Gesture::kNone;
    CLVColumn* fGestureColumn = nullptr;
    BPoint fPress;          // where it began, from the strip's left top
    BPoint fPointer;        // where it is now, likewise
    float fPressWidth = 0;  // of a resized column then
    bool fIsAdding = false; // Shift was held at the press
    bool fIsHighlighted = false;

    // What a drag moves, and where it has come to.
    DragGroups fGroups;
    std::size_t fDragGroup = 0;
    DragGroups::Limits fSnap{0, 0};
    DragGroups::Columns fShiftedOrder;
    float fGrip = 0; // where in the group it is held
    float fDragLeft = 0;
    std::unique_ptr<BMessageRunner> fScrolling; // while the pointer is at an edge of the strip
};

} // namespace norvane
