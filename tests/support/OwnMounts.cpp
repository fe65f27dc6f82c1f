#include "OwnMounts.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/types.h>
#include <unistd.h>

#include <string>

namespace {

bool WriteText(const char* path, const std::string& text)
{
    const int file = open(path, O_WRONLY);
    if (file < 0) {
        return false;
    }
    const bool isWritten =
        write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    close(file);
    return isWritten;
}

bool SetPrivate(const char* mountPoint)
{
    return mount("none", mountPoint, nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

/// In a plain chroot "/" is no mount point, and what it lies in is out of reach. With the root set
/// deeper the way up ends at the top of all instead.
bool SetAllPrivateFromChroot()
{
    const int root = open("/", O_PATH | O_DIRECTORY | O_CLOEXEC);
    if (root < 0 || fchdir(root) != 0 || chroot("/proc") != 0) {
        return false;
    }
    for (int i = 0; i < 100; ++i) {
        if (chdir("..") != 0) {
            return false;
        }
    }
    const bool isPrivate = SetPrivate(".");
    const bool isBack = fchdir(root) == 0 && chroot(".") == 0;
    close(root);
    return isPrivate && isBack;
}

} // namespace

bool EnterOwnMounts()
{
    const uid_t user = getuid();
    const gid_t group = getgid();
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0) {
        WriteText("/proc/self/setgroups", "deny");
        WriteText("/proc/self/uid_map", "0 " + std::to_string(user) + " 1");
        WriteText("/proc/self/gid_map", "0 " + std::to_string(group) + " 1");
    } else if (unshare(CLONE_NEWNS) != 0) {
        return false;
    }
    return SetPrivate("/") || SetAllPrivateFromChroot();
}
