#pragma once

#include <Directory.h>
#include <Entry.h>

#include <TempTree.h>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

/// A home folder of the test's own, with its Trash.
class TrashTest : public testing::Test
{
protected:
    TrashTest()
    {
        fTree.MakeFolder("home/.local/share/Trash/files");
        setenv("HOME", fTree.Path("home").c_str(), 1);
        unsetenv("XDG_DATA_HOME");
    }
    ~TrashTest() override
    {
        fHadHome ? setenv("HOME", fHome.c_str(), 1) : unsetenv("HOME");
        if (fHadData) {
            setenv("XDG_DATA_HOME", fData.c_str(), 1);
        }
    }

    static std::string InFiles(const std::string& name)
    {
        return "home/.local/share/Trash/files/" + name;
    }
    static std::string InInfo(const std::string& name)
    {
        return "home/.local/share/Trash/info/" + name + ".trashinfo";
    }

    /// Moves the entry into the Trash, under `name` when given.
    status_t Trash(const std::string& path, const char* name = nullptr)
    {
        BEntry entry(fTree.Path(path).c_str());
        BDirectory trash(fTree.Path(InFiles("")).c_str());
        const status_t status = entry.MoveTo(&trash, name);
        fTrashedName = entry.Name();
        return status;
    }

    /// Moves an entry "report" into the Trash, and there to the name "aside"; its record.
    std::string PutAside()
    {
        fTree.Write("from/report", "text");
        EXPECT_EQ(Trash("from/report"), B_OK);
        std::string record = fTree.Read(InInfo("report"));
        EXPECT_EQ(BEntry(fTree.Path(InFiles("report")).c_str()).Rename("aside"), B_OK);
        return record;
    }

    TempTree fTree;
    std::string fTrashedName;

private:
    bool fHadHome = std::getenv("HOME") != nullptr;
    bool fHadData = std::getenv("XDG_DATA_HOME") != nullptr;
    std::string fHome = fHadHome ? std::getenv("HOME") : "";
    std::string fData = fHadData ? std::getenv("XDG_DATA_HOME") : "";
};
