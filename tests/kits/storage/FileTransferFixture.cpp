#include "FileTransferFixture.h"

#include <File.h>
#include <FileTransfer.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <dlfcn.h>
#include <fcntl.h>
#include <limits>
#include <linux/fs.h>
#include <mutex>
#include <sys/stat.h>
#include <unistd.h>

namespace {

struct Node
{
    dev_t device = 0;
    ino_t number = 0;
};

std::mutex gMutex; // guards what follows; a transfer may write on a thread of its own
bool gIsActive = false;
Node gSource;
Node gTarget;
CallScript::Answering gAnswering;
std::vector<Call> gCalls;

Node NodeOf(const std::string& path)
{
    struct stat st = {};
    EXPECT_EQ(stat(path.c_str(), &st), 0) << path;
    return {st.st_dev, st.st_ino};
}

bool Is(int file, const Node& node)
{
    struct stat st;
    return fstat(file, &st) == 0 && st.st_dev == node.device && st.st_ino == node.number;
}

int CountIn(const std::vector<Call>& calls, Kind kind)
{
    int count = 0;
    for (const Call& call : calls) {
        count += call.kind == kind ? 1 : 0;
    }
    return count;
}

/// Notes a call on one of the two files and tells the script's answer; false: none of its business.
bool Ask(int file, const Node& node, Kind kind, off_t position, ssize_t size, Answer* answer)
{
    const std::lock_guard<std::mutex> lock(gMutex);
    if (!gIsActive || !Is(file, node)) {
        return false;
    }
    const Call call{kind, position, size, CountIn(gCalls, kind)};
    gCalls.push_back(call);
    *answer = gAnswering ? gAnswering(call) : Answer();
    errno = answer->error;
    return true;
}

template<typename Function>
Function SystemCall(const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

size_t Limited(size_t size, const Answer& answer)
{
    return answer.most >= 0 ? std::min(size, static_cast<size_t>(answer.most)) : size;
}

using Pread = ssize_t (*)(int, void*, size_t, off_t);
using Pwrite = ssize_t (*)(int, const void*, size_t, off_t);
using CopyFileRange = ssize_t (*)(int, off64_t*, int, off64_t*, size_t, unsigned);

/// Copies up to `size` bytes as a volume would that does so by itself; where a test's cannot.
ssize_t Feign(int source, int target, off_t position, size_t size)
{
    static const auto read = SystemCall<Pread>("pread");
    static const auto write = SystemCall<Pwrite>("pwrite");
    char bytes[4096];
    ssize_t sum = 0;
    while (static_cast<size_t>(sum) < size) {
        const size_t wanted = std::min(sizeof(bytes), size - static_cast<size_t>(sum));
        const ssize_t count = read(source, bytes, wanted, position + sum);
        if (count <= 0) {
            return sum > 0 ? sum : count;
        }
        if (write(target, bytes, static_cast<size_t>(count), position + sum) != count) {
            return -1;
        }
        sum += count;
    }
    return sum;
}

} // namespace

// These stand before the system's, as the program comes before its libraries.

extern "C" int ioctl(int file, unsigned long request, ...) noexcept
{
    static const auto real = SystemCall<int (*)(int, unsigned long, void*)>("ioctl");
    va_list arguments;
    va_start(arguments, request);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    Answer answer;
    if (request == FICLONE && Ask(file, gTarget, Kind::kClone, 0, 0, &answer)) {
        if (answer.error != 0) {
            return -1;
        }
        if (answer.isFeigned) {
            const int source = static_cast<int>(reinterpret_cast<intptr_t>(argument));
            return Feign(source, file, 0, std::numeric_limits<size_t>::max()) < 0 ? -1 : 0;
        }
    }
    return real(file, request, argument);
}

extern "C" ssize_t copy_file_range(int source, off64_t* from, int target, off64_t* to, size_t size,
                                   unsigned flags)
{
    static const auto real = SystemCall<CopyFileRange>("copy_file_range");
    Answer answer;
    const bool isAsked =
        Ask(target, gTarget, Kind::kRange, *from, static_cast<ssize_t>(size), &answer);
    if (isAsked) {
        if (answer.error != 0) {
            return -1;
        }
        if (answer.most == 0) {
            return 0;
        }
    }
    const size_t limited = Limited(size, answer);
    const ssize_t copied = real(source, from, target, to, limited, flags);
    const bool isUnable = isAsked && copied < 0 &&
                          (errno == EXDEV || errno == EINVAL || errno == ENOSYS ||
                           errno == EOPNOTSUPP || errno == EPERM);
    return isUnable ? Feign(source, target, *from, limited) : copied;
}

extern "C" off_t lseek(int file, off_t position, int whence) noexcept
{
    static const auto real = SystemCall<off_t (*)(int, off_t, int)>("lseek");
    Answer answer;
    if (whence == SEEK_DATA && Ask(file, gSource, Kind::kSeekData, position, 0, &answer) &&
        answer.error != 0) {
        return -1;
    }
    return real(file, position, whence);
}

extern "C" ssize_t pread(int file, void* buffer, size_t size, off_t position)
{
    static const auto real = SystemCall<Pread>("pread");
    Answer answer;
    if (Ask(file, gSource, Kind::kRead, position, static_cast<ssize_t>(size), &answer) &&
        answer.error != 0) {
        return -1;
    }
    return real(file, buffer, Limited(size, answer), position);
}

extern "C" ssize_t pwrite(int file, const void* buffer, size_t size, off_t position)
{
    static const auto real = SystemCall<Pwrite>("pwrite");
    Answer answer;
    if (Ask(file, gTarget, Kind::kWrite, position, static_cast<ssize_t>(size), &answer) &&
        answer.error != 0) {
        return -1;
    }
    return real(file, buffer, Limited(size, answer), position);
}

extern "C" int ftruncate(int file, off_t size) noexcept
{
    static const auto real = SystemCall<int (*)(int, off_t)>("ftruncate");
    Answer answer;
    if (Ask(file, gTarget, Kind::kSetSize, size, 0, &answer) && answer.error != 0) {
        return -1;
    }
    return real(file, size);
}

CallScript::CallScript(const std::string& source, const std::string& target, Answering answer)
{
    const Node from = NodeOf(source);
    const Node to = NodeOf(target);
    const std::lock_guard<std::mutex> lock(gMutex);
    gSource = from;
    gTarget = to;
    gAnswering = std::move(answer);
    gCalls.clear();
    gIsActive = true;
}

CallScript::~CallScript()
{
    const std::lock_guard<std::mutex> lock(gMutex);
    gIsActive = false;
    gAnswering = nullptr;
}

std::vector<Call> CallScript::Calls() const
{
    const std::lock_guard<std::mutex> lock(gMutex);
    return gCalls;
}

FileTransferTest::Outcome FileTransferTest::Transfer(const std::function<void(int)>& between)
{
    BFile source(Source().c_str(), B_READ_ONLY);
    BFile target(Target().c_str(), B_READ_WRITE | B_CREATE_FILE | B_ERASE_FILE);
    BFileTransfer transfer(&source, &target);
    Outcome outcome;
    // A transfer that does not end is a failure and must not be a test without an end.
    while (outcome.pieces < 100'000) {
        const ssize_t count = transfer.Next();
        if (count <= 0) {
            outcome.status = count;
            outcome.hasFailedReading = transfer.HasFailedReading();
            EXPECT_EQ(transfer.Next(), count) << "the end stays the end";
            return outcome;
        }
        outcome.sum += count;
        ++outcome.pieces;
        if (between) {
            between(outcome.pieces);
        }
    }
    ADD_FAILURE() << "it goes on for ever";
    return outcome;
}

FileTransferTest::Outcome FileTransferTest::TransferScripted(const CallScript::Answering& answer)
{
    fTree.Write("target", "");
    const CallScript script(Source(), Target(), answer);
    const Outcome outcome = Transfer();
    fCalls = script.Calls();
    return outcome;
}

int FileTransferTest::Count(Kind kind) const
{
    return CountIn(fCalls, kind);
}

std::string FileTransferTest::WriteSource(size_t size)
{
    std::string contents(size, '\0');
    for (size_t i = 0; i < size; i++) {
        contents[i] = static_cast<char>(i * 7 + i / 251 + i / 65'521);
    }
    fTree.Write("source", contents);
    return contents;
}

off_t FileTransferTest::TargetSize() const
{
    struct stat st = {};
    stat(Target().c_str(), &st);
    return st.st_size;
}

off_t FileTransferTest::Occupied(const std::string& path)
{
    struct stat st = {};
    stat(path.c_str(), &st);
    // Some volumes give a file that grows more blocks than it asked for; they hold no data.
    const int file = open(path.c_str(), O_RDONLY);
    off_t data = 0;
    off_t hole = 0;
    for (off_t at = 0; (at = lseek(file, hole, SEEK_DATA)) >= 0; data += hole - at) {
        hole = lseek(file, at, SEEK_HOLE);
    }
    close(file);
    return std::min(off_t(st.st_blocks) * 512, data);
}
