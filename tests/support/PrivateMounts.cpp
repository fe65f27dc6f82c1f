#include "PrivateMounts.h"

#include "OwnMounts.h"
#include "TempTree.h"

#include <gtest/gtest.h>

#include <linux/capability.h>
#include <sys/mount.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace {

constexpr int kPassedStatus = 0;
constexpr int kFailedStatus = 1;
constexpr int kUnavailableStatus = 77;
constexpr char kInsideVariable[] = "NORVANE_TEST_HAS_PRIVATE_MOUNTS";

std::string NameOfThisTest()
{
    const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
    return std::string(test->test_suite_name()) + "." + test->name();
}

bool GetCapabilities(__user_cap_header_struct* header, __user_cap_data_struct data[2])
{
    header->version = _LINUX_CAPABILITY_VERSION_3;
    header->pid = 0;
    return syscall(SYS_capget, header, data) == 0;
}

} // namespace

PrivateResult RunWithPrivateMounts(const std::function<bool()>& work)
{
    if (std::getenv(kInsideVariable) != nullptr) {
        return work() ? PrivateResult::kPassed : PrivateResult::kFailed;
    }
    const std::string filter = "--gtest_filter=" + NameOfThisTest();
    // By its path: opened through /proc it would belong to the mounts left behind, and not find its
    // libraries where those have other paths.
    const std::string program = std::filesystem::read_symlink("/proc/self/exe");
    // What the other process makes lies in here: it cannot remove what is mounted in its own
    // folders.
    const TempTree scratch;
    const std::string folder = scratch.Path("");
    const pid_t child = fork();
    if (child == 0) {
        if (!EnterOwnMounts()) {
            _exit(kUnavailableStatus);
        }
        setenv(kInsideVariable, "1", 1);
        setenv("TMPDIR", folder.c_str(), 1);
        alarm(60);
        execl(program.c_str(), "private-mounts", filter.c_str(), nullptr);
        _exit(kFailedStatus);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child) {
        return PrivateResult::kUnavailable;
    }
    if (WIFEXITED(status) && WEXITSTATUS(status) == kUnavailableStatus) {
        return PrivateResult::kUnavailable;
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == kPassedStatus ? PrivateResult::kPassed
                                                                     : PrivateResult::kFailed;
}

void ExpectPassed(PrivateResult result)
{
    if (result == PrivateResult::kUnavailable) {
        GTEST_SKIP() << "this system allows no private mounts";
    }
    EXPECT_EQ(result, PrivateResult::kPassed);
}

bool Check(bool isTrue, const char* what)
{
    if (!isTrue) {
        std::fprintf(stderr, "not so: %s\n", what);
    }
    return isTrue;
}

bool MountMemory(const std::string& path, long bytes)
{
    const std::string options = "size=" + std::to_string(bytes);
    return mount("tmpfs", path.c_str(), "tmpfs", 0, options.c_str()) == 0;
}

bool MountWithoutAttributes(const std::string& path)
{
    return mount("ramfs", path.c_str(), "ramfs", 0, nullptr) == 0;
}

bool MountAlsoAt(const std::string& from, const std::string& path)
{
    return mount(from.c_str(), path.c_str(), nullptr, MS_BIND, nullptr) == 0;
}

bool MountReadOnly(const std::string& path)
{
    return mount(path.c_str(), path.c_str(), nullptr, MS_BIND, nullptr) == 0 &&
           mount("none", path.c_str(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr) == 0;
}

WithoutFileRights::WithoutFileRights()
{
    __user_cap_header_struct header = {};
    __user_cap_data_struct data[2] = {};
    if (!GetCapabilities(&header, data)) {
        std::abort();
    }
    fEffective[0] = data[0].effective;
    fEffective[1] = data[1].effective;
    data[0].effective &= ~((1u << CAP_DAC_OVERRIDE) | (1u << CAP_DAC_READ_SEARCH));
    if (syscall(SYS_capset, &header, data) != 0) {
        std::abort();
    }
}

WithoutFileRights::~WithoutFileRights()
{
    __user_cap_header_struct header = {};
    __user_cap_data_struct data[2] = {};
    if (!GetCapabilities(&header, data)) {
        std::abort();
    }
    data[0].effective = fEffective[0];
    data[1].effective = fEffective[1];
    if (syscall(SYS_capset, &header, data) != 0) {
        std::abort();
    }
}
