#include "fileops/FileCopier.h"

#include "fileops/FileInfoCopy.h"
#include "fileops/OperationUI.h"
#include "fileops/OverwriteDetails.h"
#include "fileops/OwnNames.h"
#include "fileops/ProblemList.h"

#include <Directory.h>
#include <Entry.h>
#include <Errors.h>

namespace norvane {

namespace {

constexpr size_t kChunkBytes = 4096;

/// Removes the file beside the target again, unless it took the target's place.
class BesideGuard
{
public:
    BesideGuard(const BDirectory& folder, const char* name) : fEntry(&folder, name) {}
    ~BesideGuard()
    {
        if (!fIsDismissed) {
            fEntry.Remove();
        }
    }
    BesideGuard(const BesideGuard&) = delete;
    BesideGuard& operator=(const BesideGuard&) = delete;

    status_t RenameOver(const char* name)
    {
        const status_t status = fEntry.Rename(name, true);
        fIsDismissed = status == B_OK;
        return status;
    }

private:
    BEntry fEntry;
    bool fIsDismissed = false;
};

bool IsSameNode(const struct stat& a, const struct stat& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

} // namespace

std::string CopyPlace::PathOf(const char* name) const
{
    return path + "/" + name;
}

FileCopier::FileCopier(OperationUI& ui, const CopyPlace& source, const CopyPlace& target,
                       const char* name, const struct stat& record)
    : fUI(ui), fSourcePlace(source), fTargetPlace(target), fName(name), fRecord(record)
{
}

CopyResult FileCopier::Run()
{
    if (!OpenSource()) {
        return CopyResult();
    }
    BFile file;
    const status_t status = fTargetPlace.folder.CreateNewFile(fName, fRecord.st_mode & 0666, &file);
    if (status == B_OK) {
        return WriteNew(&file);
    }
    struct stat existing;
    if (status != B_FILE_EXISTS || fTargetPlace.folder.GetStatFor(fName, &existing) != B_OK) {
        return Failed(status);
    }
    // Before asking whether there is anybody to ask: whatever the answer, a file is never written
    // over itself.
    if (IsSameNode(existing, fRecord)) {
        return CopyResult();
    }
    if (!fUI.CanAsk()) {
        return Failed(status);
    }
    if (AskAboutClash(existing) != Clash::kReplace) {
        return CopyResult();
    }
    return WriteOver(existing);
}

bool FileCopier::OpenSource()
{
    // A name may lead somewhere else by now: only a regular file is opened, and a link never
    // followed.
    status_t status = fSource.SetTo(&fSourcePlace.folder, fName, B_READ_ONLY | B_NO_TRAVERSE);
    if (status == B_OK) {
        status = fSource.GetStat(&fRecord);
    }
    if (status != B_OK) {
        fUI.Tell("Couldn't open the file for reading.", Notice::kStop);
    }
    return status == B_OK;
}

CopyResult FileCopier::Failed(status_t status)
{
    fUI.NoteProblem(fName, ReasonFor(status));
    return {true, false};
}

FileCopier::Clash FileCopier::AskAboutClash(const struct stat& existing)
{
    const uint32 standing = fUI.StandingAnswer();
    if (standing == kAnswerSkipAll) {
        return Clash::kLeave;
    }
    if (standing == kAnswerOverwriteAll) {
        return Clash::kReplace;
    }
    if (standing == kAnswerOverwriteOlder) {
        return IsOlder(existing) ? Clash::kReplace : LeaveHidden();
    }
    fUI.HideProgress();
    fUI.AskOverwrite({fSourcePlace.PathOf(fName), fTargetPlace.PathOf(fName),
                      OverwriteDetails(existing.st_size, existing.st_mtime),
                      OverwriteDetails(fRecord.st_size, fRecord.st_mtime)});
    const uint32 answer = fUI.StandingAnswer();
    bool isAgreed = answer == kAnswerOverwrite || answer == kAnswerOverwriteAll;
    if (answer == kAnswerOverwriteOlder) {
        // The answer speaks of older targets, so a newer one stays, also the one that was asked
        // about.
        isAgreed = IsOlder(existing);
    }
    if (!isAgreed) {
        return Clash::kLeave; // and the progress stays hidden
    }
    fUI.ShowProgress();
    return Clash::kReplace;
}

FileCopier::Clash FileCopier::LeaveHidden()
{
    fUI.HideProgress();
    return Clash::kLeave;
}

bool FileCopier::IsOlder(const struct stat& existing) const
{
    return existing.st_mtime < fRecord.st_mtime;
}

CopyResult FileCopier::WriteNew(BFile* file)
{
    const bool isWhole = CopyContents(file);
    if (!isWhole && fUI.IsStopped()) {
        // Nobody asked for half a file; one that an error cut short stays, to be looked at.
        BEntry(&fTargetPlace.folder, fName).Remove();
    }
    return {!fIsFull && !fUI.IsStopped(), isWhole};
}

CopyResult FileCopier::WriteOver(const struct stat& existing)
{
    if (S_ISDIR(existing.st_mode)) {
        return Failed(B_IS_A_DIRECTORY);
    }
    const OwnTemporaryName beside;
    BFile file;
    const status_t created = CreateBeside(existing, beside, &file);
    if (created != B_OK) {
        return Failed(created);
    }
    BesideGuard guard(fTargetPlace.folder, beside.Name());
    if (!CopyContents(&file)) {
        return {!fIsFull && !fUI.IsStopped(), false};
    }
    const status_t renamed = guard.RenameOver(fName);
    if (renamed != B_OK) {
        return Failed(renamed);
    }
    if (S_ISREG(existing.st_mode)) {
        file.SetPermissions(existing.st_mode & 0777);
    }
    return {true, true};
}

status_t FileCopier::CreateBeside(const struct stat& existing, const OwnTemporaryName& name,
                                  BFile* file)
{
    // A replaced file keeps its mode, which is set when the new one is in its place. What replaces
    // a link is a new file.
    const mode_t mode = S_ISREG(existing.st_mode) ? mode_t(0600) : fRecord.st_mode & 0666;
    return fTargetPlace.folder.CreateNewFile(name.Name(), mode, file);
}

bool FileCopier::CopyContents(BFile* file)
{
    fUI.FileStarted(fSourcePlace.PathOf(fName), fTargetPlace.PathOf(fName), fRecord.st_size);
    int64 copiedBytes = 0;
    if (!CopyChunks(file, &copiedBytes)) {
        return false;
    }
    CopyFileInfo(&fSource, file);
    return IsComplete(*file, copiedBytes);
}

bool FileCopier::CopyChunks(BFile* file, int64* copiedBytes)
{
    char chunk[kChunkBytes];
    ssize_t count = 0;
    do {
        if (fUI.IsStopped()) {
            return false;
        }
        count = fSource.Read(chunk, sizeof(chunk));
        if (count < 0) {
            fUI.NoteProblem(fName, ReasonFor(static_cast<status_t>(count)));
            return false;
        }
        const ssize_t written = file->Write(chunk, static_cast<size_t>(count));
        if (written != count) {
            return WriteFailed(written);
        }
        *copiedBytes += count;
        fUI.BytesCopied(fName, count);
    } while (count == static_cast<ssize_t>(kChunkBytes));
    // Hands over what waits in the file's buffer: its status is that of all that came before.
    const ssize_t flushed = file->Write(chunk, 0);
    return flushed == 0 || WriteFailed(flushed);
}

bool FileCopier::WriteFailed(ssize_t status)
{
    if (status == B_DEVICE_FULL) {
        fIsFull = true;
        fUI.Tell("Out of space on the target volume.", Notice::kStop);
    } else {
        const status_t reason = status < 0 ? static_cast<status_t>(status) : status_t(B_IO_ERROR);
        fUI.NoteProblem(fName, ReasonFor(reason));
    }
    return false;
}

bool FileCopier::IsComplete(const BFile& file, int64 copiedBytes)
{
    struct stat now;
    off_t written = 0;
    const bool isReadToTheEnd = fSource.GetStat(&now) == B_OK && now.st_size == copiedBytes &&
                                now.st_size == fRecord.st_size &&
                                now.st_mtim.tv_sec == fRecord.st_mtim.tv_sec &&
                                now.st_mtim.tv_nsec == fRecord.st_mtim.tv_nsec;
    if (!isReadToTheEnd) {
        fUI.NoteProblem(fName, "it changed while it was being copied");
        return false;
    }
    if (file.GetSize(&written) != B_OK || written != copiedBytes) {
        fUI.NoteProblem(fName, "not every byte arrived");
        return false;
    }
    return true;
}

} // namespace norvane
