#include "panes/DirView.h"

#include <utility>

// The order that rows are in where a person wants it by columns.

namespace norvane {

void DirView::SetSortKey(int32 columnIndex)
{
    ColumnListView::SetSortKey(columnIndex);
    SortingChanged();
}

void DirView::AddSortKey(int32 columnIndex)
{
    ColumnListView::AddSortKey(columnIndex);
    SortingChanged();
}

void DirView::SetSortMode(int32 columnIndex, CLVSortMode mode)
{
    ColumnListView::SetSortMode(columnIndex, mode);
    SortingChanged();
}

RowSorting DirView::SortingChosen(const Preferences& preferences) const
{
    std::vector<RowSorting::Key> chosen;
    if (preferences.sortsByColumns) {
        std::vector<int32> keys(static_cast<std::size_t>(CountColumns()));
        std::vector<CLVSortMode> modes(keys.size());
        const int32 count = Sorting(keys.data(), modes.data());
        for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
            chosen.push_back({keys[i], modes[i] == Descending});
        }
    }
    return RowSorting(std::move(chosen));
}

/// A server's own order is known by asking it again alone. Hits have none.
void DirView::SortingChanged()
{
    const bool wasListings = fRows.Sorting().IsListings();
    fRows.SetSorting(SortingChosen(fPreferences));
    if (!wasListings && fRows.Sorting().IsListings() && Mode() == kFtpMode) {
        Refresh();
    }
}

RowsToSort DirView::ToSort(const Preferences& preferences) const
{
    const RowSorting sorting = SortingChosen(preferences);
    return sorting.IsListings() ? RowsToSort() : fRows.ToSort(sorting);
}

} // namespace norvane
