#include "SilentFile.h"

#include <atomic>
#include <dlfcn.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

namespace {

std::atomic<ino_t> gNode{0}; // 0: none
std::atomic<bool> gIsAwaited{false};

using Read = ssize_t (*)(int, void*, size_t, off_t);

bool IsSilent(int file)
{
    struct stat st = {};
    return gNode != 0 && ::fstat(file, &st) == 0 && st.st_ino == gNode;
}

} // namespace

SilentFile::SilentFile(const std::string& path)
{
    struct stat st = {};
    if (::stat(path.c_str(), &st) == 0) {
        gIsAwaited = false;
        gNode = st.st_ino;
    }
}

SilentFile::~SilentFile()
{
    gNode = 0;
}

bool SilentFile::IsAwaited()
{
    return gIsAwaited;
}

// Stands before the system's in programs that use SilentFile.
extern "C" ssize_t pread(int file, void* buffer, size_t size, off_t position)
{
    static const auto read = reinterpret_cast<Read>(::dlsym(RTLD_NEXT, "pread"));
    while (IsSilent(file)) {
        gIsAwaited = true;
        const timespec pause = {0, 1'000'000};
        ::nanosleep(&pause, nullptr);
    }
    return read(file, buffer, size, position);
}
