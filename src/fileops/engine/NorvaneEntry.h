#pragma once

#include "fileops/engine/CopyPlace.h"

#include <Entry.h>
#include <Errors.h>
#include <SupportDefs.h>

#include <string>

namespace norvane {

class CopyWin;
class OperationUI;
class OverWin;

/// The name that an entry gets in the Trash when `attempt` names before were taken.
std::string TrashName(const std::string& name, int64 attempt);

/// One item of a file operation: an entry that can be measured, copied and deleted.
///
/// A link is the link itself, never what it points to. Lives for one item of one operation.
/// Thread: the operation's own.
class NorvaneEntry : public BEntry
{
public:
    explicit NorvaneEntry(const entry_ref* ref);
    ~NorvaneEntry() override;

    /// The bytes that a copy would move: a file's size, the sum over a folder's tree, 0 for
    /// anything else.
    double CopySize();

    /// Copies the entry under its own name into the folder at `destDir`; a folder that exists is
    /// merged into. Says true when done or merged, false when skipped, cancelled, or copied onto
    /// itself; that is what the person is shown, not whether every byte arrived: see IsWhole().
    /// Ownership: borrows both windows; either may be null.
    bool CopyTo(const char* destDir, CopyWin* copyWin, OverWin* overWin);
    /// The same with whatever shows progress and answers questions.
    bool CopyTo(const char* destDir, OperationUI& ui);

    /// True when the last CopyTo() copied everything: every entry listed, opened, read to its end
    /// and written to the last byte, nothing skipped, nothing left out.
    bool IsWhole() const { return fResult.isWhole; }

    /// Moves the entry into the home Trash, where a name that is taken is followed by " copy",
    /// " copy2", " copy3". False when it lies on another volume, is busy or gone: it is to be
    /// copied there then. Other failures say true too, so see TrashStatus().
    bool TrashIt();
    /// The same for a home Trash that is open already.
    bool TrashIt(BDirectory& trash);
    /// B_OK when the last TrashIt() moved the entry, else why it did not.
    status_t TrashStatus() const { return fTrashStatus; }
    /// Moves the entry into `trash` in that way. Errors: those of moving.
    [[nodiscard]] status_t MoveIntoTrash(BDirectory& trash);

    /// Removes the entry, a folder with all that can be removed in it; what cannot stays, without a
    /// word. No link is followed and no mounted volume entered.
    void DeleteEntry();
    /// The same, telling what stays, of the entry itself under `shownName` when that is not null.
    /// Says whether nothing of it is left.
    bool DeleteEntry(OperationUI& ui, const char* shownName = nullptr);

    /// Fills the overwrite question with both files' sizes and dates, asks it and returns when it
    /// is answered.
    void Overwrite(const char* sourcePath, const char* targetPath, OverWin* overWin);

    /// Shows what a status code means, in a stop alert.
    void ShowError(long status);

private:
    CopyResult fResult;
    status_t fTrashStatus = B_NO_INIT;
};

} // namespace norvane
