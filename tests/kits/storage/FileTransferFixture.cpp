#include "FileTransferFixture.h"

#include <File.h>
#include <FileTransfer.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <dlfcn.h>
#include <fcntl.h>
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

/// Copies as a volume would that shares blocks.
int FeignClone(int source, int target)
{
    static const auto read = SystemCall<Pread>("pread");
    static const auto write = SystemCall<Pwrite>("pwrite");
    char bytes[4096];
    off_t position = 0;
    for (ssize_t count = 0; (count = read(source, bytes, sizeof(bytes), position)) > 0;) {
        if (write(target, bytes, static_cast<size_t>(count), position) != count) {
            return -1;
        }
        position += count;
    }
    return 0;
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
            return FeignClone(static_cast<int>(reinterpret_cast<intptr_t>(argument)), file);
        }
    }
    return real(file, request, argument);
}

extern "C" ssize_t copy_file_range(int source, off64_t* from, int target, off64_t* to, size_t size,
                                   unsigned flags)
{
    static const auto real = SystemCall<CopyFileRange>("copy_file_range");
    Answer answer;
    if (Ask(target, gTarget, Kind::kRange, *from, static_cast<ssize_t>(size), &answer)) {
        if (answer.error != 0) {
            return -1;
        }
        if (answer.most == 0) {
            return 0;
        }
    }
    return real(source, from, target, to, Limited(size, answer), flags);
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
    return off_t(st.st_blocks) * 512;
}
