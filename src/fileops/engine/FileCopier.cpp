#include "fileops/engine/FileCopier.h"

#include "fileops/engine/FileInfoCopy.h"
#include "fileops/engine/MoveLedger.h"
#include "fileops/engine/OperationUI.h"
#include "fileops/engine/OverwriteDetails.h"
#include "fileops/engine/OwnNames.h"
#include "fileops/engine/ProblemList.h"
#include "fileops/engine/RecordCopy.h"

#include <Directory.h>
#include <Entry.h>
#include <Errors.h>
#include <Node.h>

#include <algorithm>

namespace norvane {

namespace {

constexpr size_t kChunkBytes = 4096;
// Files up to this size are read at once, and tell of their bytes at once.
constexpr off_t kSmall = off_t{64} * 1024;

/// Removes the file beside the target again, unless it took the target's place.
class BesideGuard
{
public:
    BesideGuard(const BDirectory& folder, const char* name) : fEntry(&folder, name) {}
    ~BesideGuard()
    {
        if (fIsThere) {
            fEntry.Remove();
        }
    }
    BesideGuard(const BesideGuard&) = delete;
    BesideGuard& operator=(const BesideGuard&) = delete;

    /// What it says first: a file that could not be removed again is not made.
    status_t InitCheck() const { return fEntry.InitCheck(); }
    void WasMade() { fIsThere = true; }
    status_t RenameOver(const char* name)
    {
        const status_t status = fEntry.Rename(name, true);
        fIsThere = status != B_OK;
        return status;
    }

private:
    BEntry fEntry;
    bool fIsThere = false;
};

bool IsSameNode(const struct stat& a, const struct stat& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

} // namespace

FileCopier::FileCopier(OperationUI& ui, const CopyPurpose& purpose, const CopyStep& step)
    : fUI(ui), fPurpose(purpose), fStep(step), fName(step.name), fSourcePath(step.SourcePath())
{
}

CopyResult FileCopier::Run()
{
    if (Begin()) {
        Fill();
    }
    return End();
}

bool FileCopier::Begin()
{
    // A name may lead somewhere else by now: only a regular file is opened, and a link never
    // followed.
    fOpened = fSource.SetToChild(fStep.source.folder, fStep.name, &fRecord);
    if (fOpened != B_OK) {
        return false;
    }
    fCreated =
        fStep.target.folder.CreateNewFile(fStep.targetName, fRecord.st_mode & 0666, &fTarget);
    if (fCreated != B_OK || fRecord.st_size > kSmall) {
        return false;
    }
    TellStart();
    return true;
}

void FileCopier::Fill()
{
    if (CopySmall()) {
        CheckContents();
    }
    Complete();
    fIsFilled = true;
}

CopyResult FileCopier::End()
{
    if (fOpened != B_OK) {
        fUI.Tell("Couldn't open the file for reading.", Notice::kStop);
        return CopyResult();
    }
    if (fIsFilled) {
        fUI.BytesCopied(fName.c_str(), fCopiedBytes);
    } else if (fCreated != B_OK) {
        return MeetExisting();
    } else {
        WriteNew();
    }
    CopyResult result = Written();
    result.isMade = true;
    return result;
}

void FileCopier::WriteNew()
{
    TellStart();
    CopyContents();
    Complete();
    if (!fIsWhole && fUI.IsStopped()) {
        // Nobody asked for half a file; one that an error cut short stays, to be looked at.
        BEntry(&fStep.target.folder, fStep.targetName).Remove();
    }
}

CopyResult FileCopier::MeetExisting()
{
    struct stat existing;
    if (fCreated != B_FILE_EXISTS ||
        fStep.target.folder.GetStatFor(fStep.targetName, &existing) != B_OK) {
        return Failed(fCreated);
    }
    // Before asking whether there is anybody to ask: whatever the answer, a file is never written
    // over itself.
    if (IsSameNode(existing, fRecord)) {
        return {.isItself = true};
    }
    if (fPurpose.isAllNew || !fUI.CanAsk()) {
        return Failed(fCreated);
    }
    if (AskAboutClash(existing) != Clash::kReplace) {
        return CopyResult();
    }
    return WriteOver(existing);
}

CopyResult FileCopier::Failed(status_t status)
{
    fUI.NoteProblem(fName, ReasonFor(status));
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
    fUI.AskOverwrite({fSourcePath, fStep.TargetPath(),
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

CopyResult FileCopier::WriteOver(const struct stat& existing)
{
    if (S_ISDIR(existing.st_mode)) {
        return Failed(B_IS_A_DIRECTORY);
    }
    const OwnTemporaryName beside;
    BesideGuard guard(fStep.target.folder, beside.Name());
    status_t created = guard.InitCheck();
    if (created == B_OK) {
        created = CreateBeside(existing, beside);
    }
    if (created != B_OK) {
        return Failed(created);
    }
    guard.WasMade();
    TellStart();
    CopyContents();
    TakeAttributesAlong();
    // Who may read it is set when it is in its place, on the file that was written and no other.
    BNode written(&fStep.target.folder, beside.Name());
    Close();
    if (!fIsWhole) {
        return Written();
    }
    status_t renamed = written.InitCheck();
    if (renamed == B_OK) {
        renamed = guard.RenameOver(fStep.targetName);
    }
    if (renamed != B_OK) {
        return Failed(renamed);
    }
    if (fPurpose.IsMove()) {
        TakeRecordAlong(&written, fRecord);
    } else if (S_ISREG(existing.st_mode)) {
        written.SetPermissions(existing.st_mode & 0777);
    }
    return Written();
}

status_t FileCopier::CreateBeside(const struct stat& existing, const OwnTemporaryName& name)
{
    // A replaced file keeps its mode, which is set when the new one is in its place. What replaces
    // a link is a new file.
    const mode_t mode = S_ISREG(existing.st_mode) ? mode_t(0600) : fRecord.st_mode & 0666;
    return fStep.target.folder.CreateNewFile(name.Name(), mode, &fTarget);
}

CopyResult FileCopier::Written()
{
    if (fIsFull) {
        fUI.Tell("Out of space on the target volume.", Notice::kStop);
    }
    for (const std::string& problem : fProblems) {
        fUI.NoteProblem(fName, problem);
    }
    if (fIsWhole && fPurpose.IsMove()) {
        fPurpose.ledger->Add(fSourcePath, fRecord);
    }
    return {.isDone = !fIsFull && !fUI.IsStopped(), .isWhole = fIsWhole};
}

void FileCopier::TellStart()
{
    fUI.FileStarted(fSourcePath, fStep.TargetPath(), fRecord.st_size);
}

void FileCopier::CopyContents()
{
    if (CopyChunks()) {
        CheckContents();
    }
}

void FileCopier::CheckContents()
{
    if (!fPurpose.IsMove()) {
        CopyFileInfo(&fSource, &fTarget); // a move takes all attributes along
    }
    fIsWhole = IsComplete();
}

bool FileCopier::CopySmall()
{
    char contents[kSmall];
    // Whether it has grown since it was opened shows at the end; some that say they are empty are
    // not.
    const auto size = static_cast<size_t>(std::max<off_t>(fRecord.st_size, 1));
    return CopyPiece(fSource.Read(contents, size), contents) && HandOver();
}

bool FileCopier::CopyChunks()
{
    char chunk[kChunkBytes];
    ssize_t count = 0;
    do {
        if (fUI.IsStopped()) {
            return false;
        }
        count = fSource.Read(chunk, sizeof(chunk));
        if (!CopyPiece(count, chunk)) {
            return false;
        }
        fUI.BytesCopied(fName.c_str(), count);
    } while (count == static_cast<ssize_t>(kChunkBytes));
    return HandOver();
}

bool FileCopier::CopyPiece(ssize_t read, const char* bytes)
{
    if (read < 0) {
        return Note(ReasonFor(static_cast<status_t>(read)));
    }
    const ssize_t written = fTarget.Write(bytes, static_cast<size_t>(read));
    if (written != read) {
        return WriteFailed(written);
    }
    fCopiedBytes += read;
    return true;
}

bool FileCopier::HandOver()
{
    // The status of what waits in the file's buffer is that of all that came before.
    const ssize_t flushed = fTarget.Write("", 0);
    return flushed == 0 || WriteFailed(flushed);
}

bool FileCopier::WriteFailed(ssize_t status)
{
    if (status == B_DEVICE_FULL) {
        fIsFull = true;
        return false;
    }
    return Note(ReasonFor(status < 0 ? static_cast<status_t>(status) : status_t(B_IO_ERROR)));
}

bool FileCopier::Note(const std::string& problem)
{
    fProblems.push_back(problem);
    return false;
}

bool FileCopier::IsComplete()
{
    struct stat now;
    off_t written = 0;
    const bool isReadToTheEnd = fSource.GetStat(&now) == B_OK && now.st_size == fCopiedBytes &&
                                now.st_size == fRecord.st_size &&
                                now.st_mtim.tv_sec == fRecord.st_mtim.tv_sec &&
                                now.st_mtim.tv_nsec == fRecord.st_mtim.tv_nsec;
    if (!isReadToTheEnd) {
        return Note("it changed while it was being copied");
    }
    if (fTarget.GetSize(&written) != B_OK || written != fCopiedBytes) {
        return Note("not every byte arrived");
    }
    return true;
}

void FileCopier::Complete()
{
    TakeAttributesAlong();
    if (fIsWhole && fPurpose.IsMove()) {
        TakeRecordAlong(&fTarget, fRecord);
    }
    Close();
}

void FileCopier::TakeAttributesAlong()
{
    if (fIsWhole && fPurpose.IsMove() && fTarget.CopyAttrsFrom(fSource) != B_OK) {
        fIsWhole = Note("its attributes could not be kept");
    }
}

void FileCopier::Close()
{
    fSource.Unset();
    // Some file systems tell only now that bytes did not arrive.
    const status_t closed = fTarget.Close();
    if (closed != B_OK && fIsWhole) {
        fIsWhole = Note(ReasonFor(closed));
    }
}

} // namespace norvane
