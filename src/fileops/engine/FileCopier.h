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
/// What asks and tells belongs to the operation's thread. A small file may be filled beside it; one
/// that goes where the operation made the folder, and where nothing is to be met, may be made
/// beside it too.
class FileCopier
{
public:
    /// `place` is PlaceBelow() of the source. Ownership: borrows `context` and the ledger of
    /// `purpose` for its own life, and what `way` lends.
    FileCopier(OperationContext& context, const CopyPurpose& purpose,
               std::shared_ptr<const CopyWay> way, const char* name, const char* targetName,
               uint64 place);
    ~FileCopier();

    /// Opens the source, if that is to be known before Begin(). Errors: those of opening a regular
    /// file by its name.
    status_t Open();
    /// Opens the source and makes the new file. Returns whether only the contents of a small file
    /// are missing: then Fill() comes next.
    bool Begin();
    /// Copies the contents of a small file; without Begin() also does what that does, as far as
    /// there is nothing to ask or to tell, or nothing at all when `isStopped`. Thread: any.
    void Fill(bool isStopped);
    /// Does what is left, and tells what became of it.
    CopyResult End();

private:
    enum class Clash : uint8 {
        kReplace,
        kLeave,
    };

    void Create();
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
    bool HasAttributesAlong();
    bool TakeAttributesAlong();
    void Close();
    bool Note(const std::string& problem);

    OperationContext& fContext;
    OperationUI& fUI;
    const CopyPurpose fPurpose;
    const std::shared_ptr<const CopyWay> fWay;
    const std::string fName;
    const std::string fOtherName; // of the target; "" when it is the same
    const CopyStep fStep;         // along that way, by these names
    status_t fOpened = B_NO_INIT;
    status_t fCreated = B_NO_INIT;
    status_t fAttributes = B_NO_INIT; // whether they can be kept, once that was looked at
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
    bool fIsFull = false;    // the target's volume
    bool fIsReady = false;   // for its contents
    bool fIsTold = false;    // that it begins
    bool fIsLeft = false;    // for its attributes
    bool fIsDecided = false; // what becomes of it without them
    bool fIsRemoved = false;
    bool fHasFailedReading = false;
    std::vector<std::string> fProblems;
};

} // namespace norvane
