#pragma once

#include "MakeArchive/ArchiveFormat.h"
#include "common/Problems.h"

#include <Directory.h>
#include <Entry.h>
#include <File.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

struct archive;
struct archive_entry;

namespace add_ons {

class Progress;

/// Writes entries, and what is in them, into a new archive.
///
/// It is made under a hidden name, and has its own once it is whole; nothing that is there is ever
/// replaced. Thread: one at a time.
class ArchiveWriter
{
public:
    /// For a new archive in `folder`. Borrows both.
    ArchiveWriter(const BDirectory& folder, const ArchiveFormat& format, Progress* progress);
    /// Removes what is not whole.
    ~ArchiveWriter();
    ArchiveWriter(const ArchiveWriter&) = delete;
    ArchiveWriter& operator=(const ArchiveWriter&) = delete;

    /// Begins the file. Errors: B_PERMISSION_DENIED, B_DEVICE_FULL ...
    [[nodiscard]] status_t Open();
    /// Writes an entry with all that is in it. What cannot be read is among the problems, and the
    /// archive goes on. Errors: B_CANCELED when the person stopped it, or why the archive itself
    /// cannot be written: it is worth nothing then.
    [[nodiscard]] status_t Add(const entry_ref& entry);
    /// Ends the archive and gives it the first free one of its names, which `name` then holds.
    [[nodiscard]] status_t Finish(std::string* name);

    /// Entries that are not in it as they should be.
    const Problems& GetProblems() const { return fProblems; }

private:
    struct Waiting
    {
        entry_ref entry;
        std::string path; // in the archive
    };

    status_t AddOne(const Waiting& one, std::vector<Waiting>* further);
    status_t AddFolder(const Waiting& one, const BEntry& entry, const struct stat& st,
                       std::vector<Waiting>* further);
    status_t AddLink(const Waiting& one, const BEntry& entry, const struct stat& st);
    status_t AddFile(const Waiting& one);
    status_t WriteHeader(archive_entry* header);
    status_t WriteContents(BFile& file, const std::string& path, off_t size);
    bool IsOwn(const struct stat& st) const;
    status_t Failure() const;

    static int64_t WriteBytes(archive*, void* self, const void* bytes, size_t count);

    BDirectory fFolder;
    const ArchiveFormat& fFormat;
    Progress* const fProgress;
    archive* fWriter = nullptr;
    std::string fHiddenName; // empty while there is no file
    BFile fFile;
    status_t fStatus = B_OK; // of the file
    struct stat fOwn = {};   // the archive itself, which is not put into it
    std::map<std::pair<dev_t, ino_t>, std::string> fSeveralNames; // files with more than one
    Problems fProblems;
};

/// How many bytes there are to be read in entries and all that is in them; stops with the progress.
int64 MeasureAll(const std::vector<entry_ref>& entries, const Progress& progress);

} // namespace add_ons
