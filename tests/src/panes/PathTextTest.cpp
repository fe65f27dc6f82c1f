#include "panes/PathText.h"

#include <gtest/gtest.h>

namespace {

using namespace norvane;

struct Case
{
    const char* typed;
    const char* resolved;
};

class ResolveFolderTest : public ::testing::TestWithParam<Case>
{
};

TEST_P(ResolveFolderTest, ResolvesByText)
{
    EXPECT_EQ(ResolveFolder(GetParam().typed, "/work/here", "/home/me"), GetParam().resolved);
}

INSTANTIATE_TEST_SUITE_P(
    Paths, ResolveFolderTest,
    ::testing::Values(Case{"/", "/"}, Case{"/usr//lib///", "/usr/lib"}, Case{"/a/./b/../c", "/a/c"},
                      Case{"/../..", "/"}, Case{"~", "/home/me"}, Case{"~/x", "/home/me/x"},
                      Case{"~x", "/work/here/~x"}, Case{"x", "/work/here/x"},
                      Case{"../x/", "/work/x"}, Case{".", "/work/here"}, Case{"", "/work/here"},
                      Case{" a", "/work/here/ a"}, Case{"file:///a%20b/c", "/a b/c"},
                      Case{"file://host/a", "/a"}, Case{"file://", "/"},
                      Case{"file:///a%zz%2", "/a%zz%2"}, Case{"file:///a%00b", "/a%00b"}));

TEST(PathTextTest, GoesUpToTheRoot)
{
    EXPECT_EQ(ParentFolder("/a/b"), "/a");
    EXPECT_EQ(ParentFolder("/a"), "/");
    EXPECT_EQ(ParentFolder("/"), "/");
}

TEST(PathTextTest, JoinsWithOneSlash)
{
    EXPECT_EQ(JoinPath("/", "a"), "/a");
    EXPECT_EQ(JoinPath("/a", "b"), "/a/b");
}

} // namespace
