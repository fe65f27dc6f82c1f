#include <Collator.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

std::vector<std::string> Sorted(const BCollator& collator, std::vector<std::string> texts)
{
    std::stable_sort(texts.begin(), texts.end(), [&](const std::string& a, const std::string& b) {
        return collator.Compare(a.c_str(), b.c_str()) < 0;
    });
    return texts;
}

using Texts = std::vector<std::string>;

} // namespace

TEST(CollatorTest, OrdersLettersWithoutTheirCase)
{
    EXPECT_EQ(Sorted(BCollator(), {"b", "C", "a", "Zoo", "é", "f", "e"}),
              (Texts{"a", "b", "C", "e", "é", "f", "Zoo"}));
    EXPECT_TRUE(BCollator().Equal("NAME", "name"));
    EXPECT_FALSE(BCollator().Equal("name", "names"));
}

TEST(CollatorTest, TakesDigitsForNumbersWhenTold)
{
    BCollator collator;
    EXPECT_TRUE(collator.Greater("file9", "file10"));
    EXPECT_EQ(collator.SetNumericSorting(true), B_OK);
    EXPECT_EQ(Sorted(collator, {"file10", "file9", "file 2", "file1"}),
              (Texts{"file 2", "file1", "file9", "file10"}));
    EXPECT_TRUE(collator.GreaterOrEqual("007", "7"));
    EXPECT_TRUE(collator.GreaterOrEqual("7", "007"));
    const std::string huge(400, '9');
    EXPECT_TRUE(collator.Greater(("a" + huge + "1").c_str(), ("a" + huge).c_str()));
}

TEST(CollatorTest, IsCopiedWithWhatItWasTold)
{
    BCollator numeric;
    numeric.SetNumericSorting(true);
    const BCollator copy(numeric);
    EXPECT_TRUE(copy.Greater("10", "9"));
    BCollator assigned;
    assigned = numeric;
    EXPECT_TRUE(assigned.Greater("10", "9"));
    numeric.SetNumericSorting(false);
    EXPECT_TRUE(copy.Greater("10", "9"));
}

TEST(CollatorTest, ComparesWhatIsNoText)
{
    const BCollator collator;
    EXPECT_EQ(collator.Compare(nullptr, ""), 0);
    EXPECT_TRUE(collator.Greater("a", nullptr));
    EXPECT_EQ(collator.Compare("\xff\xfe", "\xff\xfe"), 0);
    EXPECT_TRUE(collator.Ranks({}).empty());
}

