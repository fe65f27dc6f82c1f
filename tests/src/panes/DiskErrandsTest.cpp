#include "panes/DiskErrands.h"

#include "NoThreads.h"

#include <OS.h>
#include <testing/Driver.h>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace {

using namespace norvane;
using kits::testing::WaitFor;

TEST(DiskErrandsTest, DoesAll)
{
    const auto done = std::make_shared<std::atomic<int>>(0);
    for (int i = 0; i < 500; i++) {
        DiskErrands::Get().Do([done] { ++*done; });
    }
    EXPECT_TRUE(WaitFor([&] { return *done == 500; }));
}

TEST(DiskErrandsTest, OneThatIsHeldHoldsNoOther)
{
    const auto isHeld = std::make_shared<std::atomic<bool>>(true);
    const auto done = std::make_shared<std::atomic<int>>(0);
    for (int i = 0; i < 3; i++) {
        DiskErrands::Get().Do([isHeld] {
            while (*isHeld) {
                snooze(1000);
            }
        });
        snooze(150'000); // by then it may be held for ever
    }
    DiskErrands::Get().Do([done] { ++*done; });
    EXPECT_TRUE(WaitFor([&] { return *done == 1; }));
    *isHeld = false;
}

TEST(DiskErrandsTest, WithoutAThreadTheCallerDoesIt)
{
    bool isDone = false;
    std::thread::id by;
    {
        const NoThreads none;
        DiskErrands::Get().Do([&] {
            by = std::this_thread::get_id();
            isDone = true;
        });
    }
    EXPECT_TRUE(isDone);
    EXPECT_EQ(by, std::this_thread::get_id());
}

} // namespace
