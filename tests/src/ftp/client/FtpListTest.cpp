#include "FtpClient.h"
#include "FtpTree.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace norvane;
using namespace ftp_script;

TEST(FtpListingTest, ListsAPath)
{
    FtpTree files;
    files.AddFile("/in here/b", "bread");
    FtpServer server(files.Handler());
    FtpClient client(server);
    ASSERT_EQ(client.LogIn(), 0);

    EXPECT_NE(client.Listing("/in here").find(" b\r"), std::string::npos);
}

struct ListCase
{
    const char* name;
    std::string sent;
    std::string listed;
    bool hasLineFeed;
};

class FtpListTest : public testing::TestWithParam<ListCase>
{
};

TEST_P(FtpListTest, CutsTheLastCharacter)
{
    FtpTree files;
    FtpTree::Habits habits;
    habits.listing = [](const std::string&) {
        return GetParam().sent;
    };
    files.SetHabits(habits);
    FtpServer server(files.Handler());
    FtpClient client(server);
    ASSERT_EQ(client.LogIn(), 0);

    EXPECT_EQ(client.Listing(), GetParam().listed);

    EXPECT_EQ(client.ftp.ListingHasLineFeed(), GetParam().hasLineFeed);
    EXPECT_EQ(client.ftp.BytesMoved(), static_cast<int64>(GetParam().sent.size()));
    const std::string count =
        "Read " + std::to_string(GetParam().sent.size()) + " bytes from server.\n";
    EXPECT_NE(client.log.find(count), std::string::npos) << client.log;
}

const ListCase kListCases[] = {
    {"TwoLines", "a\r\nb\r\n", "a\r\nb\r", true},
    {"OneLine", "a\r\n", "a\r", true},
    {"OneLineFeed", "\n", "", true},
    {"NoLineFeed", "ab", "a", false},
    {"OneByte", "a", "", false},
    {"Nothing", "", "(null)", false},
};

INSTANTIATE_TEST_SUITE_P(Listings, FtpListTest, testing::ValuesIn(kListCases),
                         [](const auto& one) { return std::string(one.param.name); });

TEST(FtpListingTest, ListsAMillionLines)
{
    const std::string line = "-rw-r--r-- 1 anna users 12 Jan 5 12:34 file\r\n";
    std::string lines;
    for (int i = 0; i < 1'000'000; i++) {
        lines += line;
    }
    FtpTree files;
    FtpTree::Habits habits;
    habits.listing = [&lines](const std::string&) {
        return lines;
    };
    files.SetHabits(habits);
    FtpServer server(files.Handler());
    FtpClient client(server);
    ASSERT_EQ(client.LogIn(), 0);

    const std::string listed = client.Listing();

    lines.pop_back();
    EXPECT_TRUE(listed == lines);
}

} // namespace
