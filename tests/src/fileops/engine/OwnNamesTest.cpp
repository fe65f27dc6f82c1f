#include "fileops/engine/OwnNames.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace norvane {

TEST(OwnNamesTest, KnowsANameWhileItIsInUse)
{
    std::string name;
    {
        const OwnTemporaryName own;
        name = own.Name();
        EXPECT_TRUE(IsOwnTemporaryName(name.c_str()));
    }
    EXPECT_FALSE(IsOwnTemporaryName(name.c_str()));
}

TEST(OwnNamesTest, GivesHiddenNamesThatDiffer)
{
    const OwnTemporaryName first;
    const OwnTemporaryName second;
    EXPECT_STRNE(first.Name(), second.Name());
    EXPECT_EQ(std::strncmp(first.Name(), ".norvane-", 9), 0);
    EXPECT_LT(std::strlen(first.Name()), 255u);
}

TEST(OwnNamesTest, KnowsNoNameThatOthersMade)
{
    EXPECT_FALSE(IsOwnTemporaryName(nullptr));
    EXPECT_FALSE(IsOwnTemporaryName(""));
    EXPECT_FALSE(IsOwnTemporaryName(".norvane-"));
    EXPECT_FALSE(IsOwnTemporaryName(".norvane-0123456789abcdef-1"));
}

} // namespace norvane
