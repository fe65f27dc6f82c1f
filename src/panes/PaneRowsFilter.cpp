#include "clv/ColumnListView.h"
#include "panes/PaneRows.h"

#include <List.h>

#include <algorithm>

// Rows that a filter keeps out of the list.

namespace norvane {

FolderTotals PaneRows::Totals() const
{
    FolderTotals shown = fTotals;
    shown.files -= fFilter.HiddenTotals().files;
    shown.bytes -= fFilter.HiddenTotals().bytes;
    return shown;
}

void PaneRows::SetFilter(const std::string& text)
{
    BeginFilter();
    const DirListItem* selected = RowAt(fList.CurrentSelection());
    const int32 place = selected != nullptr ? fOrder.IndexOf(selected) : 0;
    if (fFilter.SetText(text)) {
        fMarkedChanges++;
        const BList shown = fFilter.Shown();
        fList.SetItems(&shown);
    }
    if (!text.empty()) {
        SelectFiltered(selected, place);
    }
    fList.ScrollToSelection();
    fListener.RowsChanged();
}

/// Selects what a person goes on with: what was selected at a place among all rows, else what
/// follows it, else what comes before; never "..", which every text leaves there.
void PaneRows::SelectFiltered(const DirListItem* selected, int32 place)
{
    const bool isAnywhere = selected == nullptr || selected->IsParent();
    if (!isAnywhere && !selected->IsFilteredAway()) {
        return;
    }
    const int32 first = CountRows() > 0 && RowAt(0)->IsParent() ? 1 : 0;
    const int32 next = isAnywhere ? first : fFilter.ShownBefore(place);
    if (first < CountRows()) {
        fList.Select(std::clamp(next, first, CountRows() - 1));
    } else {
        fList.DeselectAll();
    }
}

void PaneRows::EndFilter()
{
    if (!fFilter.IsOn()) {
        return;
    }
    SetFilter("");
    fFilter.End();
}

/// Puts a row that changed at its new place, among all, and into the list or out of it.
void PaneRows::PlaceFiltered(DirListItem* row, int32 from, int32 to)
{
    const bool wasShown = !row->IsFilteredAway();
    const bool isFollowed = wasShown && IsFollowed(row);
    const int32 shownFrom = fFilter.ShownBefore(from);
    fMarkedChanges += fFilter.Judge(row) ? 1 : 0;
    fFilter.Move(from, to);
    const int32 shownTo = fFilter.ShownBefore(to);
    if (row->IsFilteredAway()) {
        if (wasShown) {
            TakeOut(shownFrom);
        }
        return;
    }
    if (!wasShown) {
        fList.AddItem(row, shownTo);
        return;
    }
    if (shownFrom != shownTo) {
        fList.MoveItem(shownFrom, shownTo);
        if (isFollowed) {
            fList.ScrollToSelection();
        }
    }
    fList.InvalidateItem(shownTo);
}

} // namespace norvane
