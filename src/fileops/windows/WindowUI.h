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
    void Measured(const OperationSize& size) override;
    void FileStarted(const StartedFile& file) override;
    void BytesCopied(const char* name, int64 count) override;
    void BytesDone(int64 count) override;
    void Transferring(const TransferStep& step) override;
    void EntriesVisited(int64 count) override;
    bool CanAsk() const override;
    uint32 StandingAnswer() const override;
    void AskOverwrite(const OverwriteQuestion& question) override;
    AttributesAnswer AskAboutAttributes() override;
    void HideProgress() override;
    void ShowProgress() override;
    void Tell(const std::string& name, ItemAlert alert) override;
    /// Nothing at once: the operation sums up.
    void NoteProblem(const std::string& name, const std::string& reason) override;
    void ShowSummary(const std::string& text) override;
    bool IsStopped() const override;
    bool MayDelete() const override;

private:
    void ShowState();
    void StopUnless(bool wasRead);

    CopyWin* fCopyWin;
    OverWin* fOverWin;
};

} // namespace norvane
