#include "PanelFolder.h"

#include "PanelLink.h"
#include "PanelMemory.h"

#include "kernel/WorkerThread.h"

#include <Collator.h>
#include <Directory.h>
#include <EntryBatch.h>
#include <FindDirectory.h>
#include <Message.h>
#include <Node.h>
#include <NodeInfo.h>
#include <Path.h>
#include <Volume.h>
#include <VolumeRoster.h>

#include <sys/stat.h>

#include <algorithm>
#include <cstring>
#include <numeric>
#include <utility>

namespace kits {

namespace {

std::string HomeFolder()
{
    BPath home;
    return find_directory(B_USER_DIRECTORY, &home) == B_OK ? home.Path() : "/";
}

std::string Resolved(const std::string& path)
{
    if (path.empty()) {
        const std::string last = LastPanelFolder();
        return !last.empty() && BEntry(last.c_str(), true).IsDirectory() ? last : HomeFolder();
    }
    if (path == "~" || path.starts_with("~/")) {
        return HomeFolder().append(path, 1);
    }
    return path;
}

/// The folders that hold this one, then the person's, then the volumes.
std::vector<std::string> FindPlaces(const std::string& folder)
{
    std::vector<std::string> places;
    for (std::string above = folder; above != "/";) {
        above.resize(std::max<size_t>(above.rfind('/'), 1));
        places.push_back(above);
    }
    if (!places.empty()) {
        places.emplace_back();
    }
    const auto add = [&places](const BPath& path) {
        if (std::find(places.begin(), places.end(), path.Path()) == places.end()) {
            places.emplace_back(path.Path());
        }
    };
    for (const directory_which which : {B_USER_DIRECTORY, B_DESKTOP_DIRECTORY}) {
        BPath path;
        if (find_directory(which, &path) == B_OK && BEntry(path.Path()).Exists()) {
            add(path);
        }
    }
    BVolumeRoster roster;
    BVolume volume;
    BDirectory root;
    while (roster.GetNextVolume(&volume) == B_OK) {
        BPath path;
        if (volume.IsPersistent() && volume.GetRootDirectory(&root) == B_OK &&
            path.SetTo(&root) == B_OK) {
            add(path);
        }
    }
    return places;
}

/// The places of the entries: folders first, then in the order of people's language. Names that
/// are one to that stand by their bytes, so that they stay where they are.
std::vector<uint32> OrderOf(const std::vector<PanelFolder::Entry>& entries)
{
    std::vector<const char*> names;
    names.reserve(entries.size());
    for (const PanelFolder::Entry& entry : entries) {
        names.push_back(entry.ref.name);
    }
    BCollator collator;
    collator.SetNumericSorting(true);
    const std::vector<uint32> ranks = collator.Ranks(names);
    std::vector<uint32> order(entries.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](uint32 a, uint32 b) {
        const bool isFolder = entries[a].IsFolder();
        if (isFolder != entries[b].IsFolder()) {
            return isFolder;
        }
        return ranks[a] != ranks[b] ? ranks[a] < ranks[b] : std::strcmp(names[a], names[b]) < 0;
    });
    return order;
}

} // namespace

bool PanelFolder::Entry::IsFolder() const
{
    return S_ISDIR(mode);
}

struct PanelReading::Shared
{
    std::string path;
    BMessenger told;
    std::atomic<bool> isLetGo{false};

    std::shared_ptr<PanelLink> link;

    std::mutex mutex;
    std::unique_ptr<PanelFolder> folder; // null until it is read; guarded by the mutex

    void Do();
    void Read(PanelFolder* read);
    bool Passes(const entry_ref& ref);
    status_t ReadEntries(const BDirectory& directory, PanelFolder* read);
};

void PanelReading::Shared::Do()
{
    auto read = std::make_unique<PanelFolder>();
    Read(read.get());
    {
        const std::lock_guard lock(mutex);
        folder = std::move(read);
    }
    if (!isLetGo) {
        told.SendMessage(kPanelFolderRead);
    }
}

void PanelReading::Shared::Read(PanelFolder* read)
{
    BEntry entry(Resolved(path).c_str(), true);
    BPath found;
    read->status = entry.InitCheck();
    if (read->status == B_OK) {
        read->status = entry.GetPath(&found);
    }
    if (read->status == B_OK && !entry.Exists()) {
        read->status = B_ENTRY_NOT_FOUND;
    }
    if (read->status != B_OK) {
        return;
    }
    if (!entry.IsDirectory()) {
        read->isFile = true;
        read->status = entry.GetRef(&read->chosen);
        read->isPassed = read->status == B_OK && (!link->HasFilter() || Passes(read->chosen));
        BPath parent;
        found.GetParent(&parent);
        read->path = parent.Path();
        return;
    }
    read->path = found.Path();
    read->places = FindPlaces(read->path);
    entry.GetRef(&read->ref);
    const BDirectory directory(&entry);
    read->status = directory.InitCheck();
    if (read->status == B_OK) {
        read->status = ReadEntries(directory, read);
    }
}

bool PanelReading::Shared::Passes(const entry_ref& ref)
{
    const BEntry entry(&ref, true);
    BNode node(&entry);
    struct stat st = {};
    if (node.GetStat(&st) != B_OK) {
        return false;
    }
    char type[B_MIME_TYPE_LENGTH] = {};
    BNodeInfo(&node).GetType(type);
    return link->Passes(ref, &node, &st, type);
}

status_t PanelReading::Shared::ReadEntries(const BDirectory& directory, PanelFolder* read)
{
    BEntryBatch batch;
    const status_t status = batch.SetTo(directory);
    while (status == B_OK && !isLetGo && batch.StatNext()) {
    }
    if (status != B_OK || isLetGo) {
        return status;
    }
    std::vector<PanelFolder::Entry> entries;
    const bool isFiltered = link->HasFilter();
    for (int32 i = 0; i < batch.CountItems() && !isLetGo; ++i) {
        const BEntryBatch::Item& item = batch.ItemAt(i);
        PanelFolder::Entry entry;
        if (item.status != B_OK || batch.GetRef(i, &entry.ref) != B_OK) {
            continue;
        }
        entry.mode = item.mode;
        if (S_ISLNK(item.mode)) {
            struct stat st = {};
            entry.mode = BEntry(&entry.ref, true).GetStat(&st) == B_OK ? st.st_mode : item.mode;
        }
        if (entry.IsFolder() || !isFiltered || Passes(entry.ref)) {
            entries.push_back(std::move(entry));
        }
    }
    for (const uint32 index : OrderOf(entries)) {
        read->entries.push_back(std::move(entries[index]));
    }
    return B_OK;
}

PanelReading::PanelReading(std::string path, std::shared_ptr<PanelLink> link,
                           const BMessenger& told)
    : fShared(std::make_shared<Shared>())
{
    fShared->path = std::move(path);
    fShared->link = std::move(link);
    fShared->told = told;
    if (StartDetached("panel folder", [shared = fShared] { shared->Do(); }) != B_OK) {
        fShared->Do();
    }
}

PanelReading::~PanelReading()
{
    fShared->isLetGo = true;
}

std::unique_ptr<PanelFolder> PanelReading::Take()
{
    const std::lock_guard lock(fShared->mutex);
    return std::move(fShared->folder);
}

} // namespace kits
