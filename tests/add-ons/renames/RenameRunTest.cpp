#include "PlanFixture.h"
#include "TempTree.h"

#include <Entry.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <numeric>
#include <random>
#include <thread>

namespace rename_many {

namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

Outcome TakeAll(const Steps& steps, NameChanger& changer, bool isStopped = false)
{
    const std::atomic<bool> stopped = isStopped;
    std::atomic<size_t> count = 0;
    return TakeSteps(steps, changer, stopped, &count);
}

/// A model with a, b and c, and what makes a circle of them: four steps.
struct Circle
{
    Circle()
    {
        for (const char* name : {"a", "b", "c"}) {
            folder.Add(name);
        }
    }
    Outcome Run() { return Perform(PreviewOf({{"a", "b"}, {"b", "c"}, {"c", "a"}}), folder); }

    ModelFolder folder;
};

constexpr char kBefore[] = "a=a b=b c=c ";

/// A random renaming of the names of a folder and some that are free.
Pairs RandomPairs(std::mt19937& random, size_t count)
{
    std::vector<size_t> places(count + 3);
    std::iota(places.begin(), places.end(), 0);
    std::shuffle(places.begin(), places.end(), random);
    Pairs pairs;
    for (size_t place = 0; place < count; place++) {
        pairs.emplace_back("n" + std::to_string(place), "n" + std::to_string(places[place]));
    }
    return pairs;
}

entry_ref RefOf(const std::string& path)
{
    entry_ref ref;
    EXPECT_EQ(get_ref_for_path(path.c_str(), &ref), B_OK);
    return ref;
}

} // namespace

TEST(RenameRunTest, TakesAllBackWhenOneFails)
{
    for (int failing = 0; failing < 4; failing++) {
        Circle circle;
        circle.folder.failures[failing] = B_PERMISSION_DENIED;
        const Outcome outcome = circle.Run();
        EXPECT_EQ(outcome.status, B_PERMISSION_DENIED);
        EXPECT_EQ(circle.folder.All(), kBefore);
        EXPECT_TRUE(outcome.done.empty());
        EXPECT_TRUE(outcome.stuck.empty());
        EXPECT_FALSE(outcome.failed.from.empty());
    }
}

TEST(RenameRunTest, TakesAllBackWhenItIsStopped)
{
    Circle circle;
    std::atomic<bool> isStopped = false;
    std::atomic<size_t> count = 0;
    circle.folder.before = [&](int number) {
        isStopped = number == 2;
    };
    Steps steps;
    ASSERT_EQ(
        MakePlan(PreviewOf({{"a", "b"}, {"b", "c"}, {"c", "a"}}), circle.folder.Known(), &steps),
        B_OK);
    EXPECT_EQ(TakeSteps(steps, circle.folder, isStopped, &count).status, B_CANCELED);
    EXPECT_EQ(circle.folder.All(), kBefore);
    EXPECT_EQ(count, 3u);
}

TEST(RenameRunTest, ReplacesNothingThatCameMeanwhile)
{
    Circle circle;
    circle.folder.before = [&](int number) {
        if (number == 2) {
            circle.folder.Add("c"); // free at this moment
        }
    };
    const Outcome outcome = circle.Run();
    EXPECT_EQ(outcome.status, B_FILE_EXISTS);
    EXPECT_EQ(outcome.failed.to, "c");
    // c was called a, and cannot be called c again; so a cannot have its name either.
    EXPECT_EQ(circle.folder.All(), ".renaming-1-a=a a=c b=b c=c ");
    ASSERT_EQ(outcome.stuck.size(), 2u);
    EXPECT_EQ(outcome.stuck[0].wanted + " " + outcome.stuck[0].name, "c a");
    EXPECT_EQ(outcome.stuck[1].wanted + " " + outcome.stuck[1].name, "a .renaming-1-a");
}

TEST(RenameRunTest, LeavesOutWhatIsGone)
{
    Circle circle;
    circle.folder.before = [&](int number) {
        if (number == 0) {
            circle.folder.Remove("b");
        }
    };
    const Outcome outcome = circle.Run();
    EXPECT_EQ(outcome.status, B_OK);
    EXPECT_EQ(outcome.gone, std::vector<size_t>{1});
    EXPECT_EQ(circle.folder.All(), "a=c b=a ");
}

TEST(RenameRunTest, UndoesAndRedoes)
{
    Circle circle;
    const Outcome renamed = circle.Run();
    ASSERT_EQ(circle.folder.All(), "a=c b=a c=b ");
    const Outcome undone = TakeAll(Reversed(renamed.done), circle.folder);
    EXPECT_EQ(undone.status, B_OK);
    EXPECT_EQ(circle.folder.All(), kBefore);
}

TEST(RenameRunTest, UndoesAllOrNothing)
{
    ModelFolder folder;
    folder.Add("a");
    folder.Add("b");
    const Outcome renamed = Perform(PreviewOf({{"a", "x"}, {"b", "y"}}), folder);
    folder.Add("a"); // another one
    const Outcome undone = TakeAll(Reversed(renamed.done), folder);
    EXPECT_EQ(undone.status, B_FILE_EXISTS);
    EXPECT_TRUE(undone.stuck.empty());
    EXPECT_EQ(folder.All(), "a=a x=a y=b ");
}

