#include "RenameMany/RenameWorker.h"
#include "TempTree.h"

#include <Entry.h>

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace rename_many {

namespace {

class RenameWorkerTest : public ::testing::Test
{
protected:
    void Start(const std::vector<std::string>& names)
    {
        std::vector<entry_ref> refs;
        for (const std::string& name : names) {
            entry_ref ref;
            ASSERT_EQ(get_ref_for_path(fTree.Path(name).c_str(), &ref), B_OK);
            refs.push_back(ref);
        }
        fWorker = std::make_unique<RenameWorker>(refs, BMessenger());
        ASSERT_EQ(fWorker->Start(), B_OK);
    }
    void WaitUntilIdle()
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!fWorker->IsIdle() && std::chrono::steady_clock::now() < end) {
            std::this_thread::yield();
        }
        ASSERT_TRUE(fWorker->IsIdle());
    }
    static Rules Pattern(const char* pattern)
    {
        Rules rules;
        rules.pattern = pattern;
        return rules;
    }

    TempTree fTree;
    std::unique_ptr<RenameWorker> fWorker;
};

} // namespace

TEST_F(RenameWorkerTest, KeepsFoldersApart)
{
    fTree.Write("one/a", "1");
    fTree.Write("two/a", "2");
    fTree.Write("two/b", "3");
    Start({"one/a", "two/a"});

    fWorker->AskForPreview(Pattern("b"), true);

    WaitUntilIdle();
    const std::shared_ptr<const Preview> preview = fWorker->LastPreview();
    ASSERT_NE(preview, nullptr);
    EXPECT_EQ(preview->faults[0], Fault::kNone);
    EXPECT_EQ(preview->faults[1], Fault::kTaken);
    fWorker->AskToRename(Pattern("c"));
    WaitUntilIdle();
    ASSERT_TRUE(fWorker->TakeReport().has_value());
    EXPECT_EQ(fTree.Read("one/c") + fTree.Read("two/c") + fTree.Read("two/b"), "123");
}

TEST_F(RenameWorkerTest, KnowsDatesAndFolders)
{
    fTree.MakeFolder("d/my.folder");
    fTree.Write("d/my.file", "x");
    Start({"d/my.folder", "d/my.file", "d/gone"});

    fWorker->AskForPreview(Pattern("[N]+[E]"), true);

    WaitUntilIdle();
    const std::shared_ptr<const Preview> preview = fWorker->LastPreview();
    EXPECT_EQ(preview->names, (std::vector<std::string>{"my.folder+", "my+.file", "gone"}));
    EXPECT_EQ(preview->gone, 1u);
    EXPECT_GT((*preview->entries)[1].modified, 0);
}

TEST_F(RenameWorkerTest, KeepsTheNamesAfterEachRenaming)
{
    fTree.Write("d/a", "1");
    fTree.Write("d/b", "2");
    Start({"d/a", "d/b"});
    Rules rules;
    for (int round = 0; round < 5; round++) {
        rules.pattern = "[N]" + std::to_string(round);
        fWorker->AskToRename(rules);
        WaitUntilIdle();
        ASSERT_TRUE(fWorker->TakeReport().has_value());
    }
    EXPECT_EQ(fTree.List("d"), "a01234\nb01234\n");
    fWorker->AskToUndo();
    WaitUntilIdle();
    EXPECT_EQ(fTree.List("d"), "a0123\nb0123\n");
    fWorker->AskToUndo(); // there is but one
    WaitUntilIdle();
    EXPECT_EQ(fTree.List("d"), "a0123\nb0123\n");
}

TEST_F(RenameWorkerTest, DoesNothingAfterItsEnd)
{
    fTree.Write("d/a", "1");
    Start({"d/a"});
    fWorker->End();
    fWorker->AskToRename(Pattern("b"));
    fWorker->End();
    EXPECT_EQ(fTree.List("d"), "a\n");
}

} // namespace rename_many
