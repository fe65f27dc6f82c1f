#include "panes/FolderTotals.h"

#include "panes/DirListItem.h"
#include "panes/RowTexts.h"

namespace norvane {

void FolderTotals::Add(const DirListItem& row)
{
    if (!row.IsDir()) {
        files++;
        bytes += row.GetSize();
    }
}

void FolderTotals::Remove(const DirListItem& row)
{
    if (!row.IsDir()) {
        files--;
        bytes -= row.GetSize();
    }
}

std::string FooterText(int64 selectedBytes, int64 allBytes, int64 selectedFiles, int64 allFiles)
{
    constexpr int64 kKilobyte = 1024;
    std::string sizes = std::to_string(selectedBytes / kKilobyte) + " of " +
                        std::to_string(allBytes / kKilobyte) + "k";
    if (CurrentSizeUnits() == SizeUnits::kReadable) {
        sizes = ReadableSize(selectedBytes) + " of " + ReadableSize(allBytes);
    }
    return sizes + " in " + std::to_string(selectedFiles) + " of " + std::to_string(allFiles) +
           " files selected";
}

} // namespace norvane
