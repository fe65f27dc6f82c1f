#include "fileops/windows/WindowUI.h"

#include "fileops/windows/CopyWin.h"
#include "fileops/windows/OverWin.h"
#include "settings/MsgBox.h"

#include <Alert.h>

namespace norvane {

void WindowUI::FileStarted(const StartedFile& file)
{
    if (fCopyWin != nullptr) {
        fCopyWin->FileStarted(file);
    }
}

void WindowUI::BytesCopied(const char* name, int64 count)
{
    if (fCopyWin != nullptr) {
        fCopyWin->BytesCopied(name, count);
    }
}

void WindowUI::Measured(const OperationSize& size)
{
    if (fCopyWin != nullptr) {
        fCopyWin->Measured(size);
    }
}

void WindowUI::BytesDone(int64 count)
{
    if (fCopyWin != nullptr) {
        fCopyWin->BytesDone(count);
    }
}

void WindowUI::Transferring(const TransferStep& step)
{
    if (fCopyWin != nullptr) {
        fCopyWin->Transferring(step);
    }
}

void WindowUI::EntriesVisited(int64 count)
{
    if (fCopyWin != nullptr) {
        fCopyWin->EntriesVisited(count);
    }
}

bool WindowUI::CanAsk() const
{
    return fOverWin != nullptr && fOverWin->CanAsk();
}

uint32 WindowUI::StandingAnswer() const
{
    return fOverWin != nullptr ? fOverWin->GetRetType() : uint32(kAnswerNone);
}

void WindowUI::AskOverwrite(const OverwriteQuestion& question)
{
    if (fOverWin == nullptr) {
        return;
    }
    fOverWin->SetPaths(question.sourcePath.c_str(), question.targetPath.c_str(),
                       question.targetDetails.c_str(), question.sourceDetails.c_str());
    fOverWin->DoDisplay();
    fOverWin->WaitForAnswer();
}

void WindowUI::HideProgress()
{
    if (fCopyWin != nullptr) {
        fCopyWin->HideForQuestion();
    }
}

void WindowUI::ShowProgress()
{
    if (fCopyWin != nullptr) {
        fCopyWin->ShowAgain();
    }
}

void WindowUI::ShowState()
{
    if (fCopyWin != nullptr) {
        fCopyWin->ShowState();
    }
}

/// An alert that nobody read was taken away by the program's end.
void WindowUI::StopUnless(bool wasRead)
{
    if (!wasRead && fCopyWin != nullptr) {
        fCopyWin->Stop();
    }
}

AttributesAnswer WindowUI::AskAboutAttributes()
{
    ShowState();
    auto* question =
        new BAlert("Sir?", "Some attributes cannot be kept there.", "Stop", "Move without them",
                   "Leave these", B_WIDTH_FROM_LABEL, B_WARNING_ALERT);
    switch (question->Go()) {
    case 1:
        return AttributesAnswer::kMoveWithout;
    case 2:
        return AttributesAnswer::kLeave;
    default:
        StopUnless(false);
        return AttributesAnswer::kStop;
    }
}

void WindowUI::Tell(const std::string& name, ItemAlert alert)
{
    ShowState();
    const std::string text = TextOf(alert, name);
    if (IsOfUpload(alert)) {
        StopUnless(MsgBox("Err", text.c_str(), "OK", B_INFO_ALERT));
        return;
    }
    const bool isGrave = NoticeOf(alert) == Notice::kStop;
    StopUnless(MsgBox(text.c_str(), isGrave ? B_STOP_ALERT : B_INFO_ALERT));
}

void WindowUI::NoteProblem(const std::string&, const std::string&) {}

void WindowUI::ShowSummary(const std::string& text)
{
    ShowState();
    auto* alert =
        new BAlert("Err", text.c_str(), "OK", nullptr, nullptr, B_WIDTH_AS_USUAL, B_INFO_ALERT);
    alert->Go();
}

bool WindowUI::IsStopped() const
{
    return fCopyWin != nullptr && fCopyWin->IsStopped();
}

bool WindowUI::MayDelete() const
{
    return !IsStopped() && (fOverWin == nullptr || !fOverWin->WasAnsweredForQuit());
}

} // namespace norvane
