#include "clv/CLVColumn.h"
#include "panes/DirView.h"

#include <Font.h>
#include <String.h>

#include <algorithm>

// What the pointer is told when it rests over a list.

namespace norvane {

namespace {

constexpr int32 kSizeColumn = 2;
constexpr float kTextInset = 2; // as rows draw it

/// "1,234,567 bytes"
std::string ExactBytes(int64 bytes)
{
    std::string digits = std::to_string(bytes);
    for (auto place = static_cast<std::ptrdiff_t>(digits.size()) - 3; place > 0; place -= 3) {
        digits.insert(static_cast<std::size_t>(place), 1, ',');
    }
    return digits + (bytes == 1 ? " byte" : " bytes");
}

} // namespace

/// The full text of a cell that is cut, and the bytes of a size.
std::string DirView::TipTextAt(BPoint where)
{
    const DirListItem* row = RowAt(IndexOf(where));
    for (int32 place = 0; row != nullptr && place < CountDisplayed(); place++) {
        const CLVColumn& column = *DisplayedAt(place);
        if (!column.IsShown() || where.x < column.Begin() || where.x > column.End()) {
            continue;
        }
        const int32 index = IndexOfColumn(&column);
        const char* text = row->Text(index);
        if (index == kSizeColumn && *text >= '0' && *text <= '9') { // of others it is the kind
            return ExactBytes(row->SizeShown());
        }
        const float end = std::min(column.End(), Bounds().right);
        const bool isCut = column.Begin() + kTextInset + StringWidth(text) > end + 1;
        return isCut ? BFont::VisibleText(text).String() : std::string();
    }
    return {};
}

bool DirView::GetToolTipAt(BPoint where, BToolTip** tip)
{
    SetToolTip(TipTextAt(where).c_str());
    return ColumnListView::GetToolTipAt(where, tip);
}

} // namespace norvane
