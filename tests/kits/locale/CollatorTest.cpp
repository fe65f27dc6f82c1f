#include <Collator.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <random>
#include <string>

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

TEST(CollatorTest, RanksAsItCompares)
{
    BCollator collator;
    collator.SetNumericSorting(true);
    std::mt19937 random(1);
    const Texts letters = {"a",  "A",  "b", "é", "Ω", "ж",    "1",
                           "02", "10", " ", ".", "_", "\xff", "-"};
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
    const auto sign = [](int64 value) {
        return value < 0 ? -1 : value > 0 ? 1 : 0;
    };
    for (size_t i = 0; i < texts.size(); ++i) {
        for (size_t j = 0; j < texts.size(); ++j) {
            ASSERT_EQ(sign(collator.Compare(lent[i], lent[j])),
                      sign(int64{ranks[i]} - int64{ranks[j]}))
                << texts[i] << " | " << texts[j];
        }
    }
}
