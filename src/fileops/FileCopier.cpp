#include "fileops/FileCopier.h"

#include "fileops/FileInfoCopy.h"
#include "fileops/MoveLedger.h"
#include "fileops/OperationUI.h"
#include "fileops/OverwriteDetails.h"
#include "fileops/OwnNames.h"
#include "fileops/ProblemList.h"
#include "fileops/RecordCopy.h"

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

FileCopier::FileCopier(OperationUI& ui, const CopyPurpose& purpose, const CopyStep& step,
                       const struct stat& record)
    : fUI(ui), fPurpose(purpose), fStep(step), fRecord(record)
{
}

CopyResult FileCopier::Run()
{
    if (!OpenSource()) {
        return CopyResult();
    }
    BFile file;
    const status_t status =
        fStep.target.folder.CreateNewFile(fStep.targetName, fRecord.st_mode & 0666, &file);
    if (status == B_OK) {
        return WriteNew(&file);
    }
    struct stat existing;
    if (status != B_FILE_EXISTS ||
        fStep.target.folder.GetStatFor(fStep.targetName, &existing) != B_OK) {
        return Failed(status);
    }
    // Before asking whether there is anybody to ask: whatever the answer, a file is never written
    // over itself.
    if (IsSameNode(existing, fRecord)) {
        return {.isItself = true};
    }
    if (fPurpose.isAllNew || !fUI.CanAsk()) {
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
    status_t status = fSource.SetTo(&fStep.source.folder, fStep.name, B_READ_ONLY | B_NO_TRAVERSE);
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
    fUI.NoteProblem(fStep.name, ReasonFor(status));
    return {.isDone = true};
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
    fUI.AskOverwrite({fStep.SourcePath(), fStep.TargetPath(),
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
        BEntry(&fStep.target.folder, fStep.targetName).Remove();
    }
    CopyResult result = Written(isWhole && TakeAlong(file));
    result.isMade = true;
    return result;
}

CopyResult FileCopier::Written(bool isWhole) const
{
    if (isWhole && fPurpose.IsMove()) {
        fPurpose.ledger->Add(fStep.SourcePath(), fRecord);
    }
    return {.isDone = !fIsFull && !fUI.IsStopped(), .isWhole = isWhole};
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
    BesideGuard guard(fStep.target.folder, beside.Name());
    if (!CopyContents(&file)) {
        return Written(false);
    }
    const status_t renamed = guard.RenameOver(fStep.targetName);
    if (renamed != B_OK) {
        return Failed(renamed);
    }
    if (S_ISREG(existing.st_mode) && !fPurpose.IsMove()) {
        file.SetPermissions(existing.st_mode & 0777);
    }
    return Written(TakeAlong(&file));
}

bool FileCopier::TakeAlong(BFile* file)
{
    if (!fPurpose.IsMove()) {
        return true;
    }
    const status_t status = file->CopyAttrsFrom(fSource);
    if (status != B_OK) {
        fUI.NoteProblem(fStep.name, "its attributes could not be kept");
    }
    TakeRecordAlong(file, fRecord);
    return status == B_OK;
}

status_t FileCopier::CreateBeside(const struct stat& existing, const OwnTemporaryName& name,
                                  BFile* file)
{
    // A replaced file keeps its mode, which is set when the new one is in its place. What replaces
    // a link is a new file.
    const mode_t mode = S_ISREG(existing.st_mode) ? mode_t(0600) : fRecord.st_mode & 0666;
    return fStep.target.folder.CreateNewFile(name.Name(), mode, file);
}

bool FileCopier::CopyContents(BFile* file)
{
    fUI.FileStarted(fStep.SourcePath(), fStep.TargetPath(), fRecord.st_size);
    int64 copiedBytes = 0;
    if (!CopyChunks(file, &copiedBytes)) {
        return false;
    }
    if (!fPurpose.IsMove()) {
        CopyFileInfo(&fSource, file); // a move takes all attributes along
    }
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
            fUI.NoteProblem(fStep.name, ReasonFor(static_cast<status_t>(count)));
            return false;
        }
        const ssize_t written = file->Write(chunk, static_cast<size_t>(count));
        if (written != count) {
            return WriteFailed(written);
        }
        *copiedBytes += count;
        fUI.BytesCopied(fStep.name, count);
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
        fUI.NoteProblem(fStep.name, ReasonFor(reason));
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
        fUI.NoteProblem(fStep.name, "it changed while it was being copied");
        return false;
    }
    if (file.GetSize(&written) != B_OK || written != copiedBytes) {
        fUI.NoteProblem(fStep.name, "not every byte arrived");
        return false;
    }
    return true;
}

} // namespace norvane
