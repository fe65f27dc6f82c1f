#include <FindDirectory.h>
#include <Path.h>

#include <TempTree.h>
#include <Variable.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

std::string Find(directory_which which, bool createIt = false)
{
    BPath path;
    return find_directory(which, &path, createIt) == B_OK ? path.Path() : "(none)";
}

mode_t ModeOf(const std::string& path)
{
    struct stat st = {};
    stat(path.c_str(), &st);
    return st.st_mode & 0777;
}

} // namespace

TEST(FindDirectoryTest, MakesThePrivateFoldersOfTheUser)
{
    TempTree tree;
    const Variable home("HOME", tree.Path().c_str());
    const Variable config("XDG_CONFIG_HOME", nullptr);
    const Variable data("XDG_DATA_HOME", nullptr);

    EXPECT_EQ(Find(B_USER_DIRECTORY), tree.Path());
    EXPECT_EQ(Find(B_USER_SETTINGS_DIRECTORY), tree.Path(".config"));
    EXPECT_EQ(Find(B_TRASH_DIRECTORY), tree.Path(".local/share/Trash/files"));
    EXPECT_EQ(ModeOf(tree.Path(".config")), 0700u);
    EXPECT_EQ(ModeOf(tree.Path(".local/share/Trash/files")), 0700u);
    EXPECT_EQ(ModeOf(tree.Path(".local/share/Trash")), 0700u);
}

TEST(FindDirectoryTest, HeedsTheDesktopsVariablesWhenTheyAreAbsolute)
{
    TempTree tree;
    const Variable home("HOME", tree.Path().c_str());
    const Variable data("XDG_DATA_HOME", tree.Path("data").c_str());
    const Variable config("XDG_CONFIG_HOME", "relative");

    EXPECT_EQ(Find(B_TRASH_DIRECTORY), tree.Path("data/Trash/files"));
    EXPECT_EQ(Find(B_USER_SETTINGS_DIRECTORY), tree.Path(".config"));
    EXPECT_EQ(Find(B_USER_ADDONS_DIRECTORY), tree.Path("data/norvane/add-ons"));
    EXPECT_FALSE(tree.Exists("data/norvane"));
    Find(B_USER_ADDONS_DIRECTORY, true);
    EXPECT_TRUE(tree.IsFolder("data/norvane/add-ons"));
}

TEST(FindDirectoryTest, FailsWhereNothingCanBeMade)
{
    TempTree tree;
    tree.Write("file", "");
    const Variable config("XDG_CONFIG_HOME", tree.Path("file/below").c_str());
    BPath path;

    EXPECT_EQ(find_directory(B_USER_SETTINGS_DIRECTORY, &path), B_NOT_A_DIRECTORY);
    EXPECT_EQ(find_directory(B_USER_SETTINGS_DIRECTORY, nullptr), B_BAD_VALUE);
    EXPECT_EQ(path.InitCheck(), B_NO_INIT);
}
