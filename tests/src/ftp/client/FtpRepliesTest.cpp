#include "ftp/client/FtpReplies.h"

#include "CaseName.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace norvane;
using Found = FtpReplies::Found;

struct Case
{
    const char* label;
    std::string received;
    /// What Take() hands out until nothing is left: "code text", or "- text" for what is no reply.
    std::vector<std::string> replies;
};

std::vector<std::string> AllOf(FtpReplies& replies)
{
    std::vector<std::string> taken;
    FtpReplies::Reply reply;
    for (Found found = replies.Take(&reply); found == Found::kReply || found == Found::kNoReply;
         found = replies.Take(&reply)) {
        const std::string code = found == Found::kReply ? std::to_string(reply.code) : "-";
        taken.push_back(code + " " + reply.text);
    }
    return taken;
}

class FtpRepliesTest : public testing::TestWithParam<Case>
{
};

TEST_P(FtpRepliesTest, CutsWhatCameAtOnce)
{
    FtpReplies replies;

    replies.Add(GetParam().received);

    EXPECT_EQ(AllOf(replies), GetParam().replies);
}

const Case kCases[] = {
    {"one line", "220 Hi\r\n", {"220 220 Hi\r\n"}},
    {"one line with a bare line feed", "220 Hi\n", {"220 220 Hi\n"}},
    {"a code alone", "220\r\n", {"220 220\r\n"}},
    {"a letter behind the code", "220Hi\r\n", {"220 220Hi\r\n"}},
    {"two replies", "220 Hi\r\n331 Who\r\n", {"220 220 Hi\r", "331 331 Who\r"}},
    {"two lines", "220-Hi\r\n220 There\r\n", {"220 220-Hi\r220 There\r"}},
    {"lines without codes", "220-Hi\r\n you\r\n220 All\r\n", {"220 220-Hi\r you\r220 All\r"}},
    {"lines with other codes",
     "220-Hi\r\n331 no\r\n220 All\r\n",
     {"220 220-Hi\r331 no\r220 All\r"}},
    {"the code with a hyphen ends it too",
     "230-Hi\r\n230-more\r\n230-still\r\n230 Done\r\n",
     {"230 230-Hi\r230-more\r", "230 230-still\r", "230 230 Done\r"}},
    {"a reply behind several lines",
     "230-Hi\r\n230 Done\r\n250 Next\r\n",
     {"230 230-Hi\r230 Done\r", "250 250 Next\r"}},
    {"a line alone that begins another several",
     "150 Go\r\n226-Hi\r\n226 Done\r\n",
     {"150 150 Go\r", "226 226-Hi\r", "226 226 Done\r"}},
    {"empty lines", "\r\n\n220 Hi\r\n\r\n", {"220 220 Hi\r\n"}},
    {"no code", "Hi\r\n220 Hi\r\n", {"- Hi\r", "220 220 Hi\r\n"}},
    {"a negative code", "-220 Hi\r\n", {"- -220 Hi\r"}},
    {"a code of four digits", "2200 Hi\r\n", {"- 2200 Hi\r"}},
    {"a code of zeros", "000 Hi\r\n", {"- 000 Hi\r"}},
    {"a code of two digits", "22 Hi\r\n", {"- 22 Hi\r"}},
    {"zero bytes", std::string("220 a\0b\r\n", 9), {"220 220 a b\r\n"}},
    {"several lines without an end", "220-Hi\r\n220-There\r\n", {}},
    {"no line end", "220 Hi", {}},
    {"a bare carriage return", "220 Hi\r", {}},
    {"nothing", "", {}},
};

INSTANTIATE_TEST_SUITE_P(Cases, FtpRepliesTest, testing::ValuesIn(kCases),
                         [](const auto& one) { return CaseName(one.param.label); });

TEST(FtpRepliesBoundsTest, KnowsNoReplyBeforeItsLastByte)
{
    const std::string received = "220-Hi\r\n220-and\r\n you\r\n220 All\r\n";
    FtpReplies replies;
    FtpReplies::Reply reply;

    for (const char byte : received.substr(0, received.size() - 1)) {
        replies.Add(std::string(1, byte));
        ASSERT_EQ(replies.Take(&reply), Found::kNothing);
    }
    replies.Add("\n");

    EXPECT_EQ(replies.Take(&reply), Found::kReply);
}

TEST(FtpRepliesBoundsTest, CutsALongLine)
{
    FtpReplies replies;
    FtpReplies::Reply reply;

    replies.Add("220 " + std::string(100'000, 'x') + "\r\n");

    ASSERT_EQ(replies.Take(&reply), Found::kReply);
    EXPECT_EQ(reply.text.size(), FtpReplies::kMaxText);
    EXPECT_EQ(replies.Take(&reply), Found::kNothing);
}

TEST(FtpRepliesBoundsTest, LeavesOutLinesThatTheTextHasNoRoomFor)
{
    FtpReplies replies;
    FtpReplies::Reply reply;
    const std::string filling(600, 'x');

    replies.Add("220-a\r\n" + filling + "\r\n" + filling + "\r\n220 b\r\n");

    ASSERT_EQ(replies.Take(&reply), Found::kReply);
    EXPECT_EQ(reply.text, "220-a\r" + filling + "\r220 b\r");
}

TEST(FtpRepliesBoundsTest, GivesUpWhatIsTooMuch)
{
    FtpReplies replies;
    FtpReplies::Reply reply;

    for (size_t i = 0; i <= FtpReplies::kMaxLines; i++) {
        replies.Add("220-and more\r\n");
    }

    EXPECT_EQ(replies.Take(&reply), Found::kTooMuch);
}

TEST(FtpRepliesBoundsTest, HandsOutWhatTheEndCut)
{
    FtpReplies replies;
    FtpReplies::Reply reply;
    replies.Add("221 Bye");
    EXPECT_TRUE(replies.HasPart());

    replies.AddEnd();

    ASSERT_EQ(replies.Take(&reply), Found::kReply);
    EXPECT_EQ(reply.code, 221);
}

TEST(FtpRepliesBoundsTest, TellsHowManyLinesEnded)
{
    FtpReplies replies;

    EXPECT_EQ(replies.Add("220 Hi"), 0u);
    EXPECT_EQ(replies.Add("\r\n331 Who\r\nand"), 2u);
}

} // namespace
