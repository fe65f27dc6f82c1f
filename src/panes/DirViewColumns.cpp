#include "MessageCodes.h"
#include "clv/CLVColumn.h"
#include "panes/DatePattern.h"
#include "panes/DirView.h"
#include "panes/RowTexts.h"
#include "panes/ScrollIntoSight.h"
#include "settings/Numbers.h"

#include <Font.h>
#include <Message.h>
#include <Window.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

// Columns, the order of rows, and preferences.

namespace norvane {

namespace {

constexpr std::size_t kDateFormatBytes = 64;

} // namespace

// Columns

void DirView::DisplayOrderChanged(const int32*)
{
    fRename.Follow();
}

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

void DirView::ColumnWidthChanged(int32 columnIndex, float newWidth)
{
    fRename.Follow();
    // A width that the window passes on must not come back to it.
    if (Window() == nullptr || fIsTakingWidth) {
        return;
    }
    char text[16];
    BMessage message(kColumnResized);
    itoa(columnIndex, text);
    message.AddString("ColumnIndex", text);
    itoa(static_cast<int>(std::lround(newWidth)), text);
    message.AddString("ColumnWidth", text);
    Window()->PostMessage(&message);
}

int DirView::ColumnWidth(int32 index) const
{
    const CLVColumn* column = ColumnAt(index);
    return column != nullptr ? static_cast<int>(column->Width()) : -1;
}

void DirView::SetColumnWidth(int32 index, int width)
{
    if (CLVColumn* column = ColumnAt(index)) {
        fIsTakingWidth = true;
        column->SetWidth(static_cast<float>(width));
        fIsTakingWidth = false;
    }
}

// Preferences

void DirView::GetPreferences()
{
    SetDateFormat(DatePattern::kDefault); // stays where the stored one is refused
    SetTo(Preferences::Read());
}

void DirView::SetTo(const Preferences& preferences)
{
    SetDateFormat(preferences.dateFormat.c_str());
    SetProgressFlag(preferences.showsProgress);
    SetHeaderFlag(preferences.showsHeader);
    SetFooterFlag(preferences.showsFooter);
    SetSizeUnits(preferences.showsReadableSizes ? SizeUnits::kReadable : SizeUnits::kKilobytes);
    fRows.SetLeavesOutDotNames(preferences.hidesDotNames);
    TakeFontSize(static_cast<float>(preferences.fontSize));
    fPreferences = preferences;
    SortingChanged();
}

RowsToSort DirView::ToSort(const Preferences& preferences) const
{
    const RowSorting sorting = SortingChosen(preferences);
    return sorting.IsListings() ? RowsToSort() : fRows.ToSort(sorting);
}

void DirView::Apply(const Preferences& preferences)
{
    const bool showsMore = fPreferences.hidesDotNames && !preferences.hidesDotNames;
    const bool isReadAgain = !fPreferences.DiffersInExtrasAlone(preferences);
    const bool hasOtherDates = fPreferences.dateFormat != preferences.dateFormat;
    SetTo(preferences);
    if (hasOtherDates) {
        fRows.RewriteDates();
    }
    if (showsMore) {
        Refresh();
    } else if (isReadAgain) {
        fListing.ReadAgainBehind();
    }
    Invalidate();
    NotifyParent(MSG_PANE_INFO);
}

/// The row at the top stays there, unless that leaves room below the last one or takes the selected
/// row out of sight.
void DirView::TakeFontSize(float size)
{
    BFont font;
    GetFont(&font);
    if (font.Size() == size) {
        return;
    }
    fRename.Drop(); // it has the letters of before
    const int32 top = IndexOf(Bounds().LeftTop());
    const int32 selected = CurrentSelection();
    const bool isSeen = selected >= 0 && Bounds().Intersects(ItemFrame(selected));
    SetFontSize(size);
    if (top < 0) {
        return;
    }
    const float last = ItemFrame(CountItems() - 1).bottom - Bounds().Height();
    ScrollTo(BPoint(Bounds().left, std::max(0.0f, std::min(ItemFrame(top).top, last))));
    if (isSeen) {
        BRect row = ItemFrame(selected);
        row.left = row.right = Bounds().left; // columns stay where they are
        ScrollTo(ScrolledToShow(Bounds(), row));
    }
}

void DirView::SetDateFormat(const char* pattern)
{
    // One that is too long is refused: its first part could mean something else.
    if (std::strlen(pattern) < kDateFormatBytes) {
        fRows.SetDateFormat(pattern);
    }
}

} // namespace norvane
