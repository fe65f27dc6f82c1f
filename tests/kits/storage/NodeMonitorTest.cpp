#include "NodeMonitorFixture.h"

#include <Directory.h>

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace {

/// How often the thread of this name has gone to sleep; -1 when there is none.
long SleepsOfThread(const std::string& name)
{
    for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
        std::string found;
        std::getline(std::ifstream(task.path() / "comm") >> std::ws, found);
        if (found != name) {
            continue;
        }
        std::ifstream status(task.path() / "status");
        for (std::string word; status >> word;) {
            long count = 0;
            if (word == "voluntary_ctxt_switches:" && status >> count) {
                return count;
            }
        }
    }
    return -1;
}

} // namespace

TEST_F(NodeMonitorTest, TellsOfCreatedAndRemovedEntries)
{
    fTree.MakeFolder("d");
    fTree.Write("d/old", "");
    const int64 old = Ino("d/old");
    ASSERT_EQ(Watch("d"), B_OK);

    fTree.Write("d/new\n\xff", "");
    fTree.Remove("d/old");

    const auto notices = fWatcher->WaitForCount(2);
    ASSERT_EQ(notices.size(), 2u);
    EXPECT_EQ(notices[0].opcode, B_ENTRY_CREATED);
    EXPECT_EQ(notices[0].name, "new\n\xff");
    EXPECT_EQ(notices[0].directory, Ino("d"));
    EXPECT_EQ(notices[0].node, Ino("d/new\n\xff"));
    EXPECT_EQ(notices[1].opcode, B_ENTRY_REMOVED);
    EXPECT_EQ(notices[1].name, "old");
    EXPECT_EQ(notices[1].node, old);
    EXPECT_FALSE(notices[1].replaced);
}

TEST_F(NodeMonitorTest, TellsOfRenames)
{
    fTree.Write("d/a", "");
    ASSERT_EQ(Watch("d"), B_OK);

    Rename("d/a", "d/b");

    const auto notices = AllUpToNow("d");
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(notices[0].opcode, B_ENTRY_MOVED);
    EXPECT_EQ(notices[0].name, "b");
    EXPECT_EQ(notices[0].node, Ino("d/b"));
    EXPECT_EQ(notices[0].from, Ino("d"));
    EXPECT_EQ(notices[0].to, Ino("d"));
}

TEST_F(NodeMonitorTest, TellsOfNamesThatAreExchanged)
{
    fTree.Write("d/a", "of a");
    fTree.Write("d/b", "of b");
    const int64 a = Ino("d/a");
    const int64 b = Ino("d/b");
    ASSERT_EQ(Watch("d"), B_OK);

    ASSERT_EQ(BDirectory(fTree.Path("d").c_str()).ExchangeChildren("a", "b"), B_OK);

    const auto notices = AllUpToNow("d");
    ASSERT_EQ(notices.size(), 3u);
    EXPECT_EQ(notices[0].opcode, B_ENTRY_REMOVED);
    EXPECT_TRUE(notices[0].replaced);
    EXPECT_EQ(notices[0].name, "b");
    EXPECT_EQ(notices[0].node, b);
    EXPECT_EQ(notices[1].opcode, B_ENTRY_MOVED);
    EXPECT_EQ(notices[1].name, "b");
    EXPECT_EQ(notices[1].node, a);
    EXPECT_EQ(notices[2].opcode, B_ENTRY_CREATED);
    EXPECT_EQ(notices[2].name, "a");
    EXPECT_EQ(notices[2].node, b);

    fTree.Remove("d/a");
    const auto all = fWatcher->WaitForCount(5); // with the one that ended those before
    ASSERT_EQ(all.size(), 5u);
    EXPECT_EQ(all[4].opcode, B_ENTRY_REMOVED);
    EXPECT_EQ(all[4].node, b) << "the other one is known by its new name";
}

TEST_F(NodeMonitorTest, WhatIsRenamedOverAnotherAndBackIsNotExchanged)
{
    fTree.Write("d/a", "");
    fTree.Write("d/b", "");
    const int64 a = Ino("d/a");
    ASSERT_EQ(Watch("d"), B_OK);

    Rename("d/a", "d/b");
    Rename("d/b", "d/a");

    const auto notices = AllUpToNow("d");
    ASSERT_EQ(notices.size(), 3u);
    EXPECT_EQ(notices[2].opcode, B_ENTRY_MOVED);
    EXPECT_EQ(notices[2].name, "a");
    EXPECT_EQ(notices[2].node, a);
}

