#include "query/ContentSearch.h"

#include <PrivateMounts.h>
#include <TempTree.h>
#include <atomic>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace norvane;
using Result = ContentSearch::Result;

constexpr size_t kPiece = 10240;

class ContentSearchTest : public testing::Test
{
protected:
    Result Look(const std::string& text, const std::string& contents)
    {
        fTree.Write("file", contents);
        return LookAt(text, "file");
    }

    Result LookAt(const std::string& text, const char* name)
    {
        entry_ref ref;
        EXPECT_EQ(get_ref_for_path(fTree.Path(name).c_str(), &ref), B_OK);
        return ContentSearch(text, fIsCancelled, fPieces).Look(ref);
    }

    static std::string Blanks(size_t count) { return std::string(count, ' '); }

    TempTree fTree;
    std::atomic<bool> fIsCancelled{false};
    std::atomic<int64> fPieces{0};
};

TEST_F(ContentSearchTest, FindsWhatIsThere)
{
    EXPECT_EQ(Look("needle", "a needle in it"), Result::kFound);
    EXPECT_EQ(Look("needle", "needle"), Result::kFound);
    EXPECT_EQ(Look("needle", "needl"), Result::kNotFound);
    EXPECT_EQ(Look("needle", "NEEDLE"), Result::kNotFound);
    EXPECT_EQ(Look("needle", ""), Result::kNotFound);
    EXPECT_EQ(Look("\xff\xfe", "a\xff\xfe"), Result::kFound);
    EXPECT_EQ(Look("n", "an"), Result::kFound);
}

TEST_F(ContentSearchTest, FindsAnEmptyTextEverywhere)
{
    EXPECT_EQ(Look("", ""), Result::kFound);
    EXPECT_EQ(Look("", "x"), Result::kFound);
}

TEST_F(ContentSearchTest, FindsTextAcrossEachBorder)
{
    for (size_t piece = 1; piece < 60; piece++) {
        for (const size_t before : {0, 1, 3, 5, 6}) {
            const size_t border = piece * (kPiece - 5) + 5;
            EXPECT_EQ(Look("needle", Blanks(border - before) + "needle" + Blanks(kPiece)),
                      Result::kFound)
                << piece << " " << before;
        }
    }
}

TEST_F(ContentSearchTest, FindsTextAtTheVeryEnd)
{
    for (const size_t length : {kPiece, kPiece + 1, 25 * kPiece, 26 * kPiece, 100 * kPiece}) {
        EXPECT_EQ(Look("needle", Blanks(length - 6) + "needle"), Result::kFound) << length;
        EXPECT_EQ(Look("needle", Blanks(length - 5) + "needl"), Result::kNotFound) << length;
    }
}

TEST_F(ContentSearchTest, TakesAPieceUpToItsFirstZeroByte)
{
    using namespace std::string_literals;
    EXPECT_EQ(Look("needle", "\0 needle"s), Result::kNotFound);
    EXPECT_EQ(Look("needle", "needle\0"s), Result::kFound);
    EXPECT_EQ(Look("needle", "\0"s + Blanks(kPiece) + "needle"), Result::kFound);
    EXPECT_EQ(Look("needle", Blanks(kPiece) + "\0 needle"s), Result::kNotFound);
}

TEST_F(ContentSearchTest, FindsATextLongerThanAPiece)
{
    const std::string text = std::string(3 * kPiece, 'a') + "b";

    EXPECT_EQ(Look(text, Blanks(70'000) + text), Result::kFound);
    EXPECT_EQ(Look(text, Blanks(70'000) + text.substr(1)), Result::kNotFound);
}

TEST_F(ContentSearchTest, OpensRegularFilesAlone)
{
    fTree.Write("file", "needle");
    fTree.Link("link", "file");
    fTree.MakeFolder("folder");
    ASSERT_EQ(mkfifo(fTree.Path("pipe").c_str(), 0600), 0);

    for (const char* name : {"link", "folder", "pipe", "missing"}) {
        EXPECT_EQ(LookAt("needle", name), Result::kNotFound) << name;
        EXPECT_EQ(LookAt("", name), Result::kNotFound) << name;
    }
}

TEST_F(ContentSearchTest, SaysWhatCannotBeRead)
{
    fTree.Write("closed", "needle");
    chmod(fTree.Path("closed").c_str(), 0);
    const WithoutFileRights asAnybody; // root may read everything

    EXPECT_EQ(LookAt("needle", "closed"), Result::kUnreadable);
}

TEST_F(ContentSearchTest, GivesUpWhenItIsCancelled)
{
    fIsCancelled = true;

    EXPECT_EQ(Look("needle", "needle"), Result::kNotFound);
}

TEST_F(ContentSearchTest, CountsWhatItReads)
{
    EXPECT_EQ(Look("needle", Blanks(10)), Result::kNotFound);
    EXPECT_EQ(fPieces, 1);
    Look("needle", Blanks(3'000'000));
    EXPECT_GT(fPieces, 10);
}

} // namespace
