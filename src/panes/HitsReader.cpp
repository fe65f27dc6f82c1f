#include "panes/HitsReader.h"

#include "HelperThreads.h"
#include "panes/DatePattern.h"
#include "panes/LinkTargets.h"

#include <Path.h>

#include <algorithm>
#include <atomic>
#include <iterator>
#include <span>
#include <sys/stat.h>
#include <utility>

namespace norvane {

namespace {

constexpr size_t kChunkHits = 512;
// Watching a folder reads its names; hits may lie in as many folders as there are.
constexpr size_t kMostWatched = 256;

BEntryRecord RecordOf(const struct stat& st)
{
    BEntryRecord record;
    record.mode = st.st_mode;
    record.owner = st.st_uid;
    record.group = st.st_gid;
    record.node = st.st_ino;
    record.device = st.st_dev;
    record.links = st.st_nlink;
    record.size = st.st_size;
    record.modified = st.st_mtime;
    record.changed = st.st_ctime;
    return record;
}

void Append(std::vector<std::unique_ptr<DirListItem>>* rows,
            std::vector<std::unique_ptr<DirListItem>>& more)
{
    rows->insert(rows->end(), std::make_move_iterator(more.begin()),
                 std::make_move_iterator(more.end()));
}

} // namespace

/// Some hits that stand together, and what was read of them.
class HitsReader::Chunk
{
public:
    struct Link
    {
        LinkQuestion question;
        std::string path;
    };

    void Read(std::span<const entry_ref> hits, const DatePattern& dates, HitsReader& reader);
    void AddRow(entry_ref hit, const BEntryRecord& record, mode_t target, std::string path,
                const DatePattern& dates);

    ListedRows rows;
    std::vector<Link> links;

private:
    void ReadHit(const entry_ref& hit, const DatePattern& dates, HitsReader& reader);
    void EnterFolder(const entry_ref& hit, const BEntry& entry, HitsReader& reader);

    // The folder of the last hit.
    node_ref fNode;
    std::string fPath; // with a slash at its end; empty: it cannot be read
};

/// What the threads share.
class HitsReader::Work
{
public:
    Work(HitsReader& reader, const DatePattern& dates)
        : fReader(reader), fHits(reader.fHits), fDates(dates),
          chunks((fHits.size() + kChunkHits - 1) / kChunkHits)
    {
    }

