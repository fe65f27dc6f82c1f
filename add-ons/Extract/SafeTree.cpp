#include "Extract/SafeTree.h"

#include <NodeAccess.h>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace add_ons {

namespace {

constexpr size_t kMostSteps = 1'000;
constexpr int kFolder = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

int Result(int returned)
{
    return returned < 0 ? errno : 0;
}

void Close(int* descriptor)
{
    if (*descriptor >= 0) {
        ::close(*descriptor);
    }
    *descriptor = -1;
}

/// Nothing that comes out of an archive runs with the rights of another.
mode_t PlainMode(mode_t mode)
{
    return mode & 0777 & ~current_umask();
}

void SetTime(int descriptor, const timespec* modified)
{
    if (modified != nullptr) {
        const timespec times[2] = {*modified, *modified};
        ::futimens(descriptor, times); // a volume that keeps no such time keeps another
    }
}

} // namespace

bool ReadSteps(const std::string& path, Steps* steps)
{
    steps->clear();
    if (path.empty() || path.front() == '/') {
        return false;
    }
    for (size_t at = 0; at <= path.size();) {
        const size_t end = std::min(path.find('/', at), path.size());
        const std::string step = path.substr(at, end - at);
        at = end + 1;
        if (step == "..") {
            return false;
        }
        if (!step.empty() && step != ".") {
            steps->push_back(step);
        }
    }
    return steps->size() <= kMostSteps;
}

std::string PathOf(const Steps& steps)
{
    std::string path;
    for (const std::string& step : steps) {
        path += (path.empty() ? "" : "/") + step;
    }
    return path;
}

SafeTree::SafeTree(const std::string& path) : fRoot(::open(path.c_str(), kFolder))
{
    struct stat st;
    if (fRoot >= 0 && ::fstat(fRoot, &st) == 0) {
        fMode = st.st_mode & 07777;
        ::fchmod(fRoot, 0700);
    }
}

SafeTree::~SafeTree()
{
    Finish();
    ForgetParent();
    Close(&fRoot);
}

void SafeTree::Finish()
{
    if (fRoot >= 0) {
        ::fchmod(fRoot, fMode);
    }
}

void SafeTree::ForgetParent()
{
    Close(&fParent);
    fParentSteps.clear();
}

/// Opens the folder of the first `count` steps.
int SafeTree::OpenFolder(const Steps& steps, size_t count, bool makes, int* folder)
{
    int open = ::fcntl(fRoot, F_DUPFD_CLOEXEC, 0);
    for (size_t step = 0; step < count && open >= 0; step++) {
        const char* name = steps[step].c_str();
        if (makes && ::mkdirat(open, name, 0700) != 0 && errno != EEXIST) {
            const int error = errno;
            Close(&open);
            return error;
        }
        const int next = ::openat(open, name, kFolder);
        const int error = errno;
        Close(&open);
        if (next < 0) {
            return error;
        }
        open = next;
    }
    *folder = open;
    return open >= 0 ? 0 : errno;
}

int SafeTree::OpenParent(const Steps& steps, bool makes)
{
    if (steps.empty()) {
        return EINVAL;
    }
    const Steps parent(steps.begin(), steps.end() - 1);
    if (fParent >= 0 && parent == fParentSteps) {
        return 0;
    }
    ForgetParent();
    const int error = OpenFolder(steps, steps.size() - 1, makes, &fParent);
    if (error == 0) {
        fParentSteps = parent;
    }
    return error;
}

int SafeTree::MakeFolder(const Steps& steps)
{
    if (steps.empty()) {
        return 0; // the folder itself
    }
    const int error = OpenParent(steps, true);
    if (error != 0 || ::mkdirat(fParent, steps.back().c_str(), 0700) == 0) {
        return error;
    }
    struct stat st;
    const int made = errno;
    return made == EEXIST &&
                   ::fstatat(fParent, steps.back().c_str(), &st, AT_SYMLINK_NOFOLLOW) == 0 &&
                   S_ISDIR(st.st_mode)
               ? 0
               : made;
}

int SafeTree::MakeFile(const Steps& steps, int* file)
{
    const int error = OpenParent(steps, true);
    if (error != 0) {
        return error;
    }
    *file = ::openat(fParent, steps.back().c_str(),
                     O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    return Result(*file);
}

int SafeTree::MakeLink(const Steps& steps, const std::string& text)
{
    const int error = OpenParent(steps, true);
    return error != 0 ? error : Result(::symlinkat(text.c_str(), fParent, steps.back().c_str()));
}

int SafeTree::MakeSecondName(const Steps& steps, const Steps& file)
{
    if (file.empty()) {
        return EINVAL;
    }
    int folder = -1;
    int error = OpenFolder(file, file.size() - 1, false, &folder);
    struct stat st;
    if (error == 0 && (::fstatat(folder, file.back().c_str(), &st, AT_SYMLINK_NOFOLLOW) != 0 ||
                       !S_ISREG(st.st_mode))) {
        error = ENOENT;
    }
    if (error == 0) {
        error = OpenParent(steps, true);
    }
    if (error == 0) {
        error = Result(::linkat(folder, file.back().c_str(), fParent, steps.back().c_str(), 0));
    }
    Close(&folder);
    return error;
}

int SafeTree::SetFolder(const Steps& steps, mode_t mode, const timespec* modified)
{
    int folder = -1;
    const int error = OpenFolder(steps, steps.size(), false, &folder);
    if (error != 0) {
        return error;
    }
    // Its owner can go in whatever the archive says.
    const int result = Result(::fchmod(folder, PlainMode(mode) | 0700));
    SetTime(folder, modified);
    Close(&folder);
    return result;
}

int SafeTree::SetFile(int file, mode_t mode, const timespec* modified)
{
    const int result = Result(::fchmod(file, PlainMode(mode) | 0400));
    SetTime(file, modified);
    return result;
}

int SafeTree::Remove(const Steps& steps)
{
    const int error = OpenParent(steps, false);
    if (error != 0) {
        return error;
    }
    const char* name = steps.back().c_str();
    if (::unlinkat(fParent, name, 0) == 0) {
        return 0;
    }
    return errno == EISDIR ? Result(::unlinkat(fParent, name, AT_REMOVEDIR)) : errno;
}

int64 SafeTree::FreeBytes() const
{
    struct statvfs volume;
    return ::fstatvfs(fRoot, &volume) == 0
               ? static_cast<int64>(volume.f_bavail) * static_cast<int64>(volume.f_frsize)
               : INT64_MAX;
}

int64 SafeTree::FreeEntries() const
{
    struct statvfs volume;
    return ::fstatvfs(fRoot, &volume) == 0 && volume.f_files > 0
               ? static_cast<int64>(volume.f_favail)
               : INT64_MAX;
}

int64 SafeTree::VolumeBytes() const
{
    struct statvfs volume;
    return ::fstatvfs(fRoot, &volume) == 0
               ? static_cast<int64>(volume.f_blocks) * static_cast<int64>(volume.f_frsize)
               : INT64_MAX;
}

} // namespace add_ons
