#include "NodeMonitorFixture.h"

#include "NoThreads.h"

#include <Directory.h>
#include <EntryBatch.h>
#include <File.h>
#include <NodeMonitor.h>

#include <TempTree.h>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

namespace {

// More than the batch reads alone.
constexpr int kManyEntries = 21'000;
constexpr size_t kMuch = size_t{24} << 20;
constexpr size_t kPiece = 64 * 1024;

} // namespace

TEST(NoThreadsTest, ALargeFolderIsReadAlone)
{
    TempTree tree;
    for (int i = 0; i < kManyEntries; ++i) {
        tree.Write("f" + std::to_string(i), "");
    }
    const BDirectory folder(tree.Path().c_str());
    BEntryBatch batch;

    const NoThreads none;
    ASSERT_EQ(batch.SetTo(folder), B_OK);
    while (batch.StatNext()) {
    }
    batch.Sort();

    EXPECT_GT(NoThreads::CountRefused(), 0);
    ASSERT_EQ(batch.CountItems(), kManyEntries);
    EXPECT_STREQ(batch.ItemAt(0).name, "f0");
    EXPECT_STREQ(batch.ItemAt(2).name, "f10");
    for (int32 i = 0; i < batch.CountItems(); ++i) {
        ASSERT_EQ(batch.ItemAt(i).status, B_OK);
    }
}

TEST(NoThreadsTest, ALargeFileIsWrittenByItsCaller)
{
    TempTree tree;
    std::string content;
    {
        const NoThreads none;
        BFile file(tree.Path("big").c_str(), B_WRITE_ONLY | B_CREATE_FILE);
        for (size_t at = 0; at < kMuch; at += kPiece) {
            const std::string piece(kPiece, static_cast<char>('a' + at / kPiece % 26));
            ASSERT_EQ(file.Write(piece.data(), piece.size()), static_cast<ssize_t>(piece.size()));
            content += piece;
        }
        EXPECT_EQ(file.Write("", 0), 0);
        EXPECT_GT(NoThreads::CountRefused(), 0);
    }

    EXPECT_TRUE(tree.Read("big") == content);
}

TEST(NoThreadsTest, ATreeIsRemovedByOneThread)
{
    TempTree tree;
    for (int i = 0; i < 40; ++i) {
        tree.Write("top/folder" + std::to_string(i) + "/file", "x");
    }
    BEntry top(tree.Path("top").c_str());

    const NoThreads none;
    EXPECT_EQ(top.RemoveTree(nullptr), B_OK);

    EXPECT_GT(NoThreads::CountRefused(), 0);
    EXPECT_FALSE(tree.Exists("top"));
}

// These run in a process of their own that starts anew: the threads they are about start once.
class NoThreadsDeathTest : public NodeMonitorTest
{
protected:
    NoThreadsDeathTest() { ::testing::GTEST_FLAG(death_test_style) = "threadsafe"; }

    /// Watches without and with threads to be had, and ends the process: 0 when all is as it should
    /// be.
    [[noreturn]] void WatchAndExit()
    {
        const BDirectory folder(fTree.Path().c_str());
        node_ref node;
        folder.GetNodeRef(&node);
        status_t refused = B_OK;
        status_t ended = B_ERROR;
        {
            const NoThreads none;
            refused = watch_node(&node, B_WATCH_DIRECTORY, fMessenger);
            ended = stop_watching(fMessenger);
        }
        const bool isTold = refused == B_NO_MORE_THREADS && ended == B_OK;
        const bool worksLater = watch_node(&node, B_WATCH_DIRECTORY, fMessenger) == B_OK;
        fTree.Write("new", "");
        const bool isSeen = worksLater && !fWatcher->WaitForCount(1).empty();
        std::_Exit(isTold && isSeen ? 0 : 1);
    }
};

TEST_F(NoThreadsDeathTest, WatchingTellsThatThereIsNoThread)
{
    EXPECT_EXIT(WatchAndExit(), ::testing::ExitedWithCode(0), "");
}

TEST_F(NoThreadsDeathTest, AFolderOnAnotherVolumeOpensAllTheSame)
{
    EXPECT_EXIT(
        {
            const NoThreads none;
            const BEntry entry("/proc/stat");
            const bool isFound = entry.InitCheck() == B_OK && entry.Exists();
            std::_Exit(isFound && NoThreads::CountRefused() > 0 ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}
