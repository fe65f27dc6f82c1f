#include "BesideMain.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

namespace {

// Set in programs that a test starts: what the test changed for them stays.
constexpr const char* kInsideVariable = "NORVANE_IN_TEST";

/// Leaves nothing that a test could start by mistake: no program of this machine is one for any
/// type, and the session's bus is out of reach.
void HideThePersonsPrograms(const std::string& home)
{
    const std::string share = home + "/share";
    mkdir(share.c_str(), 0700);
    for (const char* folder : {"mime", "icons"}) {
        [[maybe_unused]] const int status =
            symlink((std::string("/usr/share/") + folder).c_str(), (share + "/" + folder).c_str());
    }
    setenv("XDG_DATA_DIRS", share.c_str(), 1);
    setenv("XDG_CONFIG_DIRS", (home + "/etc").c_str(), 1);
    setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
    for (const char* name : {"VISUAL", "EDITOR", "TERMINAL"}) {
        unsetenv(name);
    }
}

/// Less than there may be: a program raises it, and gives it back to what it starts.
void LowerDescriptorLimit()
{
    rlimit limit = {};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = std::min(limit.rlim_cur, limit.rlim_max / 2);
    setrlimit(RLIMIT_NOFILE, &limit);
    setenv("FIRST_DESCRIPTOR_LIMIT", std::to_string(limit.rlim_cur).c_str(), 1);
}

/// A home beside the build for this one process, removed with it: tests run side by side, and what
/// one writes there no other may see half written.
class OwnHome
{
public:
    OwnHome()
    {
        mkdir(TEST_HOMES, 0700);
        if (mkdtemp(fPath.data()) == nullptr) {
            perror(fPath.c_str());
            std::abort();
        }
    }
    ~OwnHome()
    {
        std::error_code ignored; // what a test made unreadable stays in the build's folder
        std::filesystem::remove_all(fPath, ignored);
    }
    OwnHome(const OwnHome&) = delete;
    OwnHome& operator=(const OwnHome&) = delete;
    const std::string& Path() const { return fPath; }

private:
    std::string fPath = TEST_HOMES "/XXXXXX";
};

/// Headless, with one pinned font and folders for settings and data beside the build, however the
/// test is started: nobody's own files are read or changed.
void SetEnvironment(const std::string& home)
{
    const std::string run = home + "/run";
    mkdir(run.c_str(), 0700);
    setenv(kInsideVariable, "1", 1);
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("HOME", home.c_str(), 1);
    setenv("XDG_CONFIG_HOME", (home + "/config").c_str(), 1);
    setenv("XDG_DATA_HOME", (home + "/data").c_str(), 1);
    setenv("XDG_CACHE_HOME", TEST_HOMES "/cache", 1); // the fonts', which all may share
    setenv("XDG_STATE_HOME", (home + "/state").c_str(), 1);
    setenv("XDG_RUNTIME_DIR", run.c_str(), 1);
    setenv("FONTCONFIG_FILE", TEST_FONTS, 1);
    setenv("LC_ALL", "C.UTF-8", 1);
    setenv("TZ", "UTC", 1);
    HideThePersonsPrograms(home);
    LowerDescriptorLimit();
}

/// Tests that need what this machine may not have skip themselves. Where all of it is known to be
/// there NORVANE_NO_SKIPS makes that a failure, so that none is left out unseen.
class SkipsFail : public testing::EmptyTestEventListener
{
public:
    void OnTestEnd(const testing::TestInfo& test) override
    {
        if (test.result()->Skipped()) {
            ADD_FAILURE() << "skipped, and NORVANE_NO_SKIPS is set";
        }
    }
};

} // namespace

int main(int argumentCount, char** arguments)
{
    std::optional<OwnHome> home;
    if (std::getenv(kInsideVariable) == nullptr) {
        SetEnvironment(home.emplace().Path());
    }
    testing::InitGoogleTest(&argumentCount, arguments);
    if (std::getenv("NORVANE_NO_SKIPS") != nullptr) {
        testing::UnitTest::GetInstance()->listeners().Append(new SkipsFail); // adopted
    }
    return RunBesideMain([] { return RUN_ALL_TESTS(); });
}
