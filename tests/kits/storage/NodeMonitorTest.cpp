#include "storage/FolderTable.h"

#include <AppDefs.h>
#include <Directory.h>
#include <Entry.h>
#include <Looper.h>
#include <Message.h>
#include <Messenger.h>
#include <Node.h>
#include <NodeMonitor.h>

#include <TempTree.h>
#include <chrono>
#include <condition_variable>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <mutex>
#include <unistd.h>
#include <vector>

namespace {

struct Notice
{
    int32 opcode = 0;
    std::string name;
    int64 directory = 0;
    int64 node = 0;
    int64 from = -1;
    int64 to = -1;
    bool replaced = false;
};

/// Keeps the notices it is sent, and lets a test wait for them.
class Watcher : public BLooper
{
public:
    Watcher() : BLooper("watcher") {}

    void MessageReceived(BMessage* message) override
    {
        if (message->what != B_NODE_MONITOR) {
            BLooper::MessageReceived(message);
            return;
        }
        Notice notice;
        const char* name = "";
        message->FindInt32("opcode", &notice.opcode);
        message->FindString("name", &name);
        notice.name = name;
        message->FindInt64("directory", &notice.directory);
        message->FindInt64("node", &notice.node);
        message->FindInt64("from directory", &notice.from);
        message->FindInt64("to directory", &notice.to);
        message->FindBool("replaced", &notice.replaced);
        {
            std::lock_guard lock(fMutex);
            fNotices.push_back(notice);
        }
        fArrival.notify_all();
    }

    /// The notices up to now, as soon as `isEnough` or after some seconds.
    std::vector<Notice> WaitFor(const std::function<bool(const std::vector<Notice>&)>& isEnough)
    {
        std::unique_lock lock(fMutex);
        fArrival.wait_for(lock, std::chrono::seconds(10), [&] { return isEnough(fNotices); });
        return fNotices;
    }

    std::vector<Notice> WaitForCount(size_t count)
    {
        return WaitFor([count](const auto& notices) { return notices.size() >= count; });
    }

    size_t Count()
    {
        std::lock_guard lock(fMutex);
        return fNotices.size();
    }

private:
    std::mutex fMutex; // guards fNotices
    std::condition_variable fArrival;
    std::vector<Notice> fNotices;
};

class NodeMonitorTest : public testing::Test
{
protected:
    NodeMonitorTest() : fWatcher(new Watcher), fMessenger(nullptr, fWatcher) { fWatcher->Run(); }

    ~NodeMonitorTest() override
    {
        stop_watching(fMessenger);
        fWatcher->Lock();
        fWatcher->Quit();
    }

    node_ref NodeOf(const char* name)
    {
        node_ref node;
        EXPECT_EQ(BEntry(fTree.Path(name).c_str()).GetNodeRef(&node), B_OK);
        return node;
    }

    int64 Ino(const char* name) { return static_cast<int64>(NodeOf(name).node); }

    status_t Watch(const char* name, uint32 flags = B_WATCH_DIRECTORY)
    {
        const node_ref node = NodeOf(name);
        return watch_node(&node, flags, fMessenger);
    }

    /// Makes an entry whose notice stands behind all earlier ones, and gives those.
    std::vector<Notice> AllUpToNow(const char* folder)
    {
        fTree.Write(std::string(folder) + "/end", "");
        auto notices = fWatcher->WaitFor([](const auto& all) {
            return !all.empty() && all.back().opcode == B_ENTRY_CREATED && all.back().name == "end";
        });
        EXPECT_FALSE(notices.empty());
        if (!notices.empty()) {
            EXPECT_EQ(notices.back().name, "end");
            notices.pop_back();
        }
        return notices;
    }

    void Rename(const char* from, const char* to)
    {
        ASSERT_EQ(rename(fTree.Path(from).c_str(), fTree.Path(to).c_str()), 0);
    }

    TempTree fTree;
    Watcher* fWatcher; // deletes itself
    BMessenger fMessenger;
};

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
    for (int i = 0; i < 30000; ++i) {
        ASSERT_EQ(symlink("x", fTree.Path("d/" + std::to_string(i)).c_str()), 0);
    }

    const auto notices = fWatcher->WaitForCount(30000);

    EXPECT_EQ(notices.size(), 30000u);
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
