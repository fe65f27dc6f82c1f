#include "HelperThreads.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <set>
#include <thread>

namespace norvane {

TEST(HelperThreadsTest, DoTheStepsThatAreThere)
{
    constexpr int kSteps = 1000;
    std::atomic<int> next{0};
    std::mutex mutex;
    std::set<int> done;
    std::set<thread_id> threads;
    {
        const HelperThreads helpers("helping", 3, [&] {
            const int step = next.fetch_add(1);
            if (step >= kSteps) {
                return false;
            }
            const std::lock_guard lock(mutex);
            done.insert(step);
            threads.insert(find_thread(nullptr));
            return true;
        });
    }
    EXPECT_EQ(done.size(), 1000U); // all, before the object ended
    EXPECT_FALSE(threads.contains(find_thread(nullptr)));
    EXPECT_LE(threads.size(), 3U);
}

TEST(HelperThreadsTest, StepsAreDoneSideBySide)
{
    std::atomic<int> waiting{0};
    const auto meet = [&waiting] { // returns only when both are here
        waiting.fetch_add(1);
        while (waiting < 2) {
            std::this_thread::yield();
        }
        return false;
    };
    const HelperThreads helpers("helping", 1, meet);
    EXPECT_FALSE(meet());
}

TEST(HelperThreadsTest, AreNoMoreThanThereIsToDo)
{
    EXPECT_EQ(HelperThreads::CountFor(0), 0U);
    EXPECT_EQ(HelperThreads::CountFor(1), 0U);
    EXPECT_LE(HelperThreads::CountFor(2), 1U);
    EXPECT_LE(HelperThreads::CountFor(1000), 7U);
    EXPECT_LT(HelperThreads::CountFor(1000), std::max(2U, std::thread::hardware_concurrency()));
}

} // namespace norvane
