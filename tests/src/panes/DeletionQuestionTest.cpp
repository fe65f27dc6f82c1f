#include "panes/DeletionQuestion.h"

#include <gtest/gtest.h>

namespace norvane {

namespace {

std::vector<std::string> Names(int count)
{
    std::vector<std::string> names;
    for (int number = 1; number <= count; number++) {
        names.push_back("n" + std::to_string(number));
    }
    return names;
}

} // namespace

TEST(DeletionQuestionTest, NamesUpToTwenty)
{
    EXPECT_EQ(DeletionQuestion({"a", "b c"}, false),
              "Do you really want to delete the following files/folders:\n\ta\n\tb c");
    const std::string twenty = DeletionQuestion(Names(20), false);
    EXPECT_EQ(twenty.rfind("Do you really want to delete the following files/folders:\n\tn1\n", 0),
              0u);
    EXPECT_EQ(twenty.substr(twenty.rfind("\n\t")), "\n\tn20");
}

TEST(DeletionQuestionTest, CountsMore)
{
    EXPECT_EQ(DeletionQuestion(Names(21), false),
              "Do you really want to delete the 21 selected files/folders?");
}

TEST(DeletionQuestionTest, SaysWhenItIsForGood)
{
    EXPECT_EQ(DeletionQuestion({"a"}, true),
              "Do you really want permanently delete the following files/folders:\n\ta");
    EXPECT_EQ(DeletionQuestion(Names(21), true),
              "Do you really want to permanently delete the 21 selected files/folders?");
}

TEST(DeletionQuestionTest, ANameIsOneLine)
{
    EXPECT_EQ(
        DeletionQuestion({"a\n\tb"}, false),
        "Do you really want to delete the following files/folders:\n\ta\u20390A\u203A\u203909\u203A"
        "b");
}

} // namespace norvane
