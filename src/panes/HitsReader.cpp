#include "panes/HitsReader.h"

#include "panes/DatePattern.h"

#include <Path.h>

#include <sys/stat.h>
#include <utility>

namespace norvane {

namespace {

constexpr int32 kNoteSteps = 256;

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

} // namespace

HitsReader::HitsReader(std::vector<entry_ref> hits, std::string dateFormat)
    : fHits(std::move(hits)), fDateFormat(std::move(dateFormat))
{
}

status_t HitsReader::Read(Notes& notes, ListedRows* rows)
{
    const DatePattern& dates = DatePattern::For(fDateFormat);
    const auto count = static_cast<int32>(fHits.size());
    for (int32 read = 0; read < count; ++read) {
        if (read % kNoteSteps == 0 && !notes.Note(count, read)) {
            return B_CANCELED;
        }
        ReadHit(fHits[static_cast<size_t>(read)], dates, rows);
    }
    AddLinks(dates, rows);
    notes.Note(count, count);
    return B_OK;
}

void HitsReader::ReadHit(const entry_ref& hit, const DatePattern& dates, ListedRows* rows)
{
    if (fNode.device != hit.device || fNode.node != hit.directory) {
        EnterFolder(hit);
    }
    struct stat st = {};
    if (fPath.empty() || fFolder.GetStatFor(hit.name, &st) != B_OK) {
        return;
    }
    const BEntryRecord record = RecordOf(st);
    if (S_ISLNK(st.st_mode)) {
        const auto number = static_cast<int32>(fLinks.size());
        fLinks.push_back({{hit, fNode, record, number}, fPath + hit.name});
    } else {
        AddRow(hit, record, 0, fPath + hit.name, dates, rows);
    }
}

void HitsReader::EnterFolder(const entry_ref& hit)
{
    fNode.device = hit.device;
    fNode.node = hit.directory;
    fPath.clear();
    BPath path;
    if (BEntry(&hit).GetParent(&fFolder) == B_OK && path.SetTo(&fFolder) == B_OK) {
        fPath = path.Path();
        fPath += fPath == "/" ? "" : "/";
    }
}

void HitsReader::AddRow(entry_ref hit, const BEntryRecord& record, mode_t target, std::string path,
                        const DatePattern& dates, ListedRows* rows)
{
    auto row = std::make_unique<DirListItem>(std::move(hit), record, dates, target);
    row->ShowPath(std::move(path));
    (row->IsDir() ? rows->folders : rows->files).push_back(std::move(row));
}

/// They come last: what they lead to may lie on a disk that takes its time.
void HitsReader::AddLinks(const DatePattern& dates, ListedRows* rows)
{
    if (fLinks.empty()) {
        return;
    }
    std::vector<LinkQuestion> questions;
    questions.reserve(fLinks.size());
    for (const Link& link : fLinks) {
        questions.push_back(link.question);
    }
    LinkTargets targets((BMessenger()));
    const std::vector<int64> found = targets.FindAll(questions);
    for (size_t i = 0; i < fLinks.size(); ++i) {
        // One of which it is not known stands with the files, where nothing enters it.
        const mode_t target = found[i] < 0 ? mode_t(S_IFREG) : static_cast<mode_t>(found[i]);
        AddRow(std::move(fLinks[i].question.link), fLinks[i].question.record, target,
               std::move(fLinks[i].path), dates, rows);
    }
}

} // namespace norvane
