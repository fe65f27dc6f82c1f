#pragma once

#include <Font.h>
#include <View.h>

#include <vector>

namespace norvane {

class CLVColumn;
class ColumnListView;

/// The strip of column headers above the rows of a ColumnListView: labels, sort marks, resizing.
class CLVColumnLabelView : public BView
{
public:
    CLVColumnLabelView(BRect frame, ColumnListView* list, const BFont* labelFont);

    // BView
    void Describe(BViewDescription* description) const override;
    void Draw(BRect updateRect) override;
    void MouseDown(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* message) override;
    void MouseUp(BPoint where) override;

    /// Ends the gesture that goes on on this column's cell or edge: it is not seen any more.
    void ForgetColumn(const CLVColumn& column);
    /// Repaints the header cell of a column.
    void InvalidateColumn(const CLVColumn& column);
    /// Shows whether the list has the focus; used where no other header says so.
    void SetHighlighted(bool isHighlighted);

private:
    enum class Gesture { kNone, kPress, kResize };

    void DrawCell(BRect cell, const CLVColumn& column, bool isPressed);
    void DrawSortMark(BRect cell, const CLVColumn& column);
    void DrawFrame(BRect cell, rgb_color face);
    void SortBy(const CLVColumn& column, bool isAdding);
    void Resize(BPoint where);
    void EndGesture();
    uint32 HeldModifiers() const;
    uint32 HeldButtons(uint32 unknown) const;
    float PlaceOnStrip(BPoint where) const;
    CLVColumn* LeftOf(const CLVColumn& column) const;
    CLVColumn* EdgeAt(BPoint where) const;
    CLVColumn* CellAt(BPoint where) const;

    ColumnListView* fList; // owns the container that owns this view
    BFont fFont;
    Gesture fGesture = Gesture::kNone;
    CLVColumn* fGestureColumn = nullptr;
    float fPressPlace = 0;  // where a resize began, from the strip's left edge
    float fPressWidth = 0;  // of the column then
    bool fIsAdding = false; // Shift was held at the press
    bool fIsPressedInside = false;
    bool fIsHighlighted = false;
};

} // namespace norvane
