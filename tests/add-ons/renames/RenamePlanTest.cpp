#include "PlanFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

namespace rename_many {

namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

/// "from>to" of each step.
std::string Planned(const Pairs& pairs, const std::vector<std::string>& others = {},
                    bool foldsCase = false)
{
    ModelFolder folder(foldsCase);
    for (const auto& [from, to] : pairs) {
        folder.Add(from);
    }
    for (const std::string& other : others) {
        folder.Add(other);
    }
    Steps steps;
    const status_t status = MakePlan(PreviewOf(pairs), folder.Known(), &steps);
    std::string text = status == B_OK ? "" : "(error)";
    for (const Step& step : steps) {
        text += step.from + ">" + step.to + " ";
    }
    return text;
}

} // namespace

TEST(RenamePlanTest, LeavesOutWhatStays)
{
    EXPECT_EQ(Planned({{"a", "x"}, {"b", "b"}}), "a>x ");
    EXPECT_EQ(Planned({{"a", "a"}}), "");
}

TEST(RenamePlanTest, BeginsChainsAtTheFreeName)
{
    EXPECT_EQ(Planned({{"a", "b"}, {"b", "c"}, {"c", "d"}}), "c>d b>c a>b ");
}

TEST(RenamePlanTest, OpensCirclesByATemporaryName)
{
    EXPECT_EQ(Planned({{"a", "b"}, {"b", "a"}}), "a>.renaming-1-a b>a .renaming-1-a>b ");
    EXPECT_EQ(Planned({{"a", "b"}, {"b", "c"}, {"c", "a"}}),
              "a>.renaming-1-a c>a b>c .renaming-1-a>b ");
}

TEST(RenamePlanTest, TakesATemporaryNameThatIsFree)
{
    EXPECT_EQ(Planned({{"a", "b"}, {"b", "a"}}, {".renaming-1-a"}),
              "a>.renaming-2-a b>a .renaming-2-a>b ");
    EXPECT_EQ(Planned({{"a", "b"}, {"b", "a"}, {"c", ".renaming-1-a"}}),
              "c>.renaming-1-a a>.renaming-2-a b>a .renaming-2-a>b ");
}

TEST(RenamePlanTest, TakesTheShortestNameOfACircleAside)
{
    const std::string longName(250, 'x');
    EXPECT_EQ(Planned({{longName, "b"}, {"b", longName}}),
              "b>.renaming-1-b " + longName + ">b .renaming-1-b>" + longName + " ");
    const std::string other(250, 'y');
    EXPECT_EQ(Planned({{longName, other}, {other, longName}}), "(error)");
}

TEST(RenamePlanTest, ChangesLettersAloneWhereTheyAreFolded)
{
    EXPECT_EQ(Planned({{"a", "A"}}), "a>A ");
    EXPECT_EQ(Planned({{"a", "A"}}, {}, true), "a>.renaming-1-a .renaming-1-a>A ");
    EXPECT_EQ(Planned({{"a", "B"}, {"b", "A"}}, {}, true), "a>.renaming-1-a b>A .renaming-1-a>B ");
}

TEST(RenamePlanTest, RefusesWhatHasFaults)
{
    Preview preview = PreviewOf({{"a", "b"}});
    preview.bad = 1;
    Steps steps = {Step()};
    EXPECT_EQ(MakePlan(preview, ModelFolder().Known(), &steps), B_BAD_VALUE);
    EXPECT_TRUE(steps.empty());
}

TEST(RenamePlanTest, KnowsTheNameBehindATemporaryOne)
{
    for (const char* name : {"a", "2-x", "-", "\xff\n", ".renaming-1-a"}) {
        EXPECT_EQ(OriginalName(TemporaryName(name, 7)), name);
    }
    for (const char* name :
         {"a", ".renaming-", ".renaming-1-", ".renaming--a", ".renaming-x-a", ".renaming-12"}) {
        EXPECT_FALSE(OriginalName(name).has_value()) << name;
    }
}

// One by one each waits for the next; work that grows with the square of it would not end.
TEST(RenamePlanTest, PlansAHundredThousandNames)
{
    constexpr size_t kCount = 100'000;
    ModelFolder folder;
    Pairs pairs;
    for (size_t place = 0; place < kCount; place++) {
        // A chain of the first half, and pairs that change places.
        const size_t next = place < kCount / 2 ? place + 1 : place ^ 1;
        const bool isLast = place == kCount / 2 - 1;
        pairs.emplace_back("n" + std::to_string(place),
                           isLast ? "free" : "n" + std::to_string(next));
        folder.Add(pairs.back().first);
    }
    const Outcome outcome = Perform(PreviewOf(pairs), folder);
    ASSERT_EQ(outcome.status, B_OK);
    EXPECT_EQ(outcome.done.size(), kCount + kCount / 4);
    EXPECT_EQ(folder.At("free"), "n49999");
    EXPECT_EQ(folder.At("n1"), "n0");
    EXPECT_EQ(folder.At("n50000") + folder.At("n99999"), "n50001n99998");
}

// Names go round at random, some leave, some come: each content must end where it was told to.
TEST(RenamePlanTest, BringsEachNameWhereItBelongs)
{
    for (unsigned seed = 0; seed < 600; seed++) {
        std::mt19937 random(seed);
        const bool foldsCase = seed % 3 == 0;
        const size_t count = 1 + random() % 12;
        ModelFolder folder(foldsCase);
        Pairs pairs;
        std::vector<size_t> places(count + 4); // the last ones are names that are free
        std::iota(places.begin(), places.end(), 0);
        std::shuffle(places.begin(), places.end(), random);
        for (size_t place = 0; place < count; place++) {
            const char small = static_cast<char>('a' + place);
            const char target = static_cast<char>('a' + places[place]);
            const bool isCapital = foldsCase && random() % 2 == 0;
            pairs.emplace_back(std::string(1, small),
                               std::string(1, isCapital ? target - 32 : target));
            folder.Add(pairs.back().first);
        }
        folder.Add("other");

        const Outcome outcome = Perform(PreviewOf(pairs), folder);

        ASSERT_EQ(outcome.status, B_OK) << "seed " << seed;
        ASSERT_EQ(folder.Count(), count + 1) << "seed " << seed;
        for (const auto& [from, to] : pairs) {
            ASSERT_EQ(folder.At(to), from) << "seed " << seed << ": " << folder.All();
            ASSERT_NE(folder.All().find(to + "=" + from + " "), std::string::npos)
                << "seed " << seed << ": " << folder.All();
        }
        ASSERT_EQ(folder.At("other"), "other");
    }
}

} // namespace rename_many