TEST_F(NodeMonitorTest, TellsFirstWhatARenameReplaced)
{
    fTree.Write("d/a", "");
    fTree.Write("d/b", "");
    const int64 replaced = Ino("d/b");
    ASSERT_EQ(Watch("d"), B_OK);

    Rename("d/a", "d/b");

    const auto notices = AllUpToNow("d");
    ASSERT_EQ(notices.size(), 2u);
    EXPECT_EQ(notices[0].opcode, B_ENTRY_REMOVED);
    EXPECT_TRUE(notices[0].replaced);
    EXPECT_EQ(notices[0].node, replaced);
    EXPECT_EQ(notices[0].name, "b");
    EXPECT_EQ(notices[1].opcode, B_ENTRY_MOVED);
    EXPECT_EQ(notices[1].node, Ino("d/b"));
}

TEST_F(NodeMonitorTest, TellsOfMovesOutAndIn)
{
    fTree.Write("d/a", "");
    fTree.Write("e/b", "");
    const int64 node = Ino("d/a");
    ASSERT_EQ(Watch("d"), B_OK);

    Rename("d/a", "e/a");
    Rename("e/b", "d/b");

    const auto notices = AllUpToNow("d");
    ASSERT_EQ(notices.size(), 2u);
    EXPECT_EQ(notices[0].opcode, B_ENTRY_MOVED);
    EXPECT_EQ(notices[0].name, "a");
    EXPECT_EQ(notices[0].node, node);
    EXPECT_EQ(notices[0].from, Ino("d"));
    EXPECT_EQ(notices[0].to, 0);
    EXPECT_EQ(notices[1].from, 0);
    EXPECT_EQ(notices[1].to, Ino("d"));
    EXPECT_EQ(notices[1].node, Ino("d/b"));
}

TEST_F(NodeMonitorTest, TellsAMoveBetweenWatchedFoldersOnce)
{
    fTree.Write("d/a", "");
    fTree.MakeFolder("e");
    ASSERT_EQ(Watch("d"), B_OK);
    ASSERT_EQ(Watch("e"), B_OK);

    Rename("d/a", "e/b");

    const auto notices = AllUpToNow("e");
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(notices[0].from, Ino("d"));
    EXPECT_EQ(notices[0].to, Ino("e"));
}

TEST_F(NodeMonitorTest, TellsChangesOfFilesWhenAsked)
{
    fTree.Write("d/a", "");
    fTree.Write("d/b", "");
    ASSERT_EQ(Watch("d"), B_OK);
    fTree.Write("d/a", "unheard");
    EXPECT_EQ(AllUpToNow("d").size(), 0u);
    ASSERT_EQ(Watch("d/b", B_WATCH_STAT), B_OK);
    const size_t before = fWatcher->Count();

    fTree.Write("d/a", "heard");

    const auto notices = fWatcher->WaitForCount(before + 1);
    ASSERT_GT(notices.size(), before);
    EXPECT_EQ(notices[before].opcode, B_STAT_CHANGED);
    EXPECT_EQ(notices[before].node, Ino("d/a"));
    EXPECT_EQ(notices[before].name, "a");
}

TEST_F(NodeMonitorTest, GathersManyChangesOfOneFile)
{
    fTree.Write("d/a", "");
    ASSERT_EQ(Watch("d", B_WATCH_DIRECTORY | B_WATCH_STAT), B_OK);
    const auto started = std::chrono::steady_clock::now();
    const int file = open(fTree.Path("d/a").c_str(), O_WRONLY);
    for (int i = 0; i < 2000; ++i) {
        ASSERT_EQ(write(file, "x", 1), 1);
    }
    close(file);

    // The last state is always told: a notice comes at or after the time the last byte was there.
    const auto isLastTold = [this](const auto& notices) {
        return !notices.empty() && notices.back().opcode == B_STAT_CHANGED;
    };
    fWatcher->WaitFor(isLastTold);
    const auto spent = std::chrono::duration_cast<std::chrono::milliseconds>(
                           std::chrono::steady_clock::now() - started)
                           .count();
    EXPECT_LE(fWatcher->Count(), 2u + static_cast<size_t>(spent) / 100);
}