    /// Reads the next hits; false when none are left or nobody wants them.
    bool ReadNext();
    int32 CountRead() const { return fRead; }
    void Stop() { fNext = chunks.size(); }

private:
    HitsReader& fReader;
    const std::span<const entry_ref> fHits;
    const DatePattern& fDates;
    std::atomic<size_t> fNext{0};
    std::atomic<int32> fRead{0};

public:
    std::vector<Chunk> chunks; // each is one thread's while it is read
};

bool HitsReader::Work::ReadNext()
{
    const size_t chunk = fNext.fetch_add(1);
    if (chunk >= chunks.size()) {
        return false;
    }
    const size_t begin = chunk * kChunkHits;
    const size_t count = std::min(kChunkHits, fHits.size() - begin);
    chunks[chunk].Read(fHits.subspan(begin, count), fDates, fReader);
    fRead.fetch_add(static_cast<int32>(count));
    return true;
}

HitsReader::HitsReader(std::vector<entry_ref> hits, const OpenOrder& order)
    : fHits(std::move(hits)), fDateFormat(order.dateFormat), fWatcher(order.list)
{
}

/// Before a hit of the folder is looked at, so that nothing is missed in between.
void HitsReader::Watch(const node_ref& node, const std::string& path)
{
    if (!fWatcher.IsValid()) {
        return;
    }
    const std::lock_guard lock(fMutex);
    const bool isWatched =
        std::any_of(fFolders.begin(), fFolders.end(),
                    [&](const HitFolder& folder) { return folder.node == node; });
    if (isWatched || fFolders.size() == kMostWatched) {
        return;
    }
    auto watch = std::make_unique<HitWatch>(node, fWatcher);
    if (watch->IsOn()) {
        fFolders.push_back({node, path, std::move(watch)});
    }
}

std::vector<HitFolder> HitsReader::TakeFolders()
{
    const std::lock_guard lock(fMutex);
    return std::exchange(fFolders, {});
}

void HitsReader::LetGo()
{
    TakeFolders();
}

status_t HitsReader::Read(Notes& notes, ListedRows* rows)
{
    const DatePattern& dates = DatePattern::For(fDateFormat);
    const auto count = static_cast<int32>(fHits.size());
    Work work(*this, dates);
    bool isWanted = notes.Note(count, 0);
    {
        const HelperThreads helpers("hits reader", HelperThreads::CountFor(work.chunks.size()),
                                    [&work] { return work.ReadNext(); });
        while (isWanted && work.ReadNext()) {
            isWanted = notes.Note(count, work.CountRead());
        }
        work.Stop();
    }
    if (!isWanted) {
        return B_CANCELED;
    }
    for (Chunk& chunk : work.chunks) {
        Append(&rows->folders, chunk.rows.folders);
        Append(&rows->files, chunk.rows.files);
    }
    AddLinks(work.chunks, dates, rows);
    notes.Note(count, count);
    return B_OK;
}

/// They come last: what they lead to may lie on a disk that takes its time.
void HitsReader::AddLinks(std::vector<Chunk>& chunks, const DatePattern& dates, ListedRows* rows)
{
    std::vector<LinkQuestion> questions;
    std::vector<std::string> paths;
    for (Chunk& chunk : chunks) {
        for (Chunk::Link& link : chunk.links) {
            link.question.number = static_cast<int32>(questions.size());
            questions.push_back(std::move(link.question));
            paths.push_back(std::move(link.path));
        }
    }
    if (questions.empty()) {
        return;
    }
    LinkTargets targets((BMessenger()));
    const std::vector<int64> found = targets.FindAll(questions);
    Chunk last;
    for (size_t i = 0; i < questions.size(); ++i) {
        // One of which it is not known stands with the files, where nothing enters it.
        const mode_t target = found[i] < 0 ? mode_t(S_IFREG) : static_cast<mode_t>(found[i]);
        last.AddRow(std::move(questions[i].link), questions[i].record, target, std::move(paths[i]),
                    dates);
    }
    Append(&rows->folders, last.rows.folders);
    Append(&rows->files, last.rows.files);
}

void HitsReader::Chunk::Read(std::span<const entry_ref> hits, const DatePattern& dates,
                             HitsReader& reader)
{
    for (const entry_ref& hit : hits) {
        ReadHit(hit, dates, reader);
    }
}

void HitsReader::Chunk::ReadHit(const entry_ref& hit, const DatePattern& dates, HitsReader& reader)
{
    const BEntry entry(&hit);
    if (fNode.device != hit.device || fNode.node != hit.directory) {
        EnterFolder(hit, entry, reader);
    }
    struct stat st = {};
    if (fPath.empty() || entry.GetStat(&st) != B_OK) {
        return;
    }
    const BEntryRecord record = RecordOf(st);
    if (S_ISLNK(st.st_mode)) {
        Link& link = links.emplace_back();
        link.question.link = hit;
        link.question.folder = fNode;
        link.question.record = record;
        link.path = fPath + hit.name;
    } else {
        AddRow(hit, record, 0, fPath + hit.name, dates);
    }
}

void HitsReader::Chunk::EnterFolder(const entry_ref& hit, const BEntry& entry, HitsReader& reader)
{
    fNode.device = hit.device;
    fNode.node = hit.directory;
    fPath.clear();
    BPath path;
    if (entry.GetPath(&path) == B_OK) {
        fPath = path.Path();
        fPath.erase(fPath.rfind('/') + 1);
        reader.Watch(fNode, fPath);
    }
}

void HitsReader::Chunk::AddRow(entry_ref hit, const BEntryRecord& record, mode_t target,
                               std::string path, const DatePattern& dates)
{
    auto row = std::make_unique<DirListItem>(std::move(hit), record, dates, target);
    row->ShowPath(std::move(path));
    (row->IsDir() ? rows.folders : rows.files).push_back(std::move(row));
}

} // namespace norvane
