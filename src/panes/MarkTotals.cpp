#include "panes/MarkTotals.h"

#include "panes/DirListItem.h"
#include "panes/RowTexts.h"

namespace norvane {

void MarkTotals::Count(const DirListItem& row, int64 sign)
{
    if (row.IsFilteredAway()) {
        unseen += sign;
        return;
    }
    rows += sign;
    if (row.IsDir() && !row.IsMeasured()) {
        folders += sign;
    } else {
        bytes += sign * row.SizeShown();
    }
}

std::string MarkTotals::Text() const
{
    std::string text;
    if (rows > 0) {
        text = std::to_string(rows) + " marked";
        if (folders > 0) {
            text += " (" + std::to_string(folders) + (folders == 1 ? " folder)" : " folders)");
        }
        if (rows > folders) {
            text += ", " + ReadableSize(bytes);
        }
    }
    if (unseen > 0) {
        text += (text.empty() ? "" : "; ") + std::to_string(unseen) + " marked out of sight";
    }
    return text;
}

} // namespace norvane
