#pragma once

#include "fileops/engine/CopyPlace.h"
#include "fileops/engine/Journal.h"

#include <File.h>
#include <NodeAccess.h>
#include <SupportDefs.h>

#include <sys/stat.h>

#include <memory>
#include <string>
#include <vector>

namespace norvane {

class OperationUI;
class ReplaceTarget;
struct OperationContext;

/// Copies one regular file from an open folder into another, asking about a target that exists.
///
/// A new file is written in place, and open to nobody else until it is whole. One that takes the
/// place of another is a ReplaceTarget.
///
/// Either Run(), or its three steps: then the contents of a small new file may be copied beside the
/// operation's thread, to which all else belongs.
class FileCopier
{
public:
    /// Ownership: borrows `context` and the ledger of `purpose` for its own life; what `step`
    /// refers to only until Begin() said true or End() returned.
    FileCopier(OperationContext& context, const CopyPurpose& purpose, const CopyStep& step);
    ~FileCopier();

    CopyResult Run();

    /// Opens the source, if that is to be known before Begin(). Errors: those of opening a regular
    /// file by its name.
    status_t Open();
    /// Opens the source and makes the new file. Returns whether only the contents of a small file
    /// are missing: then Fill() comes next.
    bool Begin();
    /// Copies the contents. Asks and tells nothing. Thread: any.
    void Fill();
    /// Does what is left, and tells what became of it.
    CopyResult End();

private:
    enum class Clash : uint8 {
        kReplace,
        kLeave,
    };

    bool LearnMade();
    void WriteNew();
    CopyResult WriteOver(const struct stat& existing);
    bool PutInPlace(ReplaceTarget& place, struct stat existing);
    BNodeAccess AccessOf(const struct stat& existing) const;
    status_t SetAccess(BNode* made, const struct stat& existing, const BNodeAccess& replaced);
    void NoteMadeName();
    void NoteChange(Change::Kind kind);
    CopyResult MeetExisting();
    Clash Decide(const struct stat& existing);
    CopyResult Failed(status_t status);
    CopyResult Written();
    Clash AskAboutClash(const struct stat& existing);
    Clash LeaveHidden();
    bool IsOlder(const struct stat& existing) const;
    BFile& Target() { return fBeside != nullptr ? *fBeside : fNew; }
    void TellStart();
    void CopyContents();
    void CheckContents();
    bool CopySmall();
    bool CopyPieces();
    bool ReadFailed(status_t status);
    bool WriteFailed(status_t status);
    bool IsComplete();
    status_t LookAtSource(struct stat* now);
    void Complete();
    bool TakeAttributesAlong();
    void Close();
    bool Note(const std::string& problem);

    OperationContext& fContext;
    OperationUI& fUI;
    const CopyPurpose fPurpose;
    const CopyStep fStep;
    // What is needed after the step.
    const std::string fName;
    const bool fIsInNewFolder;     // one that the operation made
    const std::string fTargetName; // "" there
    const node_ref fTargetFolder;
    status_t fOpened = B_NO_INIT;
    status_t fCreated = B_NO_INIT;
    BFile fSource;
    BFile fNew;
    std::shared_ptr<BFile> fBeside; // null unless it takes the place of another
    struct stat fRecord = {};       // of the source when it was opened
    node_ref fMade;                 // unset before it is known
    // How both were when all was copied, unset before.
    BNodeAccess fAccess; // of the source, of plain copies
    struct stat fCopied = {};
    int64 fCopiedBytes = 0;
    bool fIsFilled = false; // as a small file
    bool fIsWhole = false;
    bool fIsFull = false;  // the target's volume
    bool fIsReady = false; // for its contents
    bool fIsLeft = false;  // for its attributes
    bool fIsRemoved = false;
    bool fHasFailedReading = false;
    std::vector<std::string> fProblems;
};

} // namespace norvane
