#include "Checksums/SumJob.h"

#include "Checksums/SumFiles.h"
#include "Checksums/SumLines.h"
#include "common/DetachedThread.h"

#include <Autolock.h>
#include <Entry.h>
#include <OS.h>
#include <Path.h>

#include <algorithm>
#include <thread>
#include <utility>

namespace checksums {

namespace {

constexpr unsigned kMostThreads = 4; // a disk reads no faster for more

SumState StateOf(const Summed& summed, const SumRow& row)
{
    if (summed.status != B_OK) {
        return SumState::kUnreadable;
    }
    if (summed.hasChanged) {
        return SumState::kChanged;
    }
    if (row.expected.empty()) {
        return SumState::kSummed;
    }
    return summed.sum == row.expected ? SumState::kSame : SumState::kDiffers;
}

bool IsFinished(SumState state)
{
    return state != SumState::kWaiting && state != SumState::kReading;
}

} // namespace

SumJob::SumJob(std::vector<entry_ref> refs, const BMessenger& target)
    : fRefs(std::move(refs)), fTarget(target), fLock("Checksums")
{
}

status_t SumJob::Start()
{
    const bool isStarted =
        add_ons::StartDetached("Checksums", [job = shared_from_this()] { job->Run(); });
    return isStarted ? B_OK : B_NO_MORE_THREADS;
}

bool SumJob::WaitForEnd(bigtime_t limit)
{
    const bigtime_t end = system_time() + limit;
    const BAutolock lock(fLock);
    while (!fProgress.hasEnded) {
        if (!fEnd.WaitUntil(fLock, end)) {
            return fProgress.hasEnded;
        }
    }
    return true;
}

SumJob::Progress SumJob::Look() const
{
    const BAutolock lock(fLock);
    Progress progress = fProgress;
    progress.rows = fRows.size();
    progress.bytes = fBytes;
    progress.wasStopped = fIsStopped;
    return progress;
}

SumRow SumJob::RowAt(size_t place) const
{
    const BAutolock lock(fLock);
    return place < fRows.size() ? fRows[place] : SumRow();
}

std::vector<SumRow> SumJob::Rows() const
{
    const BAutolock lock(fLock);
    return fRows;
}

size_t SumJob::FindSum(const std::string& sum) const
{
    const BAutolock lock(fLock);
    const auto found =
        std::find_if(fRows.begin(), fRows.end(), [&](const SumRow& row) { return row.sum == sum; });
    return found != fRows.end() ? static_cast<size_t>(found - fRows.begin()) : SIZE_MAX;
}

void SumJob::Run()
{
    Find();
    SumAll();
    {
        const BAutolock lock(fLock);
        fProgress.hasEnded = true;
    }
    fEnd.Broadcast();
    fTarget.SendMessage(kSumsEnded);
}

// What there is to be read

void SumJob::Find()
{
    for (const entry_ref& ref : fRefs) {
        BaseOf(ref);
    }
    if (fBases.size() > 1) {
        for (size_t base = 0; base < fBases.size(); base++) {
            const BPath path(&fBases[base]);
            fPrefixes[base] = path.Path() != nullptr ? std::string(path.Path()) + "/" : "";
        }
    }
    if (!FindLists()) {
        for (const entry_ref& ref : fRefs) {
            AddSelected(ref);
        }
    }
    const BAutolock lock(fLock);
    fProgress.isFinding = false;
}

/// The number of the folder that the entry lies in.
uint32 SumJob::BaseOf(const entry_ref& ref)
{
    for (size_t base = 0; base < fBaseRefs.size(); base++) {
        if (fBaseRefs[base].device == ref.device && fBaseRefs[base].directory == ref.directory) {
            return static_cast<uint32>(base);
        }
    }
    BDirectory folder;
    const BEntry entry(&ref);
    entry.GetParent(&folder); // one that is not there says so when a file in it is opened
    fBaseRefs.push_back(ref);
    fBases.push_back(folder);
    fPrefixes.emplace_back();
    return static_cast<uint32>(fBases.size() - 1);
}

bool SumJob::FindLists()
{
    bool isAny = false;
    for (const entry_ref& ref : fRefs) {
        SumFile list;
        if (ref.name != nullptr && IsSumFileName(ref.name) && ReadList(ref, &list)) {
            isAny = true;
            {
                const BAutolock lock(fLock);
                fProgress.isComparing = true;
                fProgress.otherLines += list.others;
            }
            AddLines(BaseOf(ref), list);
        }
    }
    return isAny;
}

bool SumJob::ReadList(const entry_ref& ref, SumFile* list) const
{
    BFile file(&ref, B_READ_ONLY);
    std::string text;
    if (file.InitCheck() != B_OK || ReadWhole(file, &text) != B_OK) {
        return false;
    }
    *list = ReadSums(text);
    return !list->lines.empty();
}

void SumJob::AddLines(uint32 base, const SumFile& list)
{
    for (const SumLine& line : list.lines) {
        SumRow row;
        row.base = base;
        row.path = line.name;
        row.name = line.name;
        row.expected = line.sum;
        struct stat st = {};
        if (!StepsBelow(line.name)) {
            row.state = SumState::kRefused;
        } else if (fBases[base].GetStatFor(line.name.c_str(), &st) == B_OK) {
            row.bytes = S_ISREG(st.st_mode) ? st.st_size : 0;
        }
        AddRow(std::move(row));
    }
}

void SumJob::AddSelected(const entry_ref& ref)
{
    const uint32 base = BaseOf(ref);
    const std::string name = ref.name != nullptr ? ref.name : "";
    struct stat st = {};
    SumRow row;
    row.base = base;
    row.path = name;
    row.name = fPrefixes[base] + name;
    const status_t status = fBases[base].GetStatFor(name.c_str(), &st);
    if (status != B_OK || !S_ISDIR(st.st_mode)) {
        row.follows = S_ISLNK(st.st_mode); // it was chosen itself
        row.bytes = S_ISREG(st.st_mode) ? st.st_size : 0;
        AddRow(std::move(row));
        return;
    }
    FindFiles(fBases[base], name, fIsStopped, [&](const FoundFile& found) {
        SumRow inner;
        inner.base = base;
        inner.path = found.path;
        inner.name = fPrefixes[base] + found.path;
        inner.bytes = found.bytes;
        inner.reason = found.status;
        inner.state = found.status == B_OK ? SumState::kWaiting : SumState::kUnreadable;
        AddRow(std::move(inner));
    });
}

void SumJob::AddRow(SumRow row)
{
    const BAutolock lock(fLock);
    fProgress.allBytes += row.bytes;
    fProgress.finished += IsFinished(row.state) ? 1 : 0;
    fRows.push_back(std::move(row));
}

// Reading it

void SumJob::SumAll()
{
    const unsigned cores = std::max(1u, std::thread::hardware_concurrency());
    std::vector<thread_id> helpers;
    for (unsigned number = 1; number < std::min(cores, kMostThreads); number++) {
        const auto help = [](void* self) -> status_t {
            static_cast<SumJob*>(self)->SumNext();
            return B_OK;
        };
        const thread_id helper = spawn_thread(help, "Checksums", B_NORMAL_PRIORITY, this);
        if (helper >= B_OK && resume_thread(helper) == B_OK) {
            helpers.push_back(helper);
        }
    }
    SumNext();
    for (const thread_id helper : helpers) {
        wait_for_thread(helper, nullptr);
    }
}

void SumJob::SumNext()
{
    const size_t count = Look().rows;
    for (size_t place = fNext++; place < count && !fIsStopped; place = fNext++) {
        SumRowAt(place);
    }
}

void SumJob::SumRowAt(size_t place)
{
    SumRow row = RowAt(place);
    if (IsFinished(row.state)) {
        return;
    }
    row.state = SumState::kReading;
    SetRow(place, row);
    int64 read = 0;
    Summed summed;
    BFile file;
    summed.status = Open(row, &file);
    if (summed.status == B_OK) {
        summed = SumOf(file, fIsStopped, [&](int64 bytes) {
            read += bytes;
            fBytes += bytes;
        });
    }
    fBytes += row.bytes - read; // what is not there to be read is no more to be waited for
    if (summed.status == B_CANCELED) {
        row.state = SumState::kWaiting;
    } else if (summed.status == B_ENTRY_NOT_FOUND) {
        row.state = SumState::kMissing;
    } else {
        row.state = StateOf(summed, row);
        row.reason = summed.status;
        row.sum = std::move(summed.sum);
    }
    SetRow(place, row);
}

status_t SumJob::Open(const SumRow& row, BFile* file) const
{
    const BDirectory& base = fBases[row.base];
    if (row.follows) {
        return file->SetTo(&base, row.path.c_str(), B_READ_ONLY);
    }
    const auto steps = StepsBelow(row.path);
    return steps ? OpenBelow(base, *steps, file) : status_t(B_BAD_VALUE);
}

void SumJob::SetRow(size_t place, const SumRow& row)
{
    const BAutolock lock(fLock);
    fProgress.finished += IsFinished(row.state) && !IsFinished(fRows[place].state) ? 1 : 0;
    fRows[place] = row;
}

} // namespace checksums
