#include "storage/FolderListing.h"
#include "storage/UniqueFd.h"

#include <Entry.h>
#include <TreeHooks.h>

#include <TempTree.h>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <dirent.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <mutex>
#include <string>
#include <thread>

namespace {

constexpr int kFolders = 24;

/// Holds a helper thread back in one folder until the walk is stopped, which is done by the thread
/// that began it when there is nothing else left to do.
class BlockingHooks : public BTreeHooks
{
public:
    explicit BlockingHooks(std::function<bool()> isAllElseDone)
        : fIsAllElseDone(std::move(isAllElseDone))
    {
    }

    bool IsStopped() const override
    {
        return std::this_thread::get_id() == fOwner ? AskedByOwner() : AskedByHelper();
    }

    bool WasHelperBlocked() const { return fBlocked != std::thread::id(); }
    bool WasStopped() const { return fIsStopped; }

private:
    bool AskedByOwner() const
    {
        std::unique_lock<std::mutex> lock(fMutex);
        // Once the top folder was visited there are helpers: one shall have a folder.
        if (++fOwnerAsked == kFolders + 6) {
            fChanged.wait_for(lock, std::chrono::seconds(10),
                              [this] { return WasHelperBlocked(); });
        }
        if (fIsAllElseDone()) {
            fIsStopped = true;
            fChanged.notify_all();
        }
        return fIsStopped;
    }

    bool AskedByHelper() const
    {
        std::unique_lock<std::mutex> lock(fMutex);
        const std::thread::id me = std::this_thread::get_id();
        if (!WasHelperBlocked()) {
            fBlocked = me;
        }
        if (fBlocked == me) {
            fChanged.notify_all();
            fChanged.wait_for(lock, std::chrono::seconds(20), [this] { return fIsStopped; });
        }
        return fIsStopped;
    }

    const std::thread::id fOwner = std::this_thread::get_id();
    const std::function<bool()> fIsAllElseDone;
    mutable std::mutex fMutex;
    mutable std::condition_variable fChanged;
    mutable std::thread::id fBlocked;
    mutable int fOwnerAsked = 0;
    mutable bool fIsStopped = false;
};

} // namespace

TEST(TreeWalkStopTest, TheOwnerSeesAStopWhileAHelperIsBusy)
{
    TempTree tree;
    for (int i = 0; i < kFolders; ++i) {
        tree.Write("top/" + std::to_string(i) + "/file", "x");
    }
    const std::string top = tree.Path("top");
    const BlockingHooks hooks([&top] {
        int left = 0;
        if (DIR* folder = opendir(top.c_str())) {
            while (readdir(folder) != nullptr) {
                ++left;
            }
            closedir(folder);
        }
        return left <= 3; // itself, the one above, and the helper's
    });

    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(BEntry(top.c_str()).RemoveTree(const_cast<BlockingHooks*>(&hooks)), B_CANCELED);
    const auto took = std::chrono::steady_clock::now() - start;

    EXPECT_TRUE(hooks.WasHelperBlocked());
    EXPECT_TRUE(hooks.WasStopped());
    EXPECT_LT(took, std::chrono::seconds(15));
    EXPECT_TRUE(tree.Exists("top"));
}

TEST(TreeWalkStopTest, AListingEndsWhenItIsStopped)
{
    TempTree tree;
    constexpr int kFiles = 6'000; // more than are read at once
    for (int i = 0; i < kFiles; ++i) {
        tree.Write("a file with a name of some length " + std::to_string(i), "");
    }
    const kits::UniqueFd folder(open(tree.Path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    kits::FolderListing listing;
    int asked = 0;

    EXPECT_EQ(listing.Read(folder.Get(), [&asked] { return ++asked == 2; }), B_CANCELED);

    EXPECT_EQ(asked, 2);
    EXPECT_GT(listing.Items().size(), 0u);
    EXPECT_LT(listing.Items().size(), size_t(kFiles));
    EXPECT_EQ(listing.Read(folder.Get(), [] { return false; }), B_OK);
    EXPECT_EQ(listing.Items().size(), size_t(kFiles));
}
