#include "fileops/windows/WindowUI.h"

#include "fileops/windows/CopyWin.h"
#include "fileops/windows/OverWin.h"
#include "settings/MsgBox.h"

namespace norvane {

void WindowUI::FileStarted(const std::string& sourcePath, const std::string& targetPath,
                           int64 sizeBytes)
{
    if (fCopyWin != nullptr) {
        fCopyWin->FileStarted(sourcePath, targetPath, sizeBytes);
    }
}

void WindowUI::BytesCopied(const char* name, int64 count)
{
    if (fCopyWin != nullptr) {
        fCopyWin->BytesCopied(name, count);
    }
}

void WindowUI::EntriesVisited(int64 count)
{
    if (fCopyWin != nullptr) {
        fCopyWin->EntriesVisited(count);
    }
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

void WindowUI::Tell(const char* text, Notice notice)
{
    const bool wasRead = MsgBox(text, notice == Notice::kStop ? B_STOP_ALERT : B_INFO_ALERT);
    if (!wasRead && fCopyWin != nullptr) {
        fCopyWin->Stop();
    }
}

void WindowUI::NoteProblem(const std::string& name, const std::string& reason)
{
    if (fCopyWin != nullptr) {
        fCopyWin->NoteProblem(name, reason);
    }
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
