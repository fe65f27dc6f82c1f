#include "fileops/engine/ProblemList.h"

#include <Errors.h>

#include <gtest/gtest.h>

namespace norvane {

TEST(ProblemListTest, ListsNameAndReason)
{
    ProblemList problems;
    problems.Add("a", "permission denied");
    problems.Add("b", "the volume is full");
    EXPECT_EQ(problems.Text(), "Some items could not be handled whole:"
                               "\n\ta: permission denied\n\tb: the volume is full");
}

TEST(ProblemListTest, CountsWhatFollowsTwenty)
{
    ProblemList problems;
    for (int number = 0; number < 23; number++) {
        problems.Add("item" + std::to_string(number), "gone");
    }
    const std::string text = problems.Text();
    EXPECT_NE(text.find("item19: gone"), std::string::npos);
    EXPECT_EQ(text.find("item20"), std::string::npos);
    EXPECT_NE(text.find("and 3 more"), std::string::npos);
}

TEST(ProblemListTest, CutsLongNamesBetweenLetters)
{
    ProblemList problems;
    std::string name(79, 'x');
    problems.Add(name + "\xC3\xA4" + name, "gone");
    EXPECT_NE(problems.Text().find("\n\t" + name + "...: gone"), std::string::npos);
}

TEST(ProblemListTest, ShowsWhatHasNoShape)
{
    ProblemList problems;
    problems.Add("a\nb\u202Ec", "gone");
    problems.Add(std::string(79, 'x') + "\t\n", "gone");
    EXPECT_NE(problems.Text().find("\n\ta\u20390A\u203Ab\u2039202E\u203Ac: gone"),
              std::string::npos);
    EXPECT_NE(problems.Text().find("x\u203909\u203A...: gone"), std::string::npos);
}

TEST(ProblemListTest, HasATextForEveryStatus)
{
    for (status_t status : {B_ENTRY_NOT_FOUND, B_DEVICE_FULL, B_READ_ONLY_DEVICE, B_IO_ERROR}) {
        EXPECT_STRNE(ReasonFor(status), ReasonFor(B_ERROR));
    }
    EXPECT_STRNE(ReasonFor(B_ERROR), "");
}

} // namespace norvane
