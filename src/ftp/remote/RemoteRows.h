#pragma once

#include "ftp/client/RemoteEntry.h"
#include "panes/RowSource.h"

namespace norvane {

/// The rows of a server's folder, in the listing's order; ".." at the top but in "/".
ListedRows RowsOf(const std::vector<RemoteEntry>& entries, const std::string& path);

/// The names of chosen rows that commands may use; of the others only what is shown.
struct RemoteChoice
{
    std::vector<std::string> files;
    std::vector<std::string> folders;
    std::vector<std::string> unusable;
};

RemoteChoice ChoiceOf(const std::vector<DirListItem*>& rows);

} // namespace norvane
