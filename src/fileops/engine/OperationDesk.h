#pragma once

#include "fileops/engine/OperationUI.h"
#include "fileops/engine/ProblemList.h"

#include <functional>
#include <map>
#include <optional>
#include <string>

namespace norvane {

/// Stands between an operation and whoever sees it: gathers what is told once at the end, tells the
/// same alert only once, asks about attributes only once, and lets the operation finish what it
/// promised before anything waits for a person.
///
/// Thread: the operation's.
class OperationDesk : public OperationUI
{
public:
    /// `beforeWaiting` is called before each question and alert. Ownership: borrows `ui` for its
    /// own life.
    OperationDesk(OperationUI& ui, std::function<void()> beforeWaiting)
        : fUI(ui), fBeforeWaiting(std::move(beforeWaiting))
    {
    }

    /// What is to be told at the end; "" when all went well.
    std::string Summary() const;

    // OperationUI
    void Measured(const OperationSize& size) override { fUI.Measured(size); }
    void FileStarted(const StartedFile& file) override { fUI.FileStarted(file); }
    void BytesCopied(const char* name, int64 count) override { fUI.BytesCopied(name, count); }
    void BytesDone(int64 count) override { fUI.BytesDone(count); }
    void Transferring(const TransferStep& step) override { fUI.Transferring(step); }
    void EntriesVisited(int64 count) override { fUI.EntriesVisited(count); }
    bool CanAsk() const override { return fUI.CanAsk(); }
    uint32 StandingAnswer() const override { return fUI.StandingAnswer(); }
    void AskOverwrite(const OverwriteQuestion& question) override;
    AttributesAnswer AskAboutAttributes() override;
    void HideProgress() override { fUI.HideProgress(); }
    void ShowProgress() override { fUI.ShowProgress(); }
    void Tell(const std::string& name, ItemAlert alert) override;
    void NoteProblem(const std::string& name, const std::string& reason) override;
    void ShowSummary(const std::string& text) override { fUI.ShowSummary(text); }
    bool IsStopped() const override { return fUI.IsStopped(); }
    bool MayDelete() const override { return fUI.MayDelete(); }

private:
    OperationUI& fUI;
    const std::function<void()> fBeforeWaiting;
    ProblemList fProblems;
    // Of each alert that was shown, the item it spoke of; "" once that is in the list, too.
    std::map<ItemAlert, std::string> fTold;
    std::optional<AttributesAnswer> fAttributesAnswer;
    int64 fWithoutAttributes = 0; // items that went on without, or were left for that
};

} // namespace norvane