TEST_F(NodeMonitorTest, SleepsMostlyWhileAFileIsBeingWritten)
{
    fTree.Write("d/a", "");
    ASSERT_EQ(Watch("d", B_WATCH_DIRECTORY | B_WATCH_STAT), B_OK);
    const long before = SleepsOfThread("node watcher");
    ASSERT_GE(before, 0);
    const auto started = std::chrono::steady_clock::now();
    const int file = open(fTree.Path("d/a").c_str(), O_WRONLY);
    for (int i = 0; i < 2000; ++i) {
        ASSERT_EQ(write(file, "x", 1), 1);
        usleep(100);
    }
    close(file);
    const long spentMs = static_cast<long>(std::chrono::duration_cast<std::chrono::milliseconds>(
                                               std::chrono::steady_clock::now() - started)
                                               .count());
    // Two sleeps in each ten milliseconds, and those for the notices.
    EXPECT_LE(SleepsOfThread("node watcher") - before, 20 + spentMs / 10 * 4);
}

TEST_F(NodeMonitorTest, TellsAtOnceWhatHappensWhileAFileIsBeingWritten)
{
    fTree.Write("d/a", "");
    ASSERT_EQ(Watch("d", B_WATCH_DIRECTORY | B_WATCH_STAT), B_OK);
    const int file = open(fTree.Path("d/a").c_str(), O_WRONLY);
    for (int i = 0; i < 20; ++i) {
        ASSERT_EQ(write(file, "x", 1), 1);
        const std::string name = "d/new" + std::to_string(i);
        fTree.Write(name, "");
        const std::string leaf = name.substr(2);
        const auto notices = fWatcher->WaitFor([&](const auto& all) {
            return std::any_of(all.begin(), all.end(), [&](const Notice& notice) {
                return notice.opcode == B_ENTRY_CREATED && notice.name == leaf;
            });
        });
        EXPECT_TRUE(std::any_of(notices.begin(), notices.end(),
                                [&](const Notice& notice) { return notice.name == leaf; }));
    }
    close(file);
}

TEST_F(NodeMonitorTest, KeepsQuietAfterStopping)
{
    fTree.MakeFolder("d");
    ASSERT_EQ(Watch("d"), B_OK);
    EXPECT_EQ(stop_watching(fMessenger), B_OK);
    fTree.Write("d/unheard", "");

    ASSERT_EQ(Watch("d"), B_OK);

    EXPECT_EQ(AllUpToNow("d").size(), 0u);
}

TEST_F(NodeMonitorTest, TellsTheEndOfAFolderThatIsHeldOpen)
{
    fTree.MakeFolder("d");
    const node_ref node = NodeOf("d");
    const BDirectory held(fTree.Path("d").c_str());
    ASSERT_EQ(Watch("d", B_WATCH_DIRECTORY | B_WATCH_NAME), B_OK);

    ASSERT_EQ(rmdir(fTree.Path("d").c_str()), 0);

    const auto notices = fWatcher->WaitForCount(1);
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(notices[0].opcode, B_ENTRY_REMOVED);
    EXPECT_EQ(notices[0].node, static_cast<int64>(node.node));
    EXPECT_EQ(notices[0].name, "d");
}

TEST_F(NodeMonitorTest, GoesOnAfterTheFolderWasRenamed)
{
    fTree.MakeFolder("d");
    ASSERT_EQ(Watch("d", B_WATCH_DIRECTORY | B_WATCH_NAME), B_OK);

    Rename("d", "z");

    const auto notices = AllUpToNow("z");
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(notices[0].opcode, B_ENTRY_MOVED);
    EXPECT_EQ(notices[0].name, "z");
}

TEST_F(NodeMonitorTest, DeliversBurstsWhole)
{
    fTree.MakeFolder("d");
    ASSERT_EQ(Watch("d"), B_OK);
    constexpr size_t kMade = 20'000; // more than the kernel keeps
    for (size_t i = 0; i < kMade; ++i) {
        ASSERT_EQ(symlink("x", fTree.Path("d/" + std::to_string(i)).c_str()), 0);
    }

    const auto notices = fWatcher->WaitForCount(kMade);

    EXPECT_EQ(notices.size(), kMade);
}

TEST_F(NodeMonitorTest, RefusesWhatItCannotWatch)
{
    fTree.MakeFolder("d");
    const node_ref node = NodeOf("d");
    const node_ref unknown(node.device, ~ino_t(0));

    EXPECT_EQ(watch_node(&unknown, B_WATCH_DIRECTORY, fMessenger), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(watch_node(nullptr, B_WATCH_DIRECTORY, fMessenger), B_BAD_VALUE);
    EXPECT_EQ(watch_node(&node, B_WATCH_DIRECTORY, BMessenger()), B_BAD_VALUE);
    EXPECT_EQ(watch_node(nullptr, B_WATCH_MOUNT, fMessenger), B_OK);
}
