#pragma once

#include "MessageCodes.h"

#include <SupportDefs.h>

#include <string>

namespace norvane {

/// What the overwrite question shows of the two files.
struct OverwriteQuestion
{
    std::string sourcePath;
    std::string targetPath;
    std::string targetDetails;
    std::string sourceDetails;
};

/// How grave a notice is.
enum class Notice : uint8 {
    kInfo,
    kStop,
};

/// What a file operation says and asks while it runs: windows in the program, a script in tests.
///
/// Thread: the operation's own.
class OperationUI
{
public:
    virtual ~OperationUI() = default;

    /// A file's copy begins; both paths are whole.
    virtual void FileStarted(const std::string& sourcePath, const std::string& targetPath,
                             int64 sizeBytes) = 0;
    /// The next `count` bytes of the file named `name` were read and handed on.
    virtual void BytesCopied(const char* name, int64 count) = 0;

    /// A walk that measures or deletes came upon so many entries more.
    virtual void EntriesVisited(int64 count) = 0;

    /// False when there is nobody to ask: a file that exists is then a failure like any other.
    virtual bool CanAsk() const = 0;
    /// The answer that stands, or kAnswerNone.
    virtual uint32 StandingAnswer() const = 0;
    /// Asks, and returns when StandingAnswer() is the answer.
    virtual void AskOverwrite(const OverwriteQuestion& question) = 0;

    /// Takes the progress away before a question; calls nest.
    virtual void HideProgress() = 0;
    virtual void ShowProgress() = 0;

    /// Shows `text` and returns when it was read.
    virtual void Tell(const char* text, Notice notice) = 0;
    /// Notes what could not be handled whole, to be told once at the end.
    virtual void NoteProblem(const std::string& name, const std::string& reason) = 0;

    /// True once the person asked to stop; looked at for every entry and every chunk.
    virtual bool IsStopped() const = 0;
    /// False once nothing more may be deleted: the person asked to stop, or the program's end
    /// answered a question in the person's place.
    virtual bool MayDelete() const = 0;
};

} // namespace norvane
