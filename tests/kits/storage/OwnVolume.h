#pragma once

#include <OwnMounts.h>
#include <cstdio>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

// File systems of a test's own: full, read-only, mounted and gone again.

enum Outcome { kHeld = 0, kFailed = 1, kNotAllowed = 2 };

/// Runs `test` in a child with a file system of its own at `folder`; it says whether all held.
inline void OnVolume(const std::string& folder, const char* options,
                     const std::function<bool()>& test, const char* type = "tmpfs")
{
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        if (!EnterOwnMounts() || mount(type, folder.c_str(), type, 0, options) != 0) {
            _exit(kNotAllowed);
        }
        _exit(test() ? kHeld : kFailed);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == kNotAllowed) {
        GTEST_SKIP() << "this machine lets tests mount no file system";
    }
    EXPECT_EQ(WEXITSTATUS(status), kHeld);
}

/// Says on stderr what did not hold: a child cannot report to the test program.
inline bool Expect(bool holds, const char* what)
{
    if (!holds) {
        fprintf(stderr, "does not hold: %s\n", what);
    }
    return holds;
}
