#pragma once

#include "fileops/engine/OperationUI.h"

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// An answer to the overwrite question as a test's name.
inline std::string AnswerName(uint32 answer)
{
    switch (answer) {
    case norvane::kAnswerOverwrite:
        return "Overwrite";
    case norvane::kAnswerOverwriteAll:
        return "OverwriteAll";
    case norvane::kAnswerOverwriteOlder:
        return "OverwriteOlder";
    case norvane::kAnswerSkip:
        return "Skip";
    case norvane::kAnswerSkipAll:
        return "SkipAll";
    case norvane::kAnswerCancel:
        return "Cancel";
    default:
        return "None";
    }
}

/// An operation's windows replaced by a script: gives the answers in turn and writes down what it
/// is told.
///
/// When the script has no answer left, it says Cancel.
class ScriptedUI : public norvane::OperationUI
{
public:
    struct StartedFile
    {
        std::string source;
        std::string target;
        int64 sizeBytes;
    };

    std::deque<uint32> answers;
    bool canAsk = true;
    bool isStopped = false;
    bool mayDelete = true;
    // Called before what they are named after is written down.
    std::function<void(const std::string& sourcePath)> onFile;
    std::function<void(int64 count)> onBytes;
    std::function<void(const norvane::OverwriteQuestion&)> onQuestion;
    std::function<void(int64 visited)> onVisit;

    std::function<void(const norvane::TransferStep&)> onTransfer;

    std::vector<StartedFile> files;
    std::vector<norvane::TransferStep> transfers;
    std::vector<norvane::OverwriteQuestion> questions;
    std::vector<std::string> notices;
    std::vector<std::string> summaries;
    norvane::AttributesAnswer attributesAnswer = norvane::AttributesAnswer::kLeave;
    int32 attributesQuestions = 0;
    norvane::OperationSize size;
    std::vector<std::pair<std::string, std::string>> problems;
    int64 bytes = 0;
    int64 chunks = 0;
    int64 visited = 0;
    int32 hidden = 0; // how often hidden, less how often shown again
    uint32 answer = norvane::kAnswerNone;

    // OperationUI
    void Measured(const norvane::OperationSize& measured) override { size = measured; }
    void FileStarted(const norvane::StartedFile& file) override
    {
        const std::string source = norvane::ShownPath(file.sourceFolder, file.name);
        if (onFile) {
            onFile(source);
        }
        files.push_back(
            {source, norvane::ShownPath(file.targetFolder, file.targetName), file.bytes});
    }
    void BytesCopied(const char*, int64 count) override
    {
        if (onBytes) {
            onBytes(count);
        }
        bytes += count;
        chunks++;
    }
    void Transferring(const norvane::TransferStep& step) override
    {
        if (onTransfer) {
            onTransfer(step);
        }
        transfers.push_back(step);
    }
    void EntriesVisited(int64 count) override
    {
        visited += count;
        if (onVisit) {
            onVisit(visited);
        }
    }
    void BytesDone(int64) override {}
    bool CanAsk() const override { return canAsk; }
    uint32 StandingAnswer() const override { return answer; }
    void AskOverwrite(const norvane::OverwriteQuestion& question) override
    {
        if (onQuestion) {
            onQuestion(question);
        }
        questions.push_back(question);
        answer = norvane::kAnswerCancel;
        if (!answers.empty()) {
            answer = answers.front();
            answers.pop_front();
        }
    }
    void HideProgress() override { hidden++; }
    void ShowProgress() override { hidden--; }
    norvane::AttributesAnswer AskAboutAttributes() override
    {
        attributesQuestions++;
        isStopped = isStopped || attributesAnswer == norvane::AttributesAnswer::kStop;
        return attributesAnswer;
    }
    void Tell(const std::string& name, norvane::ItemAlert alert) override
    {
        notices.push_back(norvane::TextOf(alert, name));
    }
    void ShowSummary(const std::string& text) override { summaries.push_back(text); }
    void NoteProblem(const std::string& name, const std::string& reason) override
    {
        problems.push_back({name, reason});
    }
    bool IsStopped() const override { return isStopped; }
    bool MayDelete() const override { return mayDelete && !isStopped; }
};
