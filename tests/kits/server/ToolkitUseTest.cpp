#include "server/ToolkitUse.h"

#include "ApplicationEnvironment.h"

#include <atomic>
#include <future>
#include <memory>

namespace {

using kits::ToolkitUse;

// The one toolkit of this program stays as it is: afterwards it is open again.
class ToolkitUseTest : public ::testing::Test
{
protected:
    void TearDown() override { ToolkitUse::Open(); }
};

TEST_F(ToolkitUseTest, IsThereWhileAnApplicationRuns)
{
    const ToolkitUse use;

    EXPECT_TRUE(static_cast<bool>(use));
    EXPECT_FALSE(ToolkitUse::IsEnding());
}

TEST_F(ToolkitUseTest, EndWaitsForWhoUsesIt)
{
    auto use = std::make_unique<ToolkitUse>();
    std::atomic<bool> isClosed = false;
    const std::future<void> closing = std::async(std::launch::async, [&] {
        ToolkitUse::Close();
        isClosed = true;
    });
    ASSERT_TRUE(kits::testing::WaitFor([] { return ToolkitUse::IsEnding(); }));

    EXPECT_FALSE(isClosed);
    use.reset();

    EXPECT_TRUE(kits::testing::WaitFor([&] { return isClosed.load(); }));
}

TEST_F(ToolkitUseTest, NobodyBeginsWhenItIsAboutToGo)
{
    ToolkitUse::Close();

    EXPECT_FALSE(static_cast<bool>(ToolkitUse()));
}

TEST_F(ToolkitUseTest, EndDoesNotWaitForEver)
{
    const ToolkitUse use;

    ToolkitUse::Close();

    EXPECT_TRUE(ToolkitUse::IsEnding());
}

} // namespace
