#include "panes/PathList.h"

#include <gtest/gtest.h>

namespace {

using norvane::PathsAsText;

TEST(PathListTest, OnePathIsItself)
{
    EXPECT_EQ(PathsAsText({"/a folder/b%41 \xc3\xa4\xe2\x80\xae.txt"}),
              "/a folder/b%41 \xc3\xa4\xe2\x80\xae.txt");
    EXPECT_EQ(PathsAsText({"/\xf0\x9f\x98\x80"}), "/\xf0\x9f\x98\x80");
    EXPECT_EQ(PathsAsText({}), "");
}

TEST(PathListTest, SeveralHaveALineEach)
{
    EXPECT_EQ(PathsAsText({"/a", "/b", "/c"}), "/a\n/b\n/c");
}

TEST(PathListTest, WhatALineCannotHoldIsAnAddress)
{
    EXPECT_EQ(PathsAsText({"/x/new\nline", "/y"}), "file:///x/new%0Aline\n/y");
    EXPECT_EQ(PathsAsText({"/tab\t"}), "file:///tab%09");
    EXPECT_EQ(PathsAsText({"/\x7f%"}), "file:///%7F%25");
}

TEST(PathListTest, WhatIsNoUtf8IsAnAddress)
{
    EXPECT_EQ(PathsAsText({"/bad \xff"}), "file:///bad%20%FF");
    EXPECT_EQ(PathsAsText({"/cut \xc3"}), "file:///cut%20%C3");
    EXPECT_EQ(PathsAsText({"/long \xc0\xaf"}), "file:///long%20%C0%AF");
    EXPECT_EQ(PathsAsText({"/long \xe0\x80\xaf"}), "file:///long%20%E0%80%AF");
    EXPECT_EQ(PathsAsText({"/half \xed\xa0\x80"}), "file:///half%20%ED%A0%80");
    EXPECT_EQ(PathsAsText({"/far \xf4\x90\x80\x80"}), "file:///far%20%F4%90%80%80");
    EXPECT_EQ(PathsAsText({"/next \xc3x"}), "file:///next%20%C3x");
}

} // namespace
