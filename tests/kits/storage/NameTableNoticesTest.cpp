#include "NodeMonitorFixture.h"

#include <cstdlib>

namespace {

/// A watched folder's names are only looked through when the first notice comes: what was in the
/// folder before the watch must be known then all the same.
class NameTableNoticesTest : public NodeMonitorTest
{
protected:
    static constexpr int kEntries = 500;

    NameTableNoticesTest()
    {
        for (int i = 0; i < kEntries; ++i) {
            fTree.Write("folder/" + Name(i), "");
        }
    }

    static std::string Name(int index) { return "entry" + std::to_string(index); }
    static std::string InFolder(int index) { return "folder/" + Name(index); }
    int64 InoOf(int index) { return Ino(InFolder(index).c_str()); }
};

TEST_F(NameTableNoticesTest, TellsTheNodeOfAnOldEntryThatIsRemovedFirst)
{
    const int64 node = InoOf(17);
    ASSERT_EQ(Watch("folder"), B_OK);

    fTree.Remove(InFolder(17));

    const auto notices = fWatcher->WaitForCount(1);
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(notices[0].opcode, B_ENTRY_REMOVED);
    EXPECT_EQ(notices[0].name, Name(17));
    EXPECT_EQ(notices[0].node, node);
    EXPECT_EQ(notices[0].directory, Ino("folder"));
}

TEST_F(NameTableNoticesTest, TellsARenameOfAnOldEntryAsOne)
{
    const int64 node = InoOf(3);
    ASSERT_EQ(Watch("folder"), B_OK);

    Rename(InFolder(3).c_str(), "folder/other");

    const auto notices = AllUpToNow("folder");
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(notices[0].opcode, B_ENTRY_MOVED);
    EXPECT_EQ(notices[0].name, "other");
    EXPECT_EQ(notices[0].node, node);
    EXPECT_EQ(notices[0].from, Ino("folder"));
    EXPECT_EQ(notices[0].to, Ino("folder"));
}

TEST_F(NameTableNoticesTest, TellsWhatARenameReplaces)
{
    const int64 kept = InoOf(5);
    const int64 replaced = InoOf(6);
    ASSERT_EQ(Watch("folder"), B_OK);

    Rename(InFolder(5).c_str(), InFolder(6).c_str());

    const auto notices = AllUpToNow("folder");
    ASSERT_EQ(notices.size(), 2u);
    EXPECT_EQ(notices[0].opcode, B_ENTRY_REMOVED);
    EXPECT_EQ(notices[0].node, replaced);
    EXPECT_TRUE(notices[0].replaced);
    EXPECT_EQ(notices[1].opcode, B_ENTRY_MOVED);
    EXPECT_EQ(notices[1].node, kept);
}

TEST_F(NameTableNoticesTest, TellsTheNodeOfAnOldFileThatIsWritten)
{
    const int64 node = InoOf(8);
    ASSERT_EQ(Watch("folder", B_WATCH_DIRECTORY | B_WATCH_STAT), B_OK);

    fTree.Write(InFolder(8), "more");

    const auto notices = fWatcher->WaitForCount(1);
    ASSERT_FALSE(notices.empty());
    EXPECT_EQ(notices[0].opcode, B_STAT_CHANGED);
    EXPECT_EQ(notices[0].node, node);
}

TEST_F(NameTableNoticesTest, KnowsAllOldEntriesAfterTheFirstNotice)
{
    std::vector<int64> nodes;
    for (int i = 0; i < kEntries; ++i) {
        nodes.push_back(InoOf(i));
    }
    ASSERT_EQ(Watch("folder"), B_OK);
    fTree.Write("folder/new", "");
    ASSERT_EQ(fWatcher->WaitForCount(1).size(), 1u);

    for (int i = 0; i < kEntries; ++i) {
        fTree.Remove(InFolder(i));
    }

    const auto notices = AllUpToNow("folder");
    ASSERT_EQ(notices.size(), size_t(kEntries) + 1);
    for (int i = 0; i < kEntries; ++i) {
        EXPECT_EQ(notices[static_cast<size_t>(i) + 1].opcode, B_ENTRY_REMOVED);
        EXPECT_EQ(notices[static_cast<size_t>(i) + 1].node, nodes[static_cast<size_t>(i)]);
    }
}

TEST_F(NameTableNoticesTest, ReadsTheNamesAnewForALaterWatch)
{
    ASSERT_EQ(Watch("folder"), B_OK);
    fTree.Remove(InFolder(1));
    ASSERT_EQ(fWatcher->WaitForCount(1).size(), 1u);
    stop_watching(fMessenger);
    fTree.Write("folder/unseen", "");
    const int64 node = Ino("folder/unseen");
    ASSERT_EQ(Watch("folder"), B_OK);

    fTree.Remove("folder/unseen");

    const auto notices = fWatcher->WaitForCount(2);
    ASSERT_EQ(notices.size(), 2u);
    EXPECT_EQ(notices[1].opcode, B_ENTRY_REMOVED);
    EXPECT_EQ(notices[1].node, node);
}

} // namespace
