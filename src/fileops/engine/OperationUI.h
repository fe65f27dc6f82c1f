#pragma once

#include "MessageCodes.h"
#include "fileops/engine/ItemAlert.h"

#include <SupportDefs.h>

#include <string>

namespace norvane {

/// A file whose copy begins; lent for the call, which comes so often that no text is made for it.
struct StartedFile
{
    const std::string& sourceFolder; // the paths, as they are shown
    const char* name;
    const std::string& targetFolder;
    const char* targetName;
    int64 bytes;
};

/// The path of an entry, as it is shown.
inline std::string ShownPath(const std::string& folder, const char* name)
{
    return (folder == "/" ? "" : folder) + "/" + name;
}

/// What the overwrite question shows of the two files.
struct OverwriteQuestion
{
    std::string sourcePath;
    std::string targetPath;
    std::string targetDetails;
    std::string sourceDetails;
};

/// Files on their way from a server, or to one.
struct TransferStep
{
    std::string from; // the paths, as they are shown
    std::string to;
    std::string name;    // of the file
    int32 percent = 0;   // of the file, as far as that is known
    int64 bytes = 0;     // of the file
    int64 baseBytes = 0; // of those before it
    bool isNew = false;  // it begins
};

/// How much an operation has to do.
struct OperationSize
{
    enum class Kind : uint8 {
        kLocal,
        kUpload, // percents are told
        kDownload,
    };
    Kind kind = Kind::kLocal;
    int64 bytes = 0;
    int64 entries = 0; // above 0: the share done is told by entries, not by bytes
    size_t items = 0;
};

/// What becomes of items with attributes that cannot be kept where they are moved to.
enum class AttributesAnswer : uint8 {
    kLeave,
    kMoveWithout,
    kStop,
};

/// What a file operation says and asks while it runs: windows in the program, a script in tests.
///
/// Thread: the operation's own.
class OperationUI
{
public:
    virtual ~OperationUI() = default;

    /// The operation was measured and begins.
    virtual void Measured(const OperationSize& size) = 0;
    /// A file's copy begins.
    virtual void FileStarted(const StartedFile& file) = 0;
    /// The next `count` bytes of the file named `name` were read and handed on.
    virtual void BytesCopied(const char* name, int64 count) = 0;
    /// So many bytes are done in all, those of items that were moved as a whole included.
    virtual void BytesDone(int64 count) = 0;
    /// A file goes to a server, or comes from one.
    virtual void Transferring(const TransferStep& step) = 0;
    /// A walk that measures or deletes came upon so many entries more; 0: it is still at work.
    virtual void EntriesVisited(int64 count) = 0;

    /// False when there is nobody to ask: a file that exists is then a failure like any other.
    virtual bool CanAsk() const = 0;
    /// The answer that stands, or kAnswerNone.
    virtual uint32 StandingAnswer() const = 0;
    /// Asks, and returns when StandingAnswer() is the answer.
    virtual void AskOverwrite(const OverwriteQuestion& question) = 0;
    /// Asks what becomes of items whose attributes cannot be kept.
    virtual AttributesAnswer AskAboutAttributes() = 0;

    /// Takes the progress away before a question; calls nest.
    virtual void HideProgress() = 0;
    virtual void ShowProgress() = 0;

    /// Tells of the item named `name` and returns when it was read.
    virtual void Tell(const std::string& name, ItemAlert alert) = 0;
    /// Notes what could not be handled whole, to be told once at the end.
    virtual void NoteProblem(const std::string& name, const std::string& reason) = 0;
    /// Shows what was noted, and returns when it was read.
    virtual void ShowSummary(const std::string& text) = 0;

    /// True once the person asked to stop; looked at for every entry and every piece.
    virtual bool IsStopped() const = 0;
    /// False once nothing more may be deleted: the person asked to stop, or the program's end
    /// answered a question in the person's place.
    virtual bool MayDelete() const = 0;
};

} // namespace norvane
