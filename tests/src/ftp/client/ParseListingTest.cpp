#include "ftp/client/RemoteEntry.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using norvane::ListingEnd;
using norvane::ParseListing;
using norvane::RemoteEntry;

namespace {

constexpr char kLine[] = "-rw-r--r-- 1 anna users 5 Jan  1 12:00 ";

std::string LineOf(const std::string& name)
{
    return kLine + name;
}

std::string Names(const std::string& listing, ListingEnd end = ListingEnd::kLineFeed)
{
    std::string names;
    for (const RemoteEntry& entry : ParseListing(listing, end)) {
        names += entry.name + (entry.commandName == entry.name ? ";" : "?;");
    }
    return names;
}

} // namespace

TEST(ParseListingTest, SkipsTotalLine)
{
    EXPECT_EQ(Names("total 12\r\n" + LineOf("a") + "\r\n" + LineOf("b") + "\r"), "a;b;");
}

TEST(ParseListingTest, TakesOtherFirstLineForEntry)
{
    EXPECT_EQ(Names(LineOf("a") + "\n" + LineOf("b")), "a;b;");
}

TEST(ParseListingTest, SkipsTotalLineAtTheBeginOnly)
{
    const std::string total = "total 1 u g 5 Jan 1 12:00 x";

    EXPECT_EQ(Names(total + "\n" + LineOf("a")), "a;");
    EXPECT_EQ(Names(LineOf("a") + "\n" + total), "a;x;");
    EXPECT_EQ(Names("total\n" + LineOf("a")), "a;");
    EXPECT_EQ(Names("totality 1 anna users 5 Jan  1 12:00 x\n" + LineOf("a")), "x;a;");
}

TEST(ParseListingTest, OneLineIsAnEntryWhenItEndedInALineFeed)
{
    EXPECT_EQ(Names(LineOf("only") + "\r"), "only;");
    EXPECT_EQ(Names(LineOf("only")), "only;");
}

TEST(ParseListingTest, WithoutAnyLineFeedThereIsNothing)
{
    EXPECT_EQ(Names(LineOf("only"), ListingEnd::kOther), "");
    EXPECT_EQ(Names("", ListingEnd::kOther), "");
    EXPECT_EQ(Names("total 5", ListingEnd::kOther), "");
}

TEST(ParseListingTest, NothingIsInAnEmptyListing)
{
    EXPECT_EQ(Names(""), "");
    EXPECT_EQ(Names("total 0"), "");
    EXPECT_EQ(Names("total 0\r"), "");
    EXPECT_EQ(Names("\n\n\n"), "");
}

TEST(ParseListingTest, NeverUsesALastLineThatLostAByte)
{
    EXPECT_EQ(Names(LineOf("a") + "\n" + LineOf("lon"), ListingEnd::kOther), "a;lon?;");
    EXPECT_EQ(Names(LineOf("a") + "\n", ListingEnd::kOther), "a;");
}

TEST(ParseListingTest, ReturnsAloneEndNoLine)
{
    EXPECT_EQ(Names(LineOf("a") + "\r" + LineOf("b") + "\r"), "a?;");
}

TEST(ParseListingTest, KeepsOrderAndDuplicates)
{
    EXPECT_EQ(Names(LineOf("b") + "\n" + LineOf("a") + "\n" + LineOf("b")), "b;a;b;");
}

TEST(ParseListingTest, SaysWhatIsAFolderAndWhatALink)
{
    const std::vector<RemoteEntry> entries =
        ParseListing("drwxr-xr-x 1 u g 1 Jan 1 12:00 d\n"
                     "lrwxrwxrwx 1 u g 1 Jan 1 12:00 l -> d\n" +
                     LineOf("f"));

    ASSERT_EQ(entries.size(), 3u);
    EXPECT_TRUE(entries[0].IsFolder() && !entries[0].IsLink());
    EXPECT_TRUE(!entries[1].IsFolder() && entries[1].IsLink());
    EXPECT_TRUE(!entries[2].IsFolder() && !entries[2].IsLink());
    EXPECT_EQ(entries[1].name, "l -> d");
    EXPECT_EQ(entries[1].commandName, "l");
}

TEST(ParseListingTest, TakesAMillionLines)
{
    constexpr size_t kCount = 1'000'000;
    std::string listing;
    listing.reserve(kCount * 60);
    for (size_t i = 0; i < kCount; i++) {
        listing += LineOf(std::to_string(i)) + "\r\n";
    }
    listing.pop_back();

    const std::vector<RemoteEntry> entries = ParseListing(listing);

    ASSERT_EQ(entries.size(), kCount);
    EXPECT_EQ(entries.back().commandName, std::to_string(kCount - 1));
}

TEST(ParseListingTest, TakesOneLineOfManyMegabytes)
{
    const std::vector<RemoteEntry> entries =
        ParseListing(LineOf(std::string(50'000'000, 'x')) + "\n" + std::string(50'000'000, ' '));

    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].name.size(), 255 - std::string(kLine).size());
    EXPECT_EQ(entries[0].commandName, "");
}

TEST(ParseListingTest, NeverUsesDamagedNames)
{
    for (size_t cut = 0; cut <= LineOf("name").size(); cut++) {
        const std::string damaged = LineOf("name").erase(cut, 1);
        for (const RemoteEntry& entry : ParseListing(damaged)) {
            const bool isOfName = entry.name.size() < 5 && cut >= std::string(kLine).size();
            EXPECT_TRUE(entry.commandName == "name" || entry.commandName.empty() || isOfName)
                << damaged;
        }
    }
}
