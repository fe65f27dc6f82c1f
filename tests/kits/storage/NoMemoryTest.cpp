#include "NoMemory.h"

#include <Directory.h>
#include <Entry.h>
#include <EntryBatch.h>
#include <TreeHooks.h>

#include <TempTree.h>
#include <atomic>
#include <gtest/gtest.h>
#include <string>

namespace {

/// Counts without asking for memory.
class CountingHooks : public BTreeHooks
{
public:
    int failed = 0;
    bool checks = false;

    void Failed(const char*, status_t) override { ++failed; }
    bool ChecksEntries() const override { return checks; }
};

// Enough folders for helper threads.
constexpr int kFolders = 12;

class NoMemoryTest : public testing::TestWithParam<NoMemory::Times>
{
protected:
    void MakeTree()
    {
        for (int i = 0; i < kFolders; ++i) {
            fTree.Write("top/" + std::to_string(i) + "/a name that is too long to be kept in place",
                        "12345");
        }
    }

    TempTree fTree;
};

} // namespace

TEST_P(NoMemoryTest, EndsARemovalAndIsTold)
{
    bool isRefused = true;
    for (int after = 0; isRefused; ++after) {
        MakeTree();
        BEntry top(fTree.Path("top").c_str());
        CountingHooks hooks;
        hooks.checks = after % 2 == 0;
        status_t status = B_OK;
        {
            const NoMemory none(after, GetParam());
            status = top.RemoveTree(&hooks);
            isRefused = NoMemory::CountRefused() > 0;
        }
        ASSERT_EQ(status == B_OK, !fTree.Exists("top")) << after;
        ASSERT_TRUE(status == B_OK || (status == B_NO_MEMORY && hooks.failed > 0))
            << after << " said " << status << ", told " << hooks.failed;
        ASSERT_LT(after, 10'000);
    }
}

TEST_P(NoMemoryTest, EndsAMeasuring)
{
    MakeTree();
    const BEntry top(fTree.Path("top").c_str());
    bool isRefused = true;
    for (int after = 0; isRefused; ++after) {
        int64 bytes = 0;
        status_t status = B_OK;
        {
            const NoMemory none(after, GetParam());
            status = top.MeasureTree(&bytes);
            isRefused = NoMemory::CountRefused() > 0;
        }
        ASSERT_TRUE(status == B_OK || status == B_NO_MEMORY) << after;
        ASSERT_TRUE(status != B_OK || bytes == 5 * kFolders) << after << " gave " << bytes;
        ASSERT_LT(after, 10'000);
    }
}

INSTANTIATE_TEST_SUITE_P(Times, NoMemoryTest,
                         testing::Values(NoMemory::Times::kOnce, NoMemory::Times::kAlways),
                         [](const auto& tested) {
                             return std::string(tested.param == NoMemory::Times::kOnce ? "Once"
                                                                                       : "Always");
                         });

TEST(NoMemoryListTest, TellsThatAFolderIsTooLarge)
{
    TempTree tree;
    for (int i = 0; i < 100; ++i) {
        tree.Write("f" + std::to_string(i), "");
    }
    const BDirectory folder(tree.Path().c_str());
    bool isRefused = true;
    for (int after = 1; isRefused; ++after) { // the batch itself is there
        BEntryBatch batch;
        status_t status = B_OK;
        {
            const NoMemory none(after);
            status = batch.SetTo(folder);
            isRefused = NoMemory::CountRefused() > 0;
        }
        ASSERT_EQ(status, isRefused ? B_NO_MEMORY : B_OK) << after;
        ASSERT_EQ(batch.CountItems(), isRefused ? 0 : 100);
    }
}
