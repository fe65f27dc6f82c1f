#include "viewer/TextReading.h"

#include "TempTree.h"
#include "ViewerFixture.h"
#include "viewer/RoughSize.h"

#include <TextContents.h>

#include <functional>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

using namespace norvane;

class TakenText : public TextTaker
{
public:
    bool WantsMore() override
    {
        asked++;
        if (whenAsked) {
            whenAsked(asked);
        }
        return asked <= patience;
    }
    void TakeText(std::unique_ptr<BTextContents> text) override
    {
        lengths.push_back(text->Length());
    }

    int asked = 0;
    int patience = 1000000;
    std::function<void(int)> whenAsked;
    std::vector<int32> lengths;
};

class TextReadingTest : public ::testing::Test
{
protected:
    TextOutcome Read(const char* name, const TextLimits& limits = TextLimits())
    {
        return ReadText(fTree.Path(name), TextEncoding::kGuessed, *be_plain_font, fTaken, limits);
    }

    TempTree fTree;
    TakenText fTaken;
};

TEST_F(TextReadingTest, HandsOverASmallFileOnce)
{
    fTree.Write("a", "12345");

    const TextOutcome outcome = Read("a");

    EXPECT_EQ(fTaken.lengths, std::vector<int32>{5});
    EXPECT_EQ(outcome.trouble + outcome.remark, "");
}

TEST_F(TextReadingTest, HandsOverTheBeginningOfALargeFileFirst)
{
    fTree.Write("a", std::string(100, 'x'));
    TextLimits limits;
    limits.first = 10;

    Read("a", limits);

    EXPECT_EQ(fTaken.lengths, (std::vector<int32>{10, 100}));
}

TEST_F(TextReadingTest, CutsATooLargeFileAndSaysSo)
{
    fTree.Write("a", std::string(3 * 1024, 'x'));
    TextLimits limits;
    limits.most = 2048;

    const TextOutcome outcome = Read("a", limits);

    EXPECT_EQ(fTaken.lengths, std::vector<int32>{2048});
    EXPECT_EQ(outcome.remark, "the first 2 KB of 3 KB");
}

TEST_F(TextReadingTest, FileThatBecomesShorterEndsWhereItEnds)
{
    fTree.Write("a", std::string(5 << 20, 'x'));
    fTaken.whenAsked = [this](int asked) {
        if (asked == 2) {
            ASSERT_EQ(::truncate(fTree.Path("a").c_str(), 3 << 20), 0);
        }
    };

    const TextOutcome outcome = Read("a");

    EXPECT_EQ(fTaken.lengths.back(), 3 << 20);
    EXPECT_EQ(outcome.trouble + outcome.remark, "");
}

TEST_F(TextReadingTest, FileThatGrowsIsReadAsItWas)
{
    fTree.Write("a", std::string(5 << 20, 'x'));
    fTaken.whenAsked = [this](int asked) {
        if (asked == 2) {
            ASSERT_EQ(::truncate(fTree.Path("a").c_str(), 9 << 20), 0);
        }
    };

    Read("a");

    EXPECT_EQ(fTaken.lengths.back(), 5 << 20);
}

TEST_F(TextReadingTest, FileThatVanishesIsReadToItsEnd)
{
    fTree.Write("a", std::string(5 << 20, 'x'));
    fTaken.whenAsked = [this](int asked) {
        if (asked == 2) {
            fTree.Remove("a");
        }
    };

    Read("a");

    EXPECT_EQ(fTaken.lengths.back(), 5 << 20);
}

TEST_F(TextReadingTest, EndsWhenNobodyWantsItAnyMore)
{
    fTree.Write("a", std::string(5 << 20, 'x'));
    fTaken.patience = 2;

    Read("a");

    EXPECT_LE(fTaken.asked, 4);
    for (const int32 length : fTaken.lengths) {
        EXPECT_LE(length, 1 << 20);
    }
}

TEST_F(TextReadingTest, SaysWhyNothingCouldBeRead)
{
    fTree.MakeFolder("folder");
    ASSERT_EQ(::mkfifo(fTree.Path("pipe").c_str(), 0600), 0);

    EXPECT_NE(Read("missing").trouble, "");
    EXPECT_NE(Read("folder").trouble, "");
    EXPECT_NE(Read("pipe").trouble, "");
    EXPECT_TRUE(fTaken.lengths.empty());
}

TEST(RoughSizeTest, TakesTheLargestUnit)
{
    EXPECT_EQ(RoughSize(0), "0 bytes");
    EXPECT_EQ(RoughSize(1023), "1023 bytes");
    EXPECT_EQ(RoughSize(1536), "1.5 KB");
    EXPECT_EQ(RoughSize(int64{512} << 20), "512 MB");
    EXPECT_EQ(RoughSize(int64{10} << 30), "10 GB");
    EXPECT_EQ(RoughSize(int64{3} << 50), "3072 TB");
}

} // namespace
