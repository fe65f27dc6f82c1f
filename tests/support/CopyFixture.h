#pragma once

#include "ScriptedUI.h"
#include "TempTree.h"
#include "fileops/engine/NorvaneEntry.h"

#include <Entry.h>
#include <Errors.h>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <utime.h>

#include <string>

/// A temporary tree, a script in place of the windows, and the copy of one entry.
class CopyFixture : public ::testing::Test
{
protected:
    /// Copies `from` into the folder `toFolder`, both names of the tree; what CopyTo() says.
    bool Copy(const std::string& from, const std::string& toFolder)
    {
        entry_ref ref;
        if (get_ref_for_path(fTree.Path(from).c_str(), &ref) != B_OK) {
            ADD_FAILURE() << "no entry " << from;
            return false;
        }
        norvane::NorvaneEntry entry(&ref);
        const bool isDone = entry.CopyTo(fTree.Path(toFolder).c_str(), fUI);
        fIsWhole = entry.IsWhole();
        return isDone;
    }

    void SetTime(const std::string& name, time_t modified)
    {
        const struct utimbuf times = {modified, modified};
        ASSERT_EQ(utime(fTree.Path(name).c_str(), &times), 0);
    }

    void SetMode(const std::string& name, mode_t mode)
    {
        ASSERT_EQ(chmod(fTree.Path(name).c_str(), mode), 0);
    }

    mode_t Mode(const std::string& name)
    {
        struct stat record = {};
        EXPECT_EQ(lstat(fTree.Path(name).c_str(), &record), 0);
        return record.st_mode & 07777;
    }

    TempTree fTree;
    ScriptedUI fUI;
    bool fIsWhole = false;
};
