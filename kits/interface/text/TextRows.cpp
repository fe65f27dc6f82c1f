#include "TextRows.h"

#include <algorithm>
#include <cmath>

namespace kits {

namespace {

// Sums of such parts of a row are exact.
constexpr double kParts = 16;

} // namespace

void TextRows::Reset(int32 lines, double usual)
{
    fUsual = std::max(1.0, std::round(usual * kParts) / kParts);
    fIsCounted.assign(static_cast<size_t>(lines), 0);
    fRows.Clear();
    fRows.Insert(0, lines, fUsual);
}

void TextRows::Replace(int32 first, int32 removed, int32 inserted)
{
    first = std::clamp(first, 0, CountLines());
    removed = std::clamp(removed, 0, CountLines() - first);
    fRows.Remove(first, removed);
    fRows.Insert(first, inserted, fUsual);
    const auto place = fIsCounted.begin() + first;
    fIsCounted.insert(fIsCounted.erase(place, place + removed), static_cast<size_t>(inserted), 0);
}

bool TextRows::Set(int32 line, int32 rows)
{
    const bool isNews = fRows.Extent(line) != rows;
    fRows.Set(line, rows);
    fIsCounted[static_cast<size_t>(line)] = 1;
    return isNews;
}

int32 TextRows::FirstRow(int32 line) const
{
    return static_cast<int32>(std::floor(fRows.Top(line)));
}

int32 TextRows::LineAt(int32 row) const
{
    const int32 line = std::max<int32>(fRows.RowAt(row), 0);
    // The next line may begin within this row, which is its own then.
    return line + 1 < CountLines() && FirstRow(line + 1) <= row ? line + 1 : line;
}

} // namespace kits
