#include "panes/ListingJob.h"

#include "panes/DatePattern.h"
#include "panes/FolderReader.h"
#include "panes/LinkTargets.h"

#include <NodeMonitor.h>

#include <mutex>
#include <utility>

namespace norvane {

class ListingJob::Reader : public RowsReader
{
public:
    Reader(std::string folder, OpenOrder order)
        : fPath(std::move(folder)), fOrder(std::move(order)), fLinks(fOrder.list)
    {
    }

    WatchedFolder TakeFolder();
    bool IsTrash();

    // RowsReader
    status_t Read(Notes& notes, ListedRows* rows) override;
    void LetGo() override;

private:
    const std::string fPath;
    const OpenOrder fOrder;
    LinkTargets fLinks; // the thread's

    std::mutex fMutex; // guards all below
    WatchedFolder fFolder;
    bool fIsTrash = false;
    bool fIsWatching = false; // and nobody took it
};

status_t ListingJob::Reader::Read(Notes& notes, ListedRows* rows)
{
    FolderReader reader;
    status_t status = reader.Open(fPath);
    if (status != B_OK) {
        return status;
    }
    WatchedFolder folder{reader.Node(), reader.Ref(), fOrder.watcher, B_OK};
    const bool isTrash = reader.IsTrash();
    const bool isToWatch = fOrder.watcher.IsValid();
    status = isToWatch ? reader.WatchAndReadNames(B_WATCH_ENTRIES | B_WATCH_NAME, fOrder.watcher,
                                                  &folder.status)
                       : reader.ReadNames();
    {
        const std::lock_guard lock(fMutex);
        fIsWatching = isToWatch && folder.status == B_OK;
        fFolder = std::move(folder);
        fIsTrash = isTrash;
    }
    const auto note = [&] { // with the row ".."
        return notes.Note(reader.CountEntries() + 1, reader.CountRead());
    };
    bool isWanted = status == B_OK && note();
    while (isWanted && reader.ReadMore()) {
        isWanted = note();
    }
    if (isWanted) {
        reader.TakeRows(DatePattern::For(fOrder.dateFormat), fLinks, rows->folders, rows->files);
        const std::lock_guard lock(fMutex);
        fFolder.awaitsLinks = reader.HasLeftLinksOut();
    }
    return status;
}

void ListingJob::Reader::LetGo()
{
    WatchedFolder folder;
    {
        const std::lock_guard lock(fMutex);
        if (!std::exchange(fIsWatching, false)) {
            return;
        }
        folder = fFolder;
    }
    watch_node(&folder.node, B_STOP_WATCHING, folder.watcher);
}

WatchedFolder ListingJob::Reader::TakeFolder()
{
    const std::lock_guard lock(fMutex);
    fIsWatching = false;
    return fFolder;
}

bool ListingJob::Reader::IsTrash()
{
    const std::lock_guard lock(fMutex);
    return fIsTrash;
}

ListingJob::ListingJob(const std::string& folder, const OpenOrder& order)
    : ListingJob(std::make_shared<Reader>(folder, order), order)
{
}

ListingJob::ListingJob(const std::shared_ptr<Reader>& reader, const OpenOrder& order)
    : RowsJob(reader, order), fReader(reader)
{
}

WatchedFolder ListingJob::TakeFolder()
{
    return fReader->TakeFolder();
}

bool ListingJob::IsTrash()
{
    return fReader->IsTrash();
}

} // namespace norvane
