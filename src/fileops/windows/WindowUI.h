#pragma once

#include "fileops/engine/OperationUI.h"

namespace norvane {

class CopyWin;
class OverWin;

/// Shows an operation's progress in its window and asks its questions in its dialog; either may be
/// missing.
class WindowUI : public OperationUI
{
public:
    /// Ownership: borrows both for its own life; either may be null.
    WindowUI(CopyWin* copyWin, OverWin* overWin) : fCopyWin(copyWin), fOverWin(overWin) {}

    // OperationUI
    void FileStarted(const std::string& sourcePath, const std::string& targetPath,
                     int64 sizeBytes) override;
    void BytesCopied(const char* name, int64 count) override;
    void EntriesVisited(int64 count) override;
    bool CanAsk() const override { return fOverWin != nullptr; }
    uint32 StandingAnswer() const override;
    void AskOverwrite(const OverwriteQuestion& question) override;
    void HideProgress() override;
    void ShowProgress() override;
    void Tell(const char* text, Notice notice) override;
    void NoteProblem(const std::string& name, const std::string& reason) override;
    bool IsStopped() const override;
    bool MayDelete() const override;

private:
    CopyWin* fCopyWin;
    OverWin* fOverWin;
};

} // namespace norvane
