#include <Entry.h>
#include <Path.h>

#include <TempTree.h>
#include <cstdlib>
#include <gtest/gtest.h>

namespace {

struct NormalCase
{
    const char* name;
    const char* path;
    const char* leaf;
    const char* expected;
};

class PathNormalTest : public testing::TestWithParam<NormalCase>
{
};

} // namespace

TEST_P(PathNormalTest, ResolvesByText)
{
    const BPath path(GetParam().path, GetParam().leaf);

    EXPECT_STREQ(path.Path(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, PathNormalTest,
    testing::Values(
        NormalCase{"Root", "/", nullptr, "/"}, NormalCase{"ManySlashes", "///", nullptr, "/"},
        NormalCase{"DoubledAndTrailing", "/a//b/", nullptr, "/a/b"},
        NormalCase{"Here", "/a/./b/.", nullptr, "/a/b"}, NormalCase{"Up", "/a/../b", nullptr, "/b"},
        NormalCase{"AboveTheRoot", "/../..", nullptr, "/"},
        NormalCase{"UpAtTheEnd", "/a/b/..", nullptr, "/a"},
        NormalCase{"Leaf", "/a", "b/c", "/a/b/c"}, NormalCase{"LeafUp", "/a", "../c", "/c"},
        NormalCase{"NamesOfDots", "/a/..b/...", nullptr, "/a/..b/..."},
        NormalCase{"EmptyLeaf", "/a", "", "/a"}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(PathTest, RefusesEmptyAndAbsoluteLeaf)
{
    EXPECT_EQ(BPath("").InitCheck(), B_BAD_VALUE);
    EXPECT_EQ(BPath("/a", "/b").InitCheck(), B_BAD_VALUE);
    EXPECT_EQ(BPath().InitCheck(), B_NO_INIT);
    EXPECT_EQ(BPath("").Path(), nullptr);
}

TEST(PathTest, TakesRelativePathsFromTheWorkingDirectory)
{
    char here[4096];
    ASSERT_NE(realpath(".", here), nullptr);

    EXPECT_EQ(std::string(BPath("x").Path()), std::string(here) + "/x");
}

TEST(PathTest, GivesLeafAndParent)
{
    const BPath path("/a/b");
    BPath parent;

    EXPECT_STREQ(path.Leaf(), "b");
    EXPECT_EQ(path.GetParent(&parent), B_OK);
    EXPECT_STREQ(parent.Path(), "/a");
    EXPECT_EQ(parent.GetParent(&parent), B_OK);
    EXPECT_STREQ(parent.Path(), "/");
    EXPECT_EQ(parent.GetParent(&parent), B_ENTRY_NOT_FOUND);
    EXPECT_STREQ(parent.Leaf(), "");
}

TEST(PathTest, AppendsRelativePathsOnly)
{
    BPath path("/a");

    EXPECT_EQ(path.Append("b/c"), B_OK);
    EXPECT_STREQ(path.Path(), "/a/b/c");
    EXPECT_EQ(path.Append("/d"), B_BAD_VALUE);
    EXPECT_EQ(path.InitCheck(), B_BAD_VALUE);
}

TEST(PathTest, KeepsPathsOfAnyLength)
{
    std::string text;
    for (int i = 0; i < 100; ++i) {
        text += "/" + std::string(200, 'a');
    }

    EXPECT_EQ(std::string(BPath(text.c_str()).Path()), text);
}

TEST(PathTest, TellsThePathOfAnEntry)
{
    TempTree tree;
    tree.Write("a b\n/\xff", "x");
    const BEntry entry(tree.Path("a b\n/\xff").c_str());

    EXPECT_EQ(std::string(BPath(&entry).Path()), tree.Path("a b\n/\xff"));
}

TEST(PathTest, PutsTheHomeFolderForThePlatformsName)
{
    const std::string home = std::getenv("HOME");

    EXPECT_EQ(std::string(BPath("/boot/home").Path()), home);
    EXPECT_EQ(std::string(BPath("/boot/home/x").Path()), home + "/x");
    EXPECT_STREQ(BPath("/boot/homely").Path(), "/boot/homely");
}

TEST(PathTest, IsEqualToItsTextUntilItIsUnset)
{
    BPath path("/a/./b");
    EXPECT_TRUE(path == "/a/b");
    EXPECT_FALSE(path == "/a");

    path.Unset();

    EXPECT_EQ(path.Path(), nullptr);
    EXPECT_EQ(path.InitCheck(), B_NO_INIT);
    EXPECT_TRUE(path == static_cast<const char*>(nullptr));
    EXPECT_FALSE(path == "/a/b");
}
