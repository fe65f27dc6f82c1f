#include "panes/NewName.h"

#include <gtest/gtest.h>

namespace norvane {

TEST(NewNameTest, NumbersNewFolders)
{
    EXPECT_EQ(NewFolderName(1), "New Folder");
    EXPECT_EQ(NewFolderName(2), "New Folder 2");
    EXPECT_EQ(NewFolderName(kLastFolderNumber), "New Folder 999999");
}

TEST(NewNameTest, RefusesWhatIsNoName)
{
    for (const char* name : {"", ".", "..", "a/b", "/", "a/"}) {
        EXPECT_NE(ReasonAgainstName(name), nullptr) << name;
    }
    for (const char* name : {"a", "...", ".hidden", " ", "two\nlines", "\xff"}) {
        EXPECT_EQ(ReasonAgainstName(name), nullptr) << name;
    }
}

} // namespace norvane
