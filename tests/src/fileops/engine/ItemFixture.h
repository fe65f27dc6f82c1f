#pragma once

#include "CopyFixture.h"
#include "PrivateMounts.h"
#include "Variable.h"
#include "fileops/engine/Copy.h"
#include "fileops/engine/Move.h"
#include "fileops/engine/Trash.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <sstream>
#include <string>

namespace norvane {

/// Single items moved and thrown away, with a home Trash in the temporary tree.
class ItemFixture : public CopyFixture
{
protected:
    void SetUp() override { fTree.MakeFolder("to"); }

    void WithItem(const std::string& name, const std::function<void(NorvaneEntry&)>& work)
    {
        entry_ref ref;
        ASSERT_EQ(get_ref_for_path(fTree.Path(name).c_str(), &ref), B_OK) << name;
        NorvaneEntry item(&ref);
        work(item);
    }

    std::vector<entry_ref> Refs(const std::vector<std::string>& names)
    {
        std::vector<entry_ref> refs(names.size());
        for (size_t i = 0; i < names.size(); i++) {
            EXPECT_EQ(get_ref_for_path(fTree.Path(names[i]).c_str(), &refs[i]), B_OK) << names[i];
        }
        return refs;
    }

    void Move(const std::string& name, const std::string& toFolder = "to")
    {
        norvane::Move(Refs({name}), fTree.Path(toFolder).c_str(), fUI).Run();
    }

    void MoveAll(const std::vector<std::string>& names)
    {
        norvane::Move(Refs(names), fTree.Path("to").c_str(), fUI).Run();
    }

    void CopyAll(const std::vector<std::string>& names)
    {
        norvane::Copy(Refs(names), fTree.Path("to").c_str(), fUI).Run();
    }

    /// Puts another file in the place of `name`, as most programs save theirs.
    void Replace(const std::string& name, const std::string& contents)
    {
        fTree.Write(name + ".new", contents);
        ASSERT_EQ(std::rename(fTree.Path(name + ".new").c_str(), fTree.Path(name).c_str()), 0);
    }

    void Trash(const std::string& name) { norvane::Trash(Refs({name}), fUI).Run(); }

    struct stat Record(const std::string& name)
    {
        struct stat record = {};
        EXPECT_EQ(lstat(fTree.Path(name).c_str(), &record), 0) << name;
        return record;
    }

    void SetTimes(const std::string& name, time_t seconds, long nanoseconds)
    {
        const struct timespec times[2] = {{seconds, 0}, {seconds, nanoseconds}};
        ASSERT_EQ(utimensat(AT_FDCWD, fTree.Path(name).c_str(), times, AT_SYMLINK_NOFOLLOW), 0);
    }

    bool SetAttribute(const std::string& name, const std::string& value)
    {
        return setxattr(fTree.Path(name).c_str(), "user.test.note", value.data(), value.size(),
                        0) == 0;
    }

    std::string Attribute(const std::string& name)
    {
        char value[64] = "";
        const ssize_t size =
            getxattr(fTree.Path(name).c_str(), "user.test.note", value, sizeof(value));
        return size < 0 ? "(none)" : std::string(value, static_cast<size_t>(size));
    }

    /// What lies in the home Trash, and that each has its record and nothing else has one.
    std::string Trashed()
    {
        const std::string names = fTree.List("data/Trash/files");
        std::string records;
        std::istringstream lines(names);
        for (std::string name; std::getline(lines, name);) {
            records += fTree.Exists("data/Trash/info/" + name + ".trashinfo") ? name + "\n" : "";
        }
        EXPECT_EQ(records, names);
        const std::string all = fTree.List("data/Trash/info");
        EXPECT_EQ(std::count(all.begin(), all.end(), '\n'),
                  std::count(names.begin(), names.end(), '\n'));
        return names;
    }

    std::string ProblemNames() const
    {
        std::string names;
        for (const auto& [name, reason] : fUI.problems) {
            names += name + " ";
        }
        return names;
    }

    /// Runs `work` where it may mount; a system that forbids that skips the test.
    static void Privately(const std::function<bool()>& work)
    {
        ExpectPassed(RunWithPrivateMounts(work));
    }

    const Variable fDataHome{"XDG_DATA_HOME", fTree.Path("data").c_str()};
};

} // namespace norvane
