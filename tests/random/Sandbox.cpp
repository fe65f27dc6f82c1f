#include "Sandbox.h"

#include "OwnMounts.h"

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <grp.h>
#include <linux/capability.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sstream>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr uid_t kNobody = 65534;
constexpr char kHomeOptions[] = "size=64m,nr_inodes=40000,mode=0777";

std::string Because(const std::string& what)
{
    return what + ": " + std::strerror(errno);
}

bool SetReadOnly(const char* mountPoint)
{
    // As the kernel defines them: not every C library does.
    struct
    {
        uint64_t set, clear, propagation, users;
    } attributes = {};
    constexpr uint64_t kReadOnly = 1;
    constexpr uint64_t kNoOtherUsers = 2;
    constexpr int kRecursive = 0x8000;
    attributes.set = kReadOnly | kNoOtherUsers;
    return syscall(SYS_mount_setattr, AT_FDCWD, mountPoint, kRecursive, &attributes,
                   sizeof(attributes)) == 0;
}

/// True when a file can be made there; it is removed again.
bool CanWriteTo(const std::string& folder)
{
    const std::string path = folder + "/norvane-must-not-be-written";
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (file < 0) {
        return false;
    }
    close(file);
    unlink(path.c_str());
    return true;
}

std::string FindWritable(const std::vector<std::string>& folders)
{
    for (const std::string& folder : folders) {
        if (CanWriteTo(folder)) {
            return folder + " can be written to";
        }
    }
    return {};
}

/// The same folder or link as at the old root.
bool TakeOver(const std::string& root, const char* path)
{
    struct stat st = {};
    if (lstat(path, &st) != 0) {
        return true; // not every system has it
    }
    const std::string inside = root + path;
    if (S_ISLNK(st.st_mode)) {
        char target[256] = "";
        return readlink(path, target, sizeof(target) - 1) > 0 &&
               symlink(target, inside.c_str()) == 0;
    }
    return mkdir(inside.c_str(), 0755) == 0 &&
           mount(path, inside.c_str(), nullptr, MS_BIND | MS_REC, nullptr) == 0;
}

/// The system's types and icons, but none of its programs.
bool MakeShare(const std::string& root, const std::string& fonts)
{
    const std::string share = root + kSandboxShare;
    if (mkdir(share.c_str(), 0755) != 0) {
        return false;
    }
    std::ofstream(root + kSandboxFonts) << fonts;
    return symlink("/usr/share/mime", (share + "/mime").c_str()) == 0 &&
           symlink("/usr/share/icons", (share + "/icons").c_str()) == 0;
}

std::string MakeRoot(const std::string& place, const std::string& fonts)
{
    if (mount("tmpfs", place.c_str(), "tmpfs", MS_NOSUID | MS_NODEV, "size=1m,mode=0755") != 0) {
        return Because("no memory to mount");
    }
    for (const char* path : {"/usr", "/lib", "/lib64", "/proc"}) {
        if (!TakeOver(place, path)) {
            return Because(std::string(path) + " cannot be shown in the sandbox");
        }
    }
    const std::string home = place + kSandboxHome;
    if (mkdir(home.c_str(), 0755) != 0 || !MakeShare(place, fonts) || !SetReadOnly(place.c_str())) {
        return Because("the sandbox's root cannot be made read-only");
    }
    if (mount("tmpfs", home.c_str(), "tmpfs", MS_NOSUID | MS_NODEV | MS_NOEXEC, kHomeOptions) !=
        0) {
        return Because("no memory to mount");
    }
    return chroot(place.c_str()) == 0 && chdir(kSandboxHome) == 0
               ? std::string()
               : Because("the sandbox's root cannot be entered");
}

bool ForbidPrograms()
{
    sock_filter steps[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_execve, 2, 0),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_execveat, 1, 0),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EACCES),
    };
    const sock_fprog program = {sizeof(steps) / sizeof(steps[0]), steps};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

bool DropRights(bool wasRoot)
{
    if (wasRoot && (setgroups(0, nullptr) != 0 || setresgid(kNobody, kNobody, kNobody) != 0 ||
                    setresuid(kNobody, kNobody, kNobody) != 0)) {
        return false;
    }
    __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct none[2] = {};
    // Set again: a change of the user makes /proc/self root's.
    return syscall(SYS_capset, &header, none) == 0 && prctl(PR_SET_DUMPABLE, 1, 0, 0, 0) == 0;
}

bool CanStartPrograms()
{
    const pid_t child = fork();
    if (child == 0) {
        execl("/usr/bin/true", "true", nullptr);
        _exit(77);
    }
    int status = 0;
    return child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status) ||
           WEXITSTATUS(status) != 77;
}

/// Every mount but the home folder's is read-only, as the kernel itself tells.
std::string FindWritableMount()
{
    std::ifstream table("/proc/self/mountinfo");
    int count = 0;
    for (std::string line; std::getline(table, line); ++count) {
        std::istringstream words(line);
        std::string word;
        std::string mountPoint;
        std::string options;
        words >> word >> word >> word >> word >> mountPoint >> options;
        if (mountPoint != kSandboxHome && options != "ro" && options.rfind("ro,", 0) != 0) {
            return mountPoint + " is mounted for writing";
        }
    }
    return count < 3 ? "the mounts cannot be read" : std::string();
}

std::string Check(const std::string& oldHome)
{
    __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct rights[2] = {};
    if (syscall(SYS_capget, &header, rights) != 0 || rights[0].permitted != 0 ||
        rights[1].permitted != 0) {
        return "the process has rights of root";
    }
    std::string fault = FindWritable({"", "/usr", "/usr/bin", "/lib", "/proc", oldHome, "/.."});
    if (fault.empty()) {
        fault = FindWritableMount();
    }
    if (fault.empty() && !CanWriteTo(kSandboxHome)) {
        fault = "the sandbox's own folder cannot be written to";
    }
    if (fault.empty() && CanStartPrograms()) {
        fault = "programs can be started";
    }
    return fault;
}

} // namespace

std::string EnterSandbox(const std::string& place, const std::string& fonts)
{
    const char* home = std::getenv("HOME");
    const std::string oldHome = home != nullptr ? home : "/root";
    const bool wasRoot = getuid() == 0;
    // Of a namespace of its own root would stay the owner of its files.
    const bool isApart = wasRoot
                             ? unshare(CLONE_NEWNS) == 0 &&
                                   mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
                             : EnterOwnMounts();
    if (!isApart) {
        return Because("this system allows no private mounts");
    }
    if (!SetReadOnly("/")) {
        return Because("what is mounted cannot be made read-only");
    }
    std::string fault = FindWritable({"", "/usr", "/tmp", "/var/tmp", oldHome, place});
    if (fault.empty()) {
        fault = MakeRoot(place, fonts);
    }
    if (!fault.empty()) {
        return fault;
    }
    const rlimit noCore = {0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    if (!DropRights(wasRoot) || !ForbidPrograms()) {
        return Because("rights cannot be dropped");
    }
    return Check(oldHome);
}
