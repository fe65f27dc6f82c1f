#include "fileops/engine/Restore.h"

#include "ItemFixture.h"

namespace norvane {

/// Entries of the Trash that go back to where they were.
class RestoreTest : public ItemFixture
{
protected:
    std::string Restore(const std::string& name)
    {
        entry_ref ref;
        BEntry(fTree.Path("data/Trash/files/" + name).c_str()).GetRef(&ref);
        return RestoreFromTrash(ref);
    }
};

TEST_F(RestoreTest, MovesBackAndTakesTheRecordAway)
{
    fTree.Write("from/tree/a", "1");
    Trash("from/tree");

    EXPECT_EQ(Restore("tree"), "");

    EXPECT_EQ(fTree.Read("from/tree/a"), "1");
    EXPECT_EQ(Trashed(), "");
    EXPECT_FALSE(fTree.Exists("data/Trash/info/tree.trashinfo"));
}

TEST_F(RestoreTest, ReplacesNothing)
{
    fTree.Write("from/a", "old");
    Trash("from/a");
    fTree.Write("from/a", "new");

    EXPECT_EQ(Restore("a"), "there is something else at " + fTree.Path("from/a"));

    EXPECT_EQ(fTree.Read("from/a"), "new");
    EXPECT_EQ(fTree.Read("data/Trash/files/a"), "old");
    EXPECT_TRUE(fTree.Exists("data/Trash/info/a.trashinfo"));
}

TEST_F(RestoreTest, GivesBackTheNameThatItHad)
{
    fTree.Write("from/a", "first");
    Trash("from/a");
    fTree.Write("from/a", "second");
    Trash("from/a"); // another name there
    ASSERT_EQ(Trashed(), "a\na copy\n");

    EXPECT_EQ(Restore("a copy"), "");

    EXPECT_EQ(fTree.Read("from/a"), "second");
}

TEST_F(RestoreTest, MakesNoFolders)
{
    fTree.Write("from/folder/a", "1");
    Trash("from/folder/a");
    fTree.Remove("from/folder");

    EXPECT_EQ(Restore("a"), "its folder is not there any more: " + fTree.Path("from/folder"));

    EXPECT_FALSE(fTree.Exists("from/folder"));
    EXPECT_EQ(Trashed(), "a\n");
}

TEST_F(RestoreTest, KeepsNamesByteForByte)
{
    for (const std::string& name : {std::string("new\nline"), std::string("bad \xff %41"),
                                    std::string("\xe2\x80\xae"), std::string(255, 'n')}) {
        fTree.Write("from/" + name, name);
        Trash("from/" + name);
        const std::string there = fTree.List("data/Trash/files");

        EXPECT_EQ(Restore(there.substr(0, there.size() - 1)), "") << name;

        EXPECT_EQ(fTree.Read("from/" + name), name);
    }
}

TEST_F(RestoreTest, WithoutARecordItSaysSo)
{
    fTree.Write("data/Trash/files/a", "1");

    EXPECT_EQ(Restore("a"), "it is not known where it was");
    EXPECT_EQ(Restore("gone"), "it is not there any more");
}

} // namespace norvane