namespace {

int Sign(int64 value)
{
    return value < 0 ? -1 : value > 0 ? 1 : 0;
}

/// Two texts that are compared otherwise than they are ranked; nothing when there are none.
std::string Disagreement(const std::vector<std::string>& letters)
{
    BCollator collator;
    collator.SetNumericSorting(true);
    std::mt19937 random(1);
    Texts texts;
    for (int i = 0; i < 300; ++i) {
        std::string text;
        for (auto n = random() % 4; n > 0; --n) {
            text += letters[random() % letters.size()];
        }
        texts.push_back(text);
    }
    std::vector<const char*> lent;
    for (const std::string& text : texts) {
        lent.push_back(text.c_str());
    }
    const std::vector<uint32> ranks = collator.Ranks(lent);
    for (size_t i = 0; i < texts.size(); ++i) {
        for (size_t j = 0; j < texts.size(); ++j) {
            if (Sign(collator.Compare(lent[i], lent[j])) !=
                Sign(int64{ranks[i]} - int64{ranks[j]})) {
                return texts[i] + " | " + texts[j];
            }
        }
    }
    return "";
}

/// The same of many texts that are ranked by a way of their own, beside the last that have the same
/// rank or the next one. A few of them hold one of the rare letters.
std::string DisagreementOfMany(const std::string& letters, const Texts& rare = {})
{
    BCollator collator;
    collator.SetNumericSorting(true);
    std::mt19937 random(2);
    Texts texts;
    for (int i = 0; i < 4000; ++i) {
        std::string text = i % 2 == 0 ? "" : "common";
        for (auto n = random() % 24; n > 0; --n) {
            text += letters[random() % letters.size()];
        }
        if (i % 50 == 0 && !rare.empty()) {
            text.insert(random() % (text.size() + 1), rare[random() % rare.size()]);
        }
        texts.push_back(text);
        texts.push_back(text.substr(0, random() % 3));
        texts.push_back(text + letters[random() % letters.size()]);
        texts.push_back(text + letters[random() % letters.size()]);
    }
    std::vector<const char*> lent;
    for (const std::string& text : texts) {
        lent.push_back(text.c_str());
    }
    const std::vector<uint32> ranks = collator.Ranks(lent);
    std::vector<std::pair<uint32, const char*>> sorted;
    for (size_t i = 0; i < lent.size(); ++i) {
        sorted.emplace_back(ranks[i], lent[i]);
    }
    std::sort(sorted.begin(), sorted.end());
    for (size_t i = 1; i < sorted.size(); ++i) {
        const uint32 rank = sorted[i].first;
        const bool isSame = sorted[i - 1].first == rank;
        const int order = collator.Compare(sorted[i - 1].second, sorted[i].second);
        if (isSame ? order != 0 : order >= 0 || rank != i) {
            return std::string(sorted[i - 1].second) + " | " + sorted[i].second;
        }
    }
    return "";
}

constexpr const char* kPlainLetters = "aAbcChHeijlLnNsSyzZ0011289 ._-+~!#$%&'(),;=@[]^`{}";

// Some count as nothing, or as plain ones do.
const Texts kRareLetters = {"é", "\x01", "\uff21", "ß", "ж", "\u0661", "\xff", "\u00ad"};

class CollatorLanguageTest : public ::testing::TestWithParam<const char*>
{
protected:
    // A program asks for its language once, so each is another program's.
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    [[noreturn]] static void Compare(const char* locale)
    {
        setenv("LC_ALL", locale, 1);
        std::string found = Disagreement({"a", "A", "é", "ß", "i", "I", "ı", "1", "02", "10", "x",
                                          "\u0661", "\u0660", "\u0967"});
        found += DisagreementOfMany(kPlainLetters);
        found += DisagreementOfMany(kPlainLetters, kRareLetters);
        std::fprintf(stderr, "<%s>", found.c_str());
        std::exit(found.empty() ? 0 : 1);
    }
};

} // namespace

TEST_P(CollatorLanguageTest, HasOneOrder)
{
    EXPECT_EXIT(Compare(GetParam()), ::testing::ExitedWithCode(0), "<>");
}

INSTANTIATE_TEST_SUITE_P(Locales, CollatorLanguageTest,
                         ::testing::Values("sv_SE.UTF-8", "tr_TR.UTF-8", "ja_JP.UTF-8",
                                           "ar_EG.UTF-8", "de_DE.UTF-8", "cs_CZ.UTF-8",
                                           "da_DK.UTF-8", "hu_HU.UTF-8", "th_TH.UTF-8", "C"),
                         [](const auto& locale) { return std::string(locale.param).substr(0, 2); });

TEST(CollatorTest, RanksAsItCompares)
{
    EXPECT_EQ(
        Disagreement({"a", "A", "b", "é", "Ω", "ж", "1", "02", "10", " ", ".", "_", "\xff", "-"}),
        "");
}

TEST(CollatorTest, RanksManyAsItCompares)
{
    EXPECT_EQ(DisagreementOfMany(kPlainLetters), "");
    EXPECT_EQ(DisagreementOfMany("0000123456789"), "");
    EXPECT_EQ(DisagreementOfMany(std::string(kPlainLetters) + "\t\xe9"), "");
    EXPECT_EQ(DisagreementOfMany(kPlainLetters, kRareLetters), "");
    EXPECT_EQ(DisagreementOfMany("aA1", kRareLetters), "");
}

TEST(CollatorTest, RanksManyWithLongNumbersAsItCompares)
{
    BCollator collator;
    collator.SetNumericSorting(true);
    Texts texts(2000, "a");
    texts.push_back("a" + std::string(100, '9'));
    texts.push_back("a" + std::string(300, '9')); // as a byte it counts less
    std::vector<const char*> lent;
    for (const std::string& text : texts) {
        lent.push_back(text.c_str());
    }
    lent.push_back(nullptr);
    const std::vector<uint32> ranks = collator.Ranks(lent);
    EXPECT_EQ(ranks[0], 1U);
    EXPECT_EQ(ranks[2000], 2001U);
    EXPECT_EQ(ranks[2001], 2002U);
    EXPECT_EQ(ranks[2002], 0U);
}
