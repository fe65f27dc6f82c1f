#pragma once

#include <Entry.h>
#include <SupportDefs.h>

namespace norvane {

class CopyWin;
class OperationUI;
class OverWin;

/// One item of a file operation: an entry that can be measured and copied.
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
    bool IsWhole() const { return fIsWhole; }

    /// Fills the overwrite question with both files' sizes and dates, asks it and returns when it
    /// is answered.
    void Overwrite(const char* sourcePath, const char* targetPath, OverWin* overWin);

    /// Shows what a status code means, in a stop alert.
    void ShowError(long status);

private:
    bool fIsWhole = false;
};

} // namespace norvane
