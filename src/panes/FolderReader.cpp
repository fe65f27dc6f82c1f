#include "panes/FolderReader.h"

#include "fileops/engine/OwnNames.h"

#include <TrashRecord.h>

#include <utility>

namespace norvane {

status_t FolderReader::Open(const std::string& path)
{
    status_t status = fDirectory.SetTo(path.c_str());
    if (status != B_OK) {
        return status;
    }
    status = fDirectory.GetNodeRef(&fNode);
    if (status != B_OK) {
        return status;
    }
    fHasParent = path != "/";
    return B_OK;
}

status_t FolderReader::ReadNames()
{
    return fBatch.SetTo(fDirectory);
}

status_t FolderReader::WatchAndReadNames(uint32 watchFlags, const BMessenger& target,
                                         status_t* watchStatus)
{
    return fBatch.SetTo(fDirectory, watchFlags, target, watchStatus);
}

bool FolderReader::IsTrash() const
{
    return is_trash_folder(&fDirectory);
}

entry_ref FolderReader::Ref() const
{
    entry_ref ref;
    BEntry(&fDirectory, "entry").GetRef(&ref); // which need not exist
    return ref;
}

/// What the links lead to, in the batch's order.
std::vector<int64> FolderReader::FindTargets(LinkTargets& links) const
{
    std::vector<LinkQuestion> questions;
    for (int32 i = 0; i < fBatch.CountItems(); i++) {
        const BEntryBatch::Item& item = fBatch.ItemAt(i);
        entry_ref ref;
        if (S_ISLNK(item.mode) && fBatch.GetRef(i, &ref) == B_OK) {
            questions.push_back({ref, fNode, item});
        }
    }
    return questions.empty() ? std::vector<int64>() : links.FindAll(questions);
}

void FolderReader::TakeRows(const DatePattern& dates, LinkTargets& links,
                            std::vector<std::unique_ptr<DirListItem>>& folders,
                            std::vector<std::unique_ptr<DirListItem>>& files)
{
    fBatch.Sort();
    const std::vector<int64> targets = FindTargets(links);
    std::size_t nextLink = 0;
    if (fHasParent) {
        folders.push_back(std::make_unique<DirListItem>());
    }
    files.reserve(static_cast<std::size_t>(fBatch.CountItems()));
    for (int32 i = 0; i < fBatch.CountItems(); i++) {
        const BEntryBatch::Item& item = fBatch.ItemAt(i);
        entry_ref ref;
        if (fBatch.GetRef(i, &ref) != B_OK) {
            continue;
        }
        const int64 target = S_ISLNK(item.mode) ? targets[nextLink++] : 0;
        fHasLeftLinksOut = fHasLeftLinksOut || target < 0;
        // Gone since the names were read, half of a file that is being replaced, or a link whose
        // disk does not answer.
        if (item.status == B_ENTRY_NOT_FOUND || IsOwnTemporaryName(item.name) || target < 0) {
            continue;
        }
        auto row =
            std::make_unique<DirListItem>(std::move(ref), item, dates, static_cast<mode_t>(target));
        (row->IsDir() ? folders : files).push_back(std::move(row));
    }
}

} // namespace norvane
