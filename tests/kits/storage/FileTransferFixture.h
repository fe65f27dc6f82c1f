#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <sys/types.h>
#include <vector>

#include <TempTree.h>

// What a file system answers is written down by the test, as far as it matters there: the calls
// between the two files of a transfer pass through here first.

enum class Kind {
    kClone,
    kRange,
    kSeekData,
    kRead,
    kWrite,
    kSetSize,
};

struct Call
{
    Kind kind;
    off_t position;
    ssize_t size; // what was asked for
    int index;    // how many calls of this kind came before
};

/// The answer to one call.
struct Answer
{
    int error = 0;          // its number, and nothing is done
    ssize_t most = -1;      // does no more than this many bytes; 0: says that there is nothing
    bool isFeigned = false; // kClone: copies, as if the volume could share blocks
};

/// While it lives, the calls on `source` and `target` are asked of `answer` first, and noted.
/// Answers with nothing set let the system answer.
class CallScript
{
public:
    using Answering = std::function<Answer(const Call&)>;

    CallScript(const std::string& source, const std::string& target, Answering answer);
    ~CallScript();
    CallScript(const CallScript&) = delete;
    CallScript& operator=(const CallScript&) = delete;

    /// What was called so far.
    std::vector<Call> Calls() const;
};

class FileTransferTest : public testing::Test
{
protected:
    struct Outcome
    {
        ssize_t sum = 0;    // what the pieces stood for
        ssize_t status = 0; // of the last call of Next(); 0: all was copied
        bool hasFailedReading = false;
        int pieces = 0;
    };

    /// Transfers "source" to a new "target"; `between` is called after each piece.
    Outcome Transfer(const std::function<void(int pieces)>& between = nullptr);
    /// The same while the calls are answered by `answer`.
    Outcome TransferScripted(const CallScript::Answering& answer);

    std::string Source() const { return fTree.Path("source"); }
    std::string Target() const { return fTree.Path("target"); }
    /// Writes a source of that many bytes, none like its neighbours.
    std::string WriteSource(size_t size);
    bool HasArrived() const { return fTree.Read("target") == fTree.Read("source"); }
    off_t TargetSize() const;
    /// Bytes that the file takes on its volume, or those that are data there.
    static off_t Occupied(const std::string& path);

    /// How many calls of that kind the last scripted transfer made.
    int Count(Kind kind) const;

    TempTree fTree;
    std::vector<Call> fCalls; // of the last scripted transfer
};

/// Names the tests that copy by the system's own way, and by reading and writing.
inline std::string WayName(const testing::TestParamInfo<bool>& way)
{
    return way.param ? "Range" : "Plain";
}
