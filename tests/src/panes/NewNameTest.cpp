#include "panes/NewName.h"

#include <Errors.h>

#include <gtest/gtest.h>

namespace norvane {

TEST(NewNameTest, NumbersNewFolders)
{
    EXPECT_EQ(NewFolderName(1), "New Folder");
    EXPECT_EQ(NewFolderName(2), "New Folder 2");
    EXPECT_EQ(NewFolderName(kLastFolderNumber), "New Folder 999999");
}

TEST(NewNameTest, MakesTheFirstThatIsFree)
{
    int32 calls = 0;
    std::string name;
    const status_t status = MakeNewFolder(
        [&](const std::string&) { return ++calls < 3 ? B_FILE_EXISTS : B_OK; }, 1, &name);
    EXPECT_EQ(status, B_OK);
    EXPECT_EQ(name, "New Folder 3");
}

TEST(NewNameTest, BeginsWithTheNumberThatItIsGiven)
{
    std::string name;
    EXPECT_EQ(MakeNewFolder([](const std::string&) { return B_OK; }, 7, &name), B_OK);
    EXPECT_EQ(name, "New Folder 7");
}

TEST(NewNameTest, EndsAtTheFirstFailureOfAnotherKind)
{
    std::string name;
    EXPECT_EQ(MakeNewFolder([](const std::string&) { return B_DEVICE_FULL; }, 1, &name),
              B_DEVICE_FULL);
    EXPECT_EQ(name, "New Folder");
}

TEST(NewNameTest, GivesUpAfterTheLastNumber)
{
    int32 calls = 0;
    std::string name;
    const status_t status = MakeNewFolder(
        [&](const std::string&) {
            calls++;
            return B_FILE_EXISTS;
        },
        1, &name);
    EXPECT_EQ(status, B_FILE_EXISTS);
    EXPECT_EQ(calls, 999'999);
    EXPECT_EQ(name, "New Folder 999999");
    EXPECT_STREQ(kTooManyNewFolders,
                 "Hum...you never should have hit this limit.\n  You have more folders starting "
                 "with \"New Folder\" then Norvane is prepared to handle.");
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
