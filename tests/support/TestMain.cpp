#include "BesideMain.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cstdlib>
#include <string>

namespace {

// Set in programs that a test starts: what the test changed for them stays.
constexpr const char* kInsideVariable = "NORVANE_IN_TEST";

/// Headless, with one pinned font and folders for settings and data beside the build, however the
/// test is started: nobody's own files are read or changed.
void SetEnvironment()
{
    if (std::getenv(kInsideVariable) != nullptr) {
        return;
    }
    const std::string home = TEST_HOME;
    const std::string run = home + "/run";
    mkdir(home.c_str(), 0700);
    mkdir(run.c_str(), 0700);
    setenv(kInsideVariable, "1", 1);
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("HOME", home.c_str(), 1);
    setenv("XDG_CONFIG_HOME", (home + "/config").c_str(), 1);
    setenv("XDG_DATA_HOME", (home + "/data").c_str(), 1);
    setenv("XDG_CACHE_HOME", (home + "/cache").c_str(), 1);
    setenv("XDG_STATE_HOME", (home + "/state").c_str(), 1);
    setenv("XDG_RUNTIME_DIR", run.c_str(), 1);
    setenv("FONTCONFIG_FILE", TEST_FONTS, 1);
    setenv("LC_ALL", "C.UTF-8", 1);
    setenv("TZ", "UTC", 1);
}

} // namespace

int main(int argumentCount, char** arguments)
{
    SetEnvironment();
    testing::InitGoogleTest(&argumentCount, arguments);
    return RunBesideMain([] { return RUN_ALL_TESTS(); });
}
