#include "panes/PathText.h"

#include <gtest/gtest.h>

namespace {

using namespace norvane;

struct Case
{
    const char* name;
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
    ::testing::Values(Case{"Root", "/", "/"}, Case{"DoubledSlashes", "/usr//lib///", "/usr/lib"},
                      Case{"Dots", "/a/./b/../c", "/a/c"}, Case{"AboveTheRoot", "/../..", "/"},
                      Case{"Home", "~", "/home/me"}, Case{"BelowHome", "~/x", "/home/me/x"},
                      Case{"TildeInAName", "~x", "/work/here/~x"},
                      Case{"Relative", "x", "/work/here/x"}, Case{"RelativeUp", "../x/", "/work/x"},
                      Case{"Here", ".", "/work/here"}, Case{"Nothing", "", "/work/here"},
                      Case{"LeadingBlank", " a", "/work/here/ a"},
                      Case{"Address", "file:///a%20b/c", "/a b/c"},
                      Case{"AddressWithAHost", "file://host/a", "/a"},
                      Case{"AddressOfNothing", "file://", "/"},
                      Case{"BadEscapes", "file:///a%zz%2", "/a%zz%2"},
                      Case{"EscapedNul", "file:///a%00b", "/a%00b"}),
    [](const auto& tested) { return std::string(tested.param.name); });

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
