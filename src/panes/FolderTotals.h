#pragma once

#include <SupportDefs.h>

#include <string>

namespace norvane {

class DirListItem;

/// How many files a pane shows and how large they are, kept up while rows come and go.
struct FolderTotals
{
    int64 files = 0;
    int64 bytes = 0;

    void Add(const DirListItem& row);
    void Remove(const DirListItem& row);
};

/// The footer's line.
std::string FooterText(int64 selectedBytes, int64 allBytes, int64 selectedFiles, int64 allFiles);

} // namespace norvane
