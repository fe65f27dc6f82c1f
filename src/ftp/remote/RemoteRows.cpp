#include "ftp/remote/RemoteRows.h"

namespace norvane {

ListedRows RowsOf(const std::vector<RemoteEntry>& entries, const std::string& path)
{
    ListedRows rows;
    if (path != "/") {
        rows.folders.push_back(std::make_unique<DirListItem>());
    }
    for (const RemoteEntry& entry : entries) {
        auto row = std::make_unique<DirListItem>(entry.name.c_str(), entry.size.c_str(),
                                                 entry.date.c_str(), entry.permissions.c_str());
        row->SetCommandName(entry.commandName);
        (entry.IsFolder() ? rows.folders : rows.files).push_back(std::move(row));
    }
    return rows;
}

RemoteChoice ChoiceOf(const std::vector<DirListItem*>& rows)
{
    RemoteChoice choice;
    for (const DirListItem* row : rows) {
        const std::string name = row->CommandName();
        if (name.empty()) {
            choice.unusable.emplace_back(row->GetEntryName());
        } else {
            (row->IsDir() ? choice.folders : choice.files).push_back(name);
        }
    }
    return choice;
}

} // namespace norvane
