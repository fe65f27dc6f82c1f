#include "panes/QuerySource.h"

#include "panes/FolderSource.h"
#include "panes/HitsReader.h"
#include "panes/PaneRows.h"

#include <EntryChanges.h>

#include <algorithm>
#include <utility>

namespace norvane {

QuerySource::QuerySource(const BMessage& results, std::string folder) : fFolder(std::move(folder))
{
    const char* query = nullptr;
    if (results.FindString("QueryString", &query) == B_OK) {
        fQuery = query;
    }
    char* field = nullptr;
    type_code type = 0;
    int32 count = 0;
    if (results.GetInfo(B_REF_TYPE, 0, &field, &type, &count) != B_OK) {
        return;
    }
    entry_ref ref;
    for (int32 i = 0; i < count; i++) {
        if (results.FindRef(field, i, &ref) == B_OK) {
            fHits.push_back(ref);
        }
    }
}

RowsJob& QuerySource::StartReading(const OpenOrder& order)
{
    fReader = std::make_shared<HitsReader>(std::exchange(fHits, {}), order);
    fJob = std::make_unique<RowsJob>(fReader, order);
    return *fJob;
}

void QuerySource::TakeOver()
{
    fFolders = fReader->TakeFolders();
}

void QuerySource::NodeChanged(const BMessage& notice, PaneRows& rows)
{
    BEntryChanges changes(notice);
    if (changes.InitCheck() != B_OK) {
        return;
    }
    const auto folder =
        std::find_if(fFolders.begin(), fFolders.end(), [&](const HitFolder& candidate) {
            return candidate.node == changes.Folder();
        });
    if (folder == fFolders.end()) {
        return;
    }
    rows.BeginChanges();
    BEntryChange change;
    while (changes.GetNext(&change)) {
        ApplyToHits(change, folder->path, rows);
    }
    rows.EndChanges();
}

std::unique_ptr<RowSource> QuerySource::Up() const
{
    return std::make_unique<FolderSource>(fFolder);
}

std::unique_ptr<RowSource> QuerySource::Into(const DirListItem& row) const
{
    return row.IsEnterable() ? std::make_unique<FolderSource>(PathOf(row)) : nullptr;
}

std::unique_ptr<RowSource> QuerySource::GoTo(const std::string& folder)
{
    fFolder = folder;
    return nullptr;
}

EntryWork QuerySource::Renaming(const DirListItem& row, const std::string& newName) const
{
    return RenamingEntry(*row.GetRef(), newName);
}

std::optional<OperationRequest> QuerySource::Delete(const std::vector<DirListItem*>&, bool)
{
    return std::nullopt;
}

std::unique_ptr<BMessage> QuerySource::MessageFor(const std::vector<DirListItem*>& rows) const
{
    return LocalEntries(rows, fQuery);
}

DropMeaning QuerySource::MeaningOf(const BMessage&, const DirListItem*) const
{
    return {DropMeaning::Act::kRefuse, "Foo",
            "This view contains Query Results. You cannot copy or move to it."};
}

} // namespace norvane