// Whatever fails whenever: nothing is lost, and what is told is so.
TEST(RenameRunTest, LosesNothingWhateverFails)
{
    for (unsigned seed = 0; seed < 500; seed++) {
        std::mt19937 random(seed);
        const Pairs pairs = RandomPairs(random, 2 + random() % 8);
        ModelFolder folder;
        for (const auto& [from, to] : pairs) {
            folder.Add(from);
        }
        const std::string before = folder.All();
        for (int failure = 0; failure < 1 + static_cast<int>(seed % 3); failure++) {
            folder.failures[static_cast<int>(random() % 12)] = B_IO_ERROR;
        }
        const Outcome outcome = Perform(PreviewOf(pairs), folder);
        ASSERT_EQ(folder.Count(), pairs.size()) << "seed " << seed;
        std::vector<std::string> names;
        for (const auto& [from, to] : pairs) {
            names.push_back(from);
        }
        for (const Step& step : outcome.done) {
            names[step.entry] = step.to;
        }
        for (size_t place = 0; place < pairs.size(); place++) {
            ASSERT_EQ(folder.At(names[place]), pairs[place].first) << "seed " << seed;
        }
        for (const Outcome::Stuck& stuck : outcome.stuck) {
            ASSERT_EQ(stuck.name, names[stuck.entry]) << "seed " << seed;
            ASSERT_EQ(stuck.wanted, pairs[stuck.entry].first) << "seed " << seed;
        }
        if (outcome.status != B_OK && outcome.stuck.empty()) {
            ASSERT_EQ(folder.All(), before) << "seed " << seed;
        }
    }
}

TEST(RenameRunTest, RenamesOnTheDiskWithoutReplacing)
{
    TempTree tree;
    tree.Write("a", "first");
    tree.Write("b", "second");
    tree.Link("link", "nowhere");
    tree.Write("\xff\n", "odd");
    const std::vector<entry_ref> folders = {RefOf(tree.Path("a"))};
    DiskChanger disk(folders);
    EXPECT_EQ(disk.Rename(0, "a", "b"), B_FILE_EXISTS);
    EXPECT_EQ(disk.Rename(0, "a", "link"), B_FILE_EXISTS);
    EXPECT_EQ(disk.Rename(0, "missing", "c"), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(disk.Rename(0, "link", "c"), B_OK);
    EXPECT_EQ(disk.Rename(0, "\xff\n", "\xfe\\"), B_OK);
    EXPECT_EQ(tree.Read("a") + tree.Read("b") + tree.Read("\xfe\\"), "firstsecondodd");
    EXPECT_EQ(tree.ReadLink("c"), "nowhere");
}

// Another program takes and leaves the same names all the time.
TEST(RenameRunTest, ReplacesNothingOfAnotherProgram)
{
    TempTree tree;
    std::mt19937 random(1);
    constexpr size_t kCount = 12;
    for (size_t place = 0; place < kCount; place++) {
        tree.Write("d/n" + std::to_string(place), std::to_string(place));
    }
    const std::vector<entry_ref> folders = {RefOf(tree.Path("d/n0"))};
    const std::string others = tree.Path("d/");
    std::atomic<bool> ends = false;
    std::atomic<int> taken = 0;
    std::thread adversary([&] {
        std::mt19937 choices(2);
        while (!ends) {
            const std::string name = others + "n" + std::to_string(choices() % (kCount + 3));
            // A folder: it takes a name only when that is free, and leaves it only while empty.
            std::error_code ignored;
            if (std::filesystem::create_directory(name, ignored)) {
                taken++;
                std::this_thread::yield();
                std::filesystem::remove(name, ignored);
            }
        }
    });
    DiskChanger disk(folders);
    std::vector<std::string> names(kCount);
    for (size_t place = 0; place < kCount; place++) {
        names[place] = "n" + std::to_string(place);
    }
    int stopped = 0;
    for (int round = 0; round < 400 || (taken == 0 && round < 100'000); round++) {
        Pairs pairs = RandomPairs(random, kCount);
        Preview preview = PreviewOf(pairs);
        auto entries = std::make_shared<Entries>(*preview.entries);
        for (size_t place = 0; place < kCount; place++) {
            (*entries)[place].name = names[place];
        }
        preview.entries = entries;
        std::vector<FolderNames> known(1);
        for (const std::string& name : names) {
            known[0].keys.insert(name);
        }
        Steps steps;
        ASSERT_EQ(MakePlan(preview, known, &steps), B_OK);
        const Outcome outcome = TakeAll(steps, disk);
        stopped += outcome.status != B_OK ? 1 : 0;
        ASSERT_TRUE(outcome.gone.empty());
        for (const Step& step : outcome.done) {
            names[step.entry] = step.to;
        }
        for (size_t place = 0; place < kCount; place++) {
            ASSERT_EQ(tree.Read("d/" + names[place]), std::to_string(place)) << "round " << round;
        }
    }
    ends = true;
    adversary.join();
    RecordProperty("stopped", stopped);
    EXPECT_GT(taken, 0);
}

} // namespace rename_many
