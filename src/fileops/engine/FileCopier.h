#pragma once

#include "fileops/engine/CopyPlace.h"

#include <File.h>
#include <SupportDefs.h>

#include <sys/stat.h>

#include <string>
#include <vector>

namespace norvane {

class OperationUI;
class OwnTemporaryName;

/// Copies one regular file from an open folder into another, asking about a target that exists.
///
/// A new file is written in place. One that takes the place of another is written beside it and
/// renamed over it once it is whole, so that the old contents are there until the new ones are.
///
/// Either Run(), or its three steps: then the contents of a small new file may be copied beside the
/// operation's thread, to which all else belongs.
class FileCopier
{
public:
    /// Ownership: borrows all for its own life; what `step` refers to only until Begin() said true
    /// or End() returned.
    FileCopier(OperationUI& ui, const CopyPurpose& purpose, const CopyStep& step);

    CopyResult Run();

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

    void WriteNew();
    CopyResult WriteOver(const struct stat& existing);
    CopyResult MeetExisting();
    CopyResult Failed(status_t status);
    CopyResult Written();
    Clash AskAboutClash(const struct stat& existing);
    Clash LeaveHidden();
    bool IsOlder(const struct stat& existing) const;
    [[nodiscard]] status_t CreateBeside(const struct stat& existing, const OwnTemporaryName& name);
    void TellStart();
    void CopyContents();
    void CheckContents();
    bool CopySmall();
    bool CopyChunks();
    bool CopyPiece(ssize_t read, const char* bytes);
    bool HandOver();
    bool WriteFailed(ssize_t status);
    bool IsComplete();
    void Complete();
    void TakeAttributesAlong();
    void Close();
    bool Note(const std::string& problem);

    OperationUI& fUI;
    const CopyPurpose& fPurpose;
    const CopyStep fStep;
    const std::string fName;
    const std::string fSourcePath;
    status_t fOpened = B_NO_INIT;
    status_t fCreated = B_NO_INIT;
    BFile fSource;
    BFile fTarget;
    struct stat fRecord = {};
    int64 fCopiedBytes = 0;
    bool fIsFilled = false; // as a small file
    bool fIsWhole = false;
    bool fIsFull = false; // the target's volume
    std::vector<std::string> fProblems;
};

} // namespace norvane
