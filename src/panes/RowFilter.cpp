#include "panes/RowFilter.h"

#include "panes/DirListItem.h"
#include "panes/PaneRows.h"

#include <List.h>

#include <algorithm>
#include <cstddef>

namespace norvane {

namespace {

constexpr std::size_t kMostTexts = 254;

} // namespace

int32 RowFilter::CountRows() const
{
    return fIsOn ? static_cast<int32>(fRows.size()) : fShown.CountRows();
}

DirListItem* RowFilter::RowAt(int32 index) const
{
    return fIsOn ? fRows[static_cast<std::size_t>(index)] : fShown.RowAt(index);
}

const std::string& RowFilter::Text() const
{
    static const std::string none;
    return fTexts.empty() ? none : fTexts.back().Text();
}

void RowFilter::Begin()
{
    if (fIsOn) {
        return;
    }
    const int32 count = fShown.CountRows();
    fRows.resize(static_cast<std::size_t>(count));
    for (int32 i = 0; i < count; i++) {
        fRows[static_cast<std::size_t>(i)] = fShown.RowAt(i);
    }
    fLevels.assign(fRows.size(), 0);
    fIsOn = true;
}

void RowFilter::End()
{
    SetText("");
    fIsOn = false;
    fRows = {}; // the memory, too
    fLevels = {};
}

bool RowFilter::SetText(const std::string& text)
{
    const NamePart part(text);
    std::size_t kept = fTexts.size();
    while (kept > 0 && !part.IsNarrowerThan(fTexts[kept - 1])) {
        kept--;
    }
    kept = kept < kMostTexts ? kept : 0;
    const bool isNew = !text.empty() && (kept == 0 || fTexts[kept - 1].Text() != text);
    fTexts.erase(fTexts.begin() + static_cast<std::ptrdiff_t>(kept), fTexts.end());
    if (isNew) {
        fTexts.push_back(part);
    }
    const auto last = static_cast<uint8>(fTexts.size());
    bool isChanged = false;
    for (std::size_t i = 0; i < fRows.size(); i++) {
        const uint8 level = fLevels[i];
        if (level != 0 && level <= kept) {
            continue; // it went by a text that is still there
        }
        DirListItem* row = fRows[i];
        const bool isHidden = isNew && !row->IsParent() && !part.IsIn(row->LeafName());
        fLevels[i] = isHidden ? last : 0;
        if (fLevels[i] != level) {
            isChanged = isChanged || isHidden != (level != 0);
            Hide(row, fLevels[i]);
        }
    }
    return isChanged;
}

/// Hides a row by a text, or by 0 shows it.
void RowFilter::Hide(DirListItem* row, uint8 level)
{
    CountOut(*row);
    row->SetHiddenBy(level);
    CountIn(*row);
}

void RowFilter::CountOut(const DirListItem& row)
{
    if (row.IsFilteredAway()) {
        fHiddenTotals.Remove(row);
    }
}

void RowFilter::CountIn(const DirListItem& row)
{
    if (row.IsFilteredAway()) {
        fHiddenTotals.Add(row);
    }
}

BList RowFilter::Shown() const
{
    const auto count = std::count(fLevels.begin(), fLevels.end(), 0);
    BList shown(static_cast<int32>(count) + 1);
    for (std::size_t i = 0; i < fRows.size(); i++) {
        if (fLevels[i] == 0) {
            shown.AddItem(fRows[i]);
        }
    }
    return shown;
}

int32 RowFilter::ShownBefore(int32 index) const
{
    if (!fIsOn) {
        return index;
    }
    return static_cast<int32>(std::count(fLevels.begin(), fLevels.begin() + index, 0));
}

void RowFilter::Clear()
{
    fRows.clear();
    fLevels.clear();
    fHiddenTotals = {};
}

void RowFilter::SetRows(const BList& rows)
{
    const auto count = static_cast<std::size_t>(rows.CountItems());
    fRows.resize(count);
    fLevels.resize(count);
    for (std::size_t i = 0; i < count; i++) {
        fRows[i] = static_cast<DirListItem*>(rows.ItemAt(static_cast<int32>(i)));
        fLevels[i] = fRows[i]->HiddenBy();
    }
}

uint8 RowFilter::LevelOf(const DirListItem& row) const
{
    if (row.IsParent()) {
        return 0;
    }
    const auto text = std::find_if(fTexts.begin(), fTexts.end(), [&](const NamePart& part) {
        return !part.IsIn(row.LeafName());
    });
    return text == fTexts.end() ? 0 : static_cast<uint8>(text - fTexts.begin() + 1);
}

bool RowFilter::Judge(DirListItem* row)
{
    const uint8 before = row->HiddenBy();
    Hide(row, LevelOf(*row));
    return row->HiddenBy() != before;
}

void RowFilter::Insert(int32 index, DirListItem* row)
{
    fRows.insert(fRows.begin() + index, row);
    fLevels.insert(fLevels.begin() + index, row->HiddenBy());
}

void RowFilter::Remove(int32 index)
{
    fRows.erase(fRows.begin() + index);
    fLevels.erase(fLevels.begin() + index);
}

void RowFilter::Move(int32 from, int32 to)
{
    DirListItem* row = RowAt(from);
    Remove(from);
    Insert(to, row);
}

} // namespace norvane
