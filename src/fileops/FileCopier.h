#pragma once

#include "fileops/CopyPlace.h"

#include <File.h>
#include <SupportDefs.h>

#include <sys/stat.h>

namespace norvane {

class OperationUI;
class OwnTemporaryName;

/// Copies one regular file from an open folder into another, asking about a target that exists.
///
/// A new file is written in place. One that takes the place of another is written beside it and
/// renamed over it once it is whole, so that the old contents are there until the new ones are.
/// Thread: the operation's.
class FileCopier
{
public:
    /// Ownership: borrows all for its own life; `record` is the source's, as it was listed.
    FileCopier(OperationUI& ui, const CopyPurpose& purpose, const CopyStep& step,
               const struct stat& record);

    CopyResult Run();

private:
    enum class Clash : uint8 {
        kReplace,
        kLeave,
        kSameFile,
    };

    bool OpenSource();
    CopyResult WriteNew(BFile* file);
    CopyResult WriteOver(const struct stat& existing);
    CopyResult Failed(status_t status);
    CopyResult Written(bool isWhole) const;
    Clash AskAboutClash(const struct stat& existing);
    Clash LeaveHidden();
    bool IsOlder(const struct stat& existing) const;
    status_t CreateBeside(const struct stat& existing, const OwnTemporaryName& name, BFile* file);
    bool CopyContents(BFile* file);
    bool CopyChunks(BFile* file, int64* copiedBytes);
    bool WriteFailed(ssize_t status);
    bool IsComplete(const BFile& file, int64 copiedBytes);
    bool TakeAlong(BFile* file);

    OperationUI& fUI;
    const CopyPurpose& fPurpose;
    const CopyStep& fStep;
    struct stat fRecord;
    BFile fSource;
    bool fIsFull = false; // the target's volume
};

} // namespace norvane
