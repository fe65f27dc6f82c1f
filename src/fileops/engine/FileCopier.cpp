#include "fileops/engine/FileCopier.h"

#include "fileops/engine/FileInfoCopy.h"
#include "fileops/engine/MoveLedger.h"
#include "fileops/engine/OperationContext.h"
#include "fileops/engine/OperationUI.h"
#include "fileops/engine/OverwriteDetails.h"
#include "fileops/engine/ProblemList.h"
#include "fileops/engine/ReplaceTarget.h"

#include <Directory.h>
#include <Errors.h>
#include <FileTransfer.h>

#include <algorithm>
#include <utility>

namespace norvane {

namespace {

// Files up to this size are read at once, and tell of their bytes at once.
constexpr off_t kSmall = off_t{64} * 1024;

const char* NameOr(const std::string& name, const std::string& otherwise)
{
    return name.empty() ? otherwise.c_str() : name.c_str();
}

} // namespace

FileCopier::FileCopier(OperationContext& context, const CopyPurpose& purpose,
                       std::shared_ptr<const CopyWay> way, const char* name, const char* targetName,
                       uint64 place)
    : fContext(context), fUI(context.ui), fPurpose(purpose), fWay(std::move(way)), fName(name),
      fOtherName(fName == targetName ? "" : targetName), fStep{fWay->source, fName.c_str(),
                                                               fWay->target,
                                                               NameOr(fOtherName, fName), place}
{
}

FileCopier::~FileCopier() = default;

status_t FileCopier::Open()
{
    // A name may lead somewhere else by now: only a regular file is opened, and a link never
    // followed.
    fOpened = fSource.SetToChild(fStep.source.folder, fStep.name, &fRecord);
    return fOpened;
}

void FileCopier::Create()
{
    fCreated = fStep.target.folder.CreateNewFile(fStep.targetName, 0600, &fNew);
}

bool FileCopier::Begin()
{
    if (fOpened != B_OK && Open() != B_OK) {
        return false;
    }
    Create();
    fIsReady = fCreated == B_OK && TakeAttributesAlong();
    if (!fIsReady || fRecord.st_size > kSmall) {
        return false;
    }
    TellStart();
    return true;
}

void FileCopier::Fill(bool isStopped)
{
    if (fOpened == B_NO_INIT && !isStopped && Open() == B_OK && fRecord.st_size <= kSmall) {
        Create();
        fIsReady = fCreated == B_OK && HasAttributesAlong();
    }
    if (!fIsReady) {
        return; // End() goes on from here
    }
    if (CopySmall()) {
        CheckContents();
    }
    LearnMade();
    Complete();
    fIsFilled = true;
}

CopyResult FileCopier::End()
{
    if (fOpened == B_NO_INIT || (fCreated == B_NO_INIT && fUI.IsStopped())) {
        return {}; // stopped before
    }
    if (fOpened == B_OK && fCreated == B_NO_INIT) {
        Create();
    }
    if (fOpened != B_OK) {
        fUI.Tell(fName, ItemAlert::kCannotOpen);
        return {.hasFailedReading = true};
    }
    if (fCreated != B_OK) {
        return MeetExisting();
    }
    NoteMadeName();
    if (fIsFilled) {
        TellStart();
        fUI.BytesCopied(fName.c_str(), fCopiedBytes);
    } else {
        WriteNew();
    }
    fContext.made.Add(fMade);
    CopyResult result = Written();
    result.isMade = !fIsRemoved;
    if (result.isMade) {
        NoteChange(Change::Kind::kMade);
    }
    return result;
}

void FileCopier::WriteNew()
{
    const bool isKnown = LearnMade();
    if (!fIsReady && !fIsDecided) {
        fIsReady = TakeAttributesAlong();
    }
    if (isKnown && fIsReady) {
        TellStart();
        CopyContents();
    }
    Complete();
    // Nobody asked for half a file; one that an error cut short stays, to be looked at.
    if (!fIsWhole && (fIsLeft || fUI.IsStopped())) {
        fIsRemoved = RemoveIfNode(fStep.target.folder, fStep.targetName, fMade);
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
    if (NodeOf(existing) == NodeOf(fRecord)) {
        return {.isItself = true};
    }
    if (fPurpose.isAllNew || !fUI.CanAsk()) {
        return Failed(fCreated);
    }
    if (Decide(existing) != Clash::kReplace) {
        return CopyResult();
    }
    return WriteOver(existing);
}

CopyResult FileCopier::Failed(status_t status)
{
    fUI.NoteProblem(fName, ReasonFor(status));
    return {.isDone = true};
}

/// Whether what is there is to be replaced, after asking where that is for the person to say.
FileCopier::Clash FileCopier::Decide(const struct stat& existing)
{
    if (fContext.made.Has(NodeOf(existing)) ||
        fContext.made.HasName(fStep.target.path, fStep.targetName)) {
        fUI.NoteProblem(fName, "another item of this operation has its name");
        return Clash::kLeave;
    }
    const Clash clash = AskAboutClash(existing);
    if (clash == Clash::kReplace && S_ISDIR(existing.st_mode)) {
        fUI.NoteProblem(fName, ReasonFor(B_IS_A_DIRECTORY));
        return Clash::kLeave;
    }
    return clash;
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
    if (!fUI.CanAsk()) {
        fUI.NoteProblem(fName, "the system has no thread left to ask about it");
    }
    const uint32 answer = fUI.StandingAnswer();
    bool isAgreed = answer == kAnswerOverwrite || answer == kAnswerOverwriteAll;
    if (answer == kAnswerOverwriteOlder) {
        // The answer speaks of older targets, so a newer one stays, also the one that was asked
        // about.
        isAgreed = IsOlder(existing);
    }
    if (!isAgreed || fUI.IsStopped()) {
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
    ReplaceTarget place(fStep.target.folder, fStep.targetName);
    const status_t created = place.Create();
    if (created != B_OK) {
        return Failed(created);
    }
    fBeside = place.File();
    fMade = NodeOf(place.Record());
    if (TakeAttributesAlong()) {
        TellStart();
        CopyContents();
    }
    if (fIsWhole) {
        // The old bytes may go only when the new ones are where no loss of power takes them.
        const status_t synced = place.Finish(fUI);
        fIsWhole = synced == B_OK || (synced != B_CANCELED && WriteFailed(synced));
    }
    if (fIsWhole) {
        fIsWhole = PutInPlace(place, existing);
    }
    fSource.Unset();
    return Written();
}

/// Replaces what lies there; asks again for as long as that is not what was agreed to.
bool FileCopier::PutInPlace(ReplaceTarget& place, struct stat existing)
{
    using Outcome = ReplaceTarget::Outcome;
    BNodeAccess replaced = AccessOf(existing);
    Outcome outcome = place.Replace(existing);
    while (outcome == Outcome::kChanged) {
        existing = place.Found();
        const bool isItself = NodeOf(existing) == NodeOf(fRecord);
        if (fUI.IsStopped() || isItself || Decide(existing) != Clash::kReplace) {
            return false;
        }
        replaced = AccessOf(existing);
        outcome = place.Replace(existing);
    }
    if (outcome == Outcome::kFailed) {
        return Note(ReasonFor(place.Status()));
    }
    if (place.Status() != B_OK) {
        Note("what it replaced is still beside it, under the name of a temporary file");
    }
    if (SetAccess(&place.Node(), existing, replaced) != B_OK) {
        Note("who may use it could not be set");
    }
    fContext.made.Add(fMade);
    NoteMadeName();
    NoteChange(outcome == Outcome::kReplaced ? Change::Kind::kReplaced : Change::Kind::kMade);
    return true;
}

/// A replaced file keeps what it was open to; what replaces a link is a new file.
status_t FileCopier::SetAccess(BNode* made, const struct stat& existing,
                               const BNodeAccess& replaced)
{
    if (fPurpose.TakesAllAlong()) {
        return fContext.access.FinishMoved(made, fSource, fRecord);
    }
    return S_ISREG(existing.st_mode) ? fContext.access.FinishReplacement(made, replaced)
                                     : fContext.access.FinishNew(made, fSource, fRecord);
}

/// Who may use the file that lies there.
BNodeAccess FileCopier::AccessOf(const struct stat& existing) const
{
    const BNode node(&fStep.target.folder, fStep.targetName);
    struct stat record;
    const bool isIt = S_ISREG(existing.st_mode) && node.GetStat(&record) == B_OK &&
                      NodeOf(record) == NodeOf(existing);
    return isIt ? BNodeAccess(node) : BNodeAccess();
}

CopyResult FileCopier::Written()
{
    if (fIsFull) {
        fUI.Tell(fName, ItemAlert::kVolumeFull);
    }
    for (const std::string& problem : fProblems) {
        fUI.NoteProblem(fName, problem);
    }
    if (fIsWhole && fPurpose.IsMove()) {
        fPurpose.ledger->Add(fStep.place, fRecord, fMade);
    }
    return {.isDone = !fIsFull && !fUI.IsStopped(),
            .isWhole = fIsWhole,
            .hasFailedReading = fHasFailedReading,
            .isLeft = fIsLeft,
            .target = fMade};
}

void FileCopier::TellStart()
{
    if (std::exchange(fIsTold, true)) {
        return;
    }
    fUI.FileStarted(
        {fStep.source.path, fStep.name, fStep.target.path, fStep.targetName, fRecord.st_size});
}

void FileCopier::CopyContents()
{
    if (CopyPieces()) {
        CheckContents();
    }
}

void FileCopier::CheckContents()
{
    if (!fPurpose.TakesAllAlong()) {
        CopyFileInfo(&fSource, &Target()); // otherwise it is there already, with all attributes
    }
    fIsWhole = IsComplete();
}

bool FileCopier::CopySmall()
{
    char contents[kSmall];
    // Whether it has grown since it was opened shows at the end; some that say they are empty are
    // not.
    const off_t size = std::max<off_t>(fRecord.st_size, 1);
    ssize_t count = 1;
    while (count > 0 && fCopiedBytes < size) {
        count = fSource.ReadAt(fCopiedBytes, contents + fCopiedBytes,
                               static_cast<size_t>(size - fCopiedBytes));
        if (count < 0) {
            return ReadFailed(static_cast<status_t>(count));
        }
        fCopiedBytes += count;
    }
    const ssize_t written = fNew.WriteAt(0, contents, static_cast<size_t>(fCopiedBytes));
    return written == fCopiedBytes ||
           WriteFailed(written < 0 ? static_cast<status_t>(written) : B_IO_ERROR);
}

bool FileCopier::CopyPieces()
{
    BFileTransfer transfer(&fSource, &Target(), &fRecord);
    while (!fUI.IsStopped()) {
        const ssize_t count = transfer.Next();
        if (count == 0) {
            fUI.BytesCopied(fName.c_str(), 0); // also an empty file is shown
            return true;
        }
        if (count < 0) {
            const auto status = static_cast<status_t>(count);
            return transfer.HasFailedReading() ? ReadFailed(status) : WriteFailed(status);
        }
        fCopiedBytes += count;
        fUI.BytesCopied(fName.c_str(), count);
    }
    return false;
}

bool FileCopier::ReadFailed(status_t status)
{
    fHasFailedReading = true;
    return Note(ReasonFor(status));
}

bool FileCopier::WriteFailed(status_t status)
{
    if (status == B_DEVICE_FULL) {
        fIsFull = true;
        return false;
    }
    return Note(ReasonFor(status));
}

bool FileCopier::Note(const std::string& problem)
{
    fProblems.push_back(problem);
    return false;
}

bool FileCopier::IsComplete()
{
    struct stat now = fRecord;
    const bool isReadToTheEnd =
        LookAtSource(&now) == B_OK && now.st_size == fCopiedBytes && IsUnchanged(fRecord, now);
    if (!isReadToTheEnd) {
        fHasFailedReading = true; // what was read is there no more
        return Note("it changed while it was being copied");
    }
    if (Target().GetStat(&fCopied) != B_OK || fCopied.st_size != fCopiedBytes) {
        return Note("not every byte arrived");
    }
    fMade = NodeOf(fCopied);
    if (fCopied.st_nlink == 0) {
        return Note("its copy was removed meanwhile");
    }
    return true;
}

status_t FileCopier::LookAtSource(struct stat* now)
{
    return fPurpose.TakesAllAlong() ? fSource.GetStat(now) : fAccess.SetTo(fSource, now);
}

/// Finds out what was made; false, and told, when that cannot be.
bool FileCopier::LearnMade()
{
    struct stat made;
    const bool isKnown = fMade != node_ref();
    const status_t status = isKnown ? status_t(B_OK) : Target().GetStat(&made);
    if (status == B_OK && !isKnown) {
        fMade = NodeOf(made);
    }
    return status == B_OK || Note(ReasonFor(status));
}

/// For volumes where the node says nothing.
void FileCopier::NoteMadeName()
{
    if (!fStep.target.hasStableNodes) {
        fContext.made.AddName(fStep.target.path, fStep.targetName);
    }
}

void FileCopier::NoteChange(Change::Kind kind)
{
    if (!fStep.target.isNew) {
        fContext.journal.Note(fPurpose.item, {kind, fStep.target.node, fStep.targetName, fMade});
    }
}

void FileCopier::Complete()
{
    if (fPurpose.TakesAllAlong() && fIsWhole) {
        fContext.access.FinishMoved(&Target(), fSource, fRecord);
    } else if (fIsWhole) {
        fContext.access.FinishNew(&Target(), fCopied, fAccess, fRecord);
    } else {
        fContext.access.FinishNew(&Target(), fSource, fRecord);
    }
    Close();
}

bool FileCopier::HasAttributesAlong()
{
    if (fAttributes == B_NO_INIT) {
        fAttributes = fPurpose.TakesAllAlong() ? Target().CheckAttrsFrom(fSource) : status_t(B_OK);
    }
    return fAttributes == B_OK;
}

/// Before the first byte, so that the question about them comes before the work.
bool FileCopier::TakeAttributesAlong()
{
    if (HasAttributesAlong()) {
        return true;
    }
    fIsDecided = true;
    if (!fPurpose.IsMove()) {
        Note("some of its attributes could not be kept");
        return true; // nothing is lost: the source has them
    }
    if (fAttributes != B_UNSUPPORTED) {
        return Note("its attributes could not be kept");
    }
    if (fUI.AskAboutAttributes() == AttributesAnswer::kMoveWithout) {
        return true;
    }
    fIsLeft = true;
    return false;
}

void FileCopier::Close()
{
    fSource.Unset();
    // Some file systems tell only now that bytes did not arrive.
    const status_t closed = Target().Close();
    if (closed != B_OK && fIsWhole) {
        fIsWhole = Note(ReasonFor(closed));
    }
}

} // namespace norvane
