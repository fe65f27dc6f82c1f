#include "panes/RowRenaming.h"

#include "clv/ColumnListView.h"
#include "panes/PaneRows.h"
#include "panes/ScrollIntoSight.h"

#include <cmath>

namespace norvane {

namespace {

constexpr int32 kNameColumn = 1;

} // namespace

void RowRenaming::Begin(int32 index, const TypedName* typed)
{
    DirListItem* row = fRows.RowAt(index);
    if (row == nullptr || row->IsParent() || fList.ColumnAt(kNameColumn) == nullptr ||
        fList.Window() == nullptr) {
        return;
    }
    Drop();
    const BRect cell = NameCell(index);
    fList.ScrollTo(ScrolledToShow(fList.Bounds(), cell));
    fField.Open(&fList, row, index, cell, typed);
}

std::optional<RowRenaming::Typed> RowRenaming::Ended(bool isCommitted)
{
    if (!fField.IsMeant()) {
        return std::nullopt;
    }
    Typed typed{fField.Row(), fField.Typed()};
    GiveFocusBack(fField.Close());
    if (!isCommitted || typed.name.text == typed.row->LeafName()) {
        return std::nullopt;
    }
    return typed;
}

void RowRenaming::Drop()
{
    if (IsOpen()) {
        GiveFocusBack(fField.Drop());
    }
}

void RowRenaming::GiveFocusBack(bool hadFocus)
{
    // Also where it went to another view: the list then shows that nothing in it has the focus.
    fList.MakeFocus(hadFocus || fList.IsFocus());
}

void RowRenaming::Forget(const DirListItem* row)
{
    if (fField.Row() == row) {
        Drop();
    }
}

void RowRenaming::Follow()
{
    if (!IsOpen()) {
        return;
    }
    const int32 index = fRows.IndexOf(fField.Row());
    if (index < 0) {
        Drop(); // it is filtered away
    } else {
        fField.MoveTo(NameCell(index));
    }
}

BRect RowRenaming::NameCell(int32 index) const
{
    const CLVColumn& column = *fList.ColumnAt(kNameColumn);
    BRect cell = fList.ItemFrame(index);
    cell.left = column.Begin();
    cell.right = cell.left + std::round(column.Width());
    return cell;
}

} // namespace norvane
