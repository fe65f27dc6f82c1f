#include <Directory.h>

#include <TempTree.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace {

class DirectoryEntriesTest : public testing::Test
{
protected:
    DirectoryEntriesTest()
    {
        fTree.MakeFolder("folder/sub");
        fTree.Write("folder/a", "of a");
        fTree.Write("folder/b", "of b");
        fFolder.SetTo(fTree.Path("folder").c_str());
    }

    TempTree fTree;
    BDirectory fFolder;
};

} // namespace

TEST_F(DirectoryEntriesTest, RenamesToAFreeNameOnly)
{
    EXPECT_EQ(fFolder.RenameChild("a", "b"), B_FILE_EXISTS);
    EXPECT_EQ(fTree.Read("folder/b"), "of b");
    EXPECT_EQ(fFolder.RenameChild("a", "c"), B_OK);
    EXPECT_EQ(fTree.Read("folder/c"), "of a");
    EXPECT_FALSE(fTree.Exists("folder/a"));
    EXPECT_EQ(fFolder.RenameChild("none", "d"), B_ENTRY_NOT_FOUND);
}

TEST_F(DirectoryEntriesTest, ReplacesAFileByAnother)
{
    EXPECT_EQ(fFolder.ReplaceChild("a", "b"), B_OK);
    EXPECT_EQ(fTree.Read("folder/b"), "of a");
    EXPECT_FALSE(fTree.Exists("folder/a"));
    EXPECT_NE(fFolder.ReplaceChild("b", "sub"), B_OK) << "a folder is not replaced by a file";
    EXPECT_EQ(fTree.Read("folder/b"), "of a");
}

TEST_F(DirectoryEntriesTest, ExchangesTwoEntries)
{
    EXPECT_EQ(fFolder.ExchangeChildren("a", "b"), B_OK);
    EXPECT_EQ(fTree.Read("folder/a"), "of b");
    EXPECT_EQ(fTree.Read("folder/b"), "of a");
    EXPECT_EQ(fFolder.ExchangeChildren("a", "none"), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(fTree.Read("folder/a"), "of b");
}

TEST_F(DirectoryEntriesTest, RemovesFilesAsFilesAndFoldersAsFolders)
{
    EXPECT_EQ(fFolder.RemoveChildFile("sub"), B_IS_A_DIRECTORY);
    EXPECT_EQ(fFolder.RemoveChildFolder("a"), B_NOT_A_DIRECTORY);
    EXPECT_EQ(fFolder.RemoveChildFile("a"), B_OK);
    EXPECT_FALSE(fTree.Exists("folder/a"));
    fTree.Write("folder/sub/in", "");
    EXPECT_EQ(fFolder.RemoveChildFolder("sub"), B_DIRECTORY_NOT_EMPTY);
    EXPECT_EQ(BDirectory(fTree.Path("folder/sub").c_str()).RemoveChildFile("in"), B_OK);
    EXPECT_EQ(fFolder.RemoveChildFolder("sub"), B_OK);
    EXPECT_FALSE(fTree.Exists("folder/sub"));
}

TEST_F(DirectoryEntriesTest, RefusesWhatIsNoNameOfAnEntry)
{
    const std::string outside = fTree.Path("folder/../outside");
    for (const char* name : {"..", ".", "", "sub/in", outside.c_str()}) {
        EXPECT_EQ(fFolder.RenameChild("a", name), B_BAD_VALUE) << name;
        EXPECT_EQ(fFolder.ReplaceChild(name, "a"), B_BAD_VALUE) << name;
        EXPECT_EQ(fFolder.ExchangeChildren("a", name), B_BAD_VALUE) << name;
        EXPECT_EQ(fFolder.RemoveChildFile(name), B_BAD_VALUE) << name;
        EXPECT_EQ(fFolder.RemoveChildFolder(name), B_BAD_VALUE) << name;
    }
    EXPECT_EQ(BDirectory().RemoveChildFile("a"), B_NO_INIT);
    EXPECT_EQ(BDirectory().SyncVolume(), B_NO_INIT);
}

TEST_F(DirectoryEntriesTest, FindsTheFolderAboveWhereverItIsNow)
{
    BDirectory sub(fTree.Path("folder/sub").c_str());
    fTree.MakeFolder("other");
    std::filesystem::rename(fTree.Path("folder/sub"), fTree.Path("other/moved"));
    BDirectory above;
    EXPECT_EQ(above.SetToParent(sub), B_OK);
    EXPECT_EQ(above, BDirectory(fTree.Path("other").c_str()));
    EXPECT_EQ(sub.SetToParent(sub), B_OK) << "of itself";
    EXPECT_EQ(sub, above);
    EXPECT_EQ(above.SetToParent(BDirectory()), B_BAD_VALUE);
}

TEST_F(DirectoryEntriesTest, OpensAChildThatIsNotMounted)
{
    BDirectory child;
    EXPECT_EQ(child.SetToUnmountedChild(fFolder, "sub"), B_OK);
    EXPECT_EQ(child.SetToUnmountedChild(BDirectory("/"), "proc"), B_BUSY);
    EXPECT_EQ(child.InitCheck(), B_BUSY);
    EXPECT_EQ(child.SetToUnmountedChild(fFolder, ".."), B_BAD_VALUE);
}

TEST_F(DirectoryEntriesTest, BringsItsVolumeToTheMedium)
{
    EXPECT_EQ(fFolder.SyncVolume(), B_OK);
}
