#include "MakeArchive/ArchiveWriter.h"

#include "common/FreeName.h"
#include "common/Progress.h"
#include "common/StatusText.h"

#include <OS.h>
#include <Path.h>
#include <SymLink.h>

#include <archive.h>
#include <archive_entry.h>

#include <algorithm>
#include <memory>
#include <sys/stat.h>

namespace add_ons {

namespace {

constexpr size_t kBlockBytes = size_t{256} * 1024;

struct FreeEntry
{
    void operator()(archive_entry* entry) const { archive_entry_free(entry); }
};
using Header = std::unique_ptr<archive_entry, FreeEntry>;

Header MakeHeader(const std::string& path, const struct stat& st)
{
    Header header(archive_entry_new());
    archive_entry_copy_stat(header.get(), &st);
    archive_entry_copy_pathname(header.get(), path.c_str());
    return header;
}

const char* KindOf(mode_t mode)
{
    return S_ISFIFO(mode) ? "a pipe" : S_ISSOCK(mode) ? "a socket" : "a device";
}

} // namespace

ArchiveWriter::ArchiveWriter(const BDirectory& folder, const ArchiveFormat& format,
                             Progress* progress)
    : fFolder(folder), fFormat(format), fProgress(progress)
{
}

ArchiveWriter::~ArchiveWriter()
{
    if (fWriter != nullptr) {
        fStatus = B_CANCELED; // writes no end
        archive_write_free(fWriter);
    }
    fFile.Unset();
    if (!fHiddenName.empty()) {
        BEntry(&fFolder, fHiddenName.c_str()).Remove();
    }
}

status_t ArchiveWriter::Open()
{
    const std::string name = ".norvane-archive-" + std::to_string(real_time_clock_usecs());
    const std::string made = FindFreeName(name, "", [this](const std::string& candidate) {
        fStatus = fFile.SetTo(&fFolder, candidate.c_str(),
                              B_READ_WRITE | B_CREATE_FILE | B_FAIL_IF_EXISTS);
        return fStatus != B_FILE_EXISTS;
    });
    if (fStatus != B_OK || made.empty()) {
        return fStatus;
    }
    fHiddenName = made;
    fStatus = fFile.GetStat(&fOwn);
    fWriter = archive_write_new();
    if (fStatus != B_OK || fWriter == nullptr || !fFormat.prepare(fWriter)) {
        return fStatus != B_OK ? fStatus : status_t(B_NO_MEMORY);
    }
    archive_write_set_bytes_per_block(fWriter, kBlockBytes);
    archive_write_set_bytes_in_last_block(fWriter, 1);
    const int opened =
        archive_write_open2(fWriter, this, nullptr, &ArchiveWriter::WriteBytes, nullptr, nullptr);
    return opened == ARCHIVE_OK ? status_t(B_OK) : Failure();
}

/// The library never hears of a failure: it would not let go of its memory then.
int64_t ArchiveWriter::WriteBytes(archive*, void* self, const void* bytes, size_t count)
{
    auto* archive = static_cast<ArchiveWriter*>(self);
    if (archive->fStatus == B_OK) {
        const ssize_t written = archive->fFile.Write(bytes, count);
        if (written != static_cast<ssize_t>(count)) {
            archive->fStatus =
                written < 0 ? static_cast<status_t>(written) : status_t(B_DEVICE_FULL);
        }
    }
    return static_cast<int64_t>(count);
}

status_t ArchiveWriter::Failure() const
{
    return fStatus != B_OK ? fStatus : status_t(B_ERROR);
}

status_t ArchiveWriter::Add(const entry_ref& entry)
{
    // A stack of its own: no tree is too deep.
    std::vector<Waiting> waiting{{entry, entry.name}};
    while (!waiting.empty()) {
        if (fProgress->WasStopped()) {
            return B_CANCELED;
        }
        const Waiting one = std::move(waiting.back());
        waiting.pop_back();
        const status_t status = AddOne(one, &waiting);
        if (status != B_OK) {
            return status;
        }
    }
    return B_OK;
}

status_t ArchiveWriter::AddOne(const Waiting& one, std::vector<Waiting>* further)
{
    fProgress->At(one.path);
    const BEntry entry(&one.entry);
    struct stat st;
    const status_t status = entry.GetStat(&st);
    if (status != B_OK) {
        fProblems.Add(one.path, StatusText(status));
        return B_OK;
    }
    if (S_ISDIR(st.st_mode)) {
        return AddFolder(one, entry, st, further);
    }
    if (S_ISLNK(st.st_mode)) {
        return AddLink(one, entry, st);
    }
    if (!S_ISREG(st.st_mode)) {
        fProblems.Add(one.path, std::string("it is ") + KindOf(st.st_mode));
        return B_OK;
    }
    return IsOwn(st) ? status_t(B_OK) : AddFile(one);
}

bool ArchiveWriter::IsOwn(const struct stat& st) const
{
    return st.st_dev == fOwn.st_dev && st.st_ino == fOwn.st_ino;
}

status_t ArchiveWriter::AddFolder(const Waiting& one, const BEntry& entry, const struct stat& st,
                                  std::vector<Waiting>* further)
{
    const Header header = MakeHeader(one.path + "/", st);
    archive_entry_set_size(header.get(), 0);
    const status_t status = WriteHeader(header.get());
    if (status != B_OK) {
        return status;
    }
    BDirectory folder(&entry);
    if (folder.InitCheck() != B_OK) {
        fProblems.Add(one.path, StatusText(folder.InitCheck()));
        return B_OK;
    }
    const size_t first = further->size();
    for (entry_ref child; folder.GetNextRef(&child) == B_OK;) {
        further->push_back({child, one.path + "/" + child.name});
    }
    std::reverse(further->begin() + static_cast<std::ptrdiff_t>(first), further->end());
    return B_OK;
}

status_t ArchiveWriter::AddLink(const Waiting& one, const BEntry& entry, const struct stat& st)
{
    BSymLink link(&entry);
    std::string target(static_cast<size_t>(std::max<off_t>(st.st_size, 4096)) + 1, '\0');
    const ssize_t length = link.ReadLink(target.data(), target.size());
    if (length < 0) {
        fProblems.Add(one.path, StatusText(static_cast<status_t>(length)));
        return B_OK;
    }
    const Header header = MakeHeader(one.path, st);
    archive_entry_set_size(header.get(), 0);
    archive_entry_copy_symlink(header.get(), target.c_str());
    return WriteHeader(header.get());
}

status_t ArchiveWriter::AddFile(const Waiting& one)
{
    BFile file(&one.entry, B_READ_ONLY | B_NO_TRAVERSE);
    struct stat st;
    status_t status = file.InitCheck();
    // What was opened counts, not what was looked at.
    if (status == B_OK) {
        status = file.GetStat(&st);
    }
    if (status != B_OK) {
        fProblems.Add(one.path, StatusText(status));
        return B_OK;
    }
    const Header header = MakeHeader(one.path, st);
    if (fFormat.hasHardLinks && st.st_nlink > 1) {
        const auto [known, isNew] =
            fSeveralNames.try_emplace(std::pair(st.st_dev, st.st_ino), one.path);
        if (!isNew) {
            archive_entry_copy_hardlink(header.get(), known->second.c_str());
            archive_entry_set_size(header.get(), 0);
            fProgress->Advance(st.st_size);
            return WriteHeader(header.get());
        }
    }
    status = WriteHeader(header.get());
    return status == B_OK ? WriteContents(file, one.path, st.st_size) : status;
}

status_t ArchiveWriter::WriteHeader(archive_entry* header)
{
    const int result = archive_write_header(fWriter, header);
    if (result == ARCHIVE_OK || result == ARCHIVE_WARN) {
        return fStatus;
    }
    if (result == ARCHIVE_FAILED && fStatus == B_OK) { // of this entry alone
        const char* reason = archive_error_string(fWriter);
        const char* path = archive_entry_pathname(header);
        fProblems.Add(path != nullptr ? path : "?", reason != nullptr ? reason : "it is refused");
        archive_entry_set_size(header, 0);
        return B_OK;
    }
    return Failure();
}

/// At most as many bytes as were announced, whatever becomes of the file meanwhile.
status_t ArchiveWriter::WriteContents(BFile& file, const std::string& path, off_t size)
{
    std::vector<char> block(kBlockBytes);
    off_t left = size;
    while (left > 0) {
        if (fProgress->WasStopped()) {
            return B_CANCELED;
        }
        const auto wanted =
            static_cast<size_t>(std::min<off_t>(left, static_cast<off_t>(block.size())));
        const ssize_t count = file.Read(block.data(), wanted);
        if (count <= 0) {
            fProblems.Add(path, count < 0 ? StatusText(static_cast<status_t>(count))
                                          : "it became shorter while it was read");
            return B_OK; // zeros take the place of what is missing
        }
        if (archive_write_data(fWriter, block.data(), static_cast<size_t>(count)) < 0 ||
            fStatus != B_OK) {
            return Failure();
        }
        left -= count;
        fProgress->Advance(count);
    }
    struct stat now;
    if (file.GetStat(&now) == B_OK && now.st_size > size) {
        fProblems.Add(path, "it became longer while it was read");
    }
    return B_OK;
}

status_t ArchiveWriter::Finish(std::string* name)
{
    const int closed = archive_write_close(fWriter);
    archive_write_free(fWriter);
    fWriter = nullptr;
    if (fStatus != B_OK || (closed != ARCHIVE_OK && closed != ARCHIVE_WARN)) {
        return Failure();
    }
    fStatus = fFile.Sync();
    if (fStatus == B_OK) {
        fStatus = fFile.Close();
    }
    if (fStatus != B_OK) {
        return fStatus;
    }
    const std::string made =
        FindFreeName(*name, fFormat.ending, [this](const std::string& candidate) {
            fStatus = BEntry(&fFolder, fHiddenName.c_str()).Rename(candidate.c_str(), false);
            return fStatus != B_FILE_EXISTS;
        });
    if (fStatus == B_OK && !made.empty()) {
        fHiddenName.clear();
        *name = made;
    }
    return fStatus;
}

int64 MeasureAll(const std::vector<entry_ref>& entries, const Progress& progress)
{
    int64 bytes = 0;
    std::vector<entry_ref> waiting = entries;
    while (!waiting.empty() && !progress.WasStopped()) {
        const BEntry entry(&waiting.back());
        waiting.pop_back();
        struct stat st;
        if (entry.GetStat(&st) != B_OK) {
            continue;
        }
        if (S_ISREG(st.st_mode)) {
            bytes += st.st_size;
        } else if (S_ISDIR(st.st_mode)) {
            BDirectory folder(&entry);
            for (entry_ref child; folder.GetNextRef(&child) == B_OK;) {
                waiting.push_back(child);
            }
        }
    }
    return bytes;
}

} // namespace add_ons
