#include "server/EventClock.h"

#include <gtest/gtest.h>

namespace {

using kits::EventClock;

constexpr bigtime_t kMinute = 60'000'000;

// The events' clock began 5,000 ms before ours.
constexpr uint64 kBegin = 5'000;

/// An event of a moment of our clock, taken so much later.
bigtime_t TimeOf(EventClock& clock, bigtime_t when, bigtime_t delay)
{
    return clock.TimeOf(kBegin + static_cast<uint64>(when / 1000), when + delay);
}

} // namespace

TEST(EventClockTest, TellsWhenALateEventHappened)
{
    EventClock clock;
    TimeOf(clock, 1'000'000, 300);

    const bigtime_t time = TimeOf(clock, 1'500'000, 700'000);

    EXPECT_GE(time, 1'500'000);
    EXPECT_LE(time, 1'502'000);
}

TEST(EventClockTest, IsNeverTooEarlyForRoundedEvents)
{
    EventClock clock;
    TimeOf(clock, 1'000'000, 0);

    EXPECT_GE(TimeOf(clock, 1'500'999, 1'000), 1'500'999);
}

TEST(EventClockTest, IsNeverLaterThanTheEventWasTaken)
{
    EventClock clock;

    EXPECT_EQ(TimeOf(clock, 1'000'000, 300), 1'000'300);
    EXPECT_EQ(TimeOf(clock, 2'000'000, 300), 2'000'300);
}

TEST(EventClockTest, TakesTheFirstEventAsItComesAndLearnsFromTheNext)
{
    EventClock clock;
    EXPECT_EQ(TimeOf(clock, 1'000'000, 400'000), 1'400'000);
    TimeOf(clock, 2'000'000, 300);

    EXPECT_LE(TimeOf(clock, 3'000'000, 400'000), 3'002'000);
}

TEST(EventClockTest, NeverGoesBack)
{
    EventClock clock;
    TimeOf(clock, 1'000'000, 300);
    const bigtime_t untold = clock.TimeOf(0, 3'000'000); // which may have happened before

    EXPECT_EQ(TimeOf(clock, 2'900'000, 100'500), untold);
}

TEST(EventClockTest, TakesAnEventThatTellsNoTimeAsItComes)
{
    EventClock clock;
    TimeOf(clock, 1'000'000, 300);

    EXPECT_EQ(clock.TimeOf(0, 3'000'000), 3'000'000);
}

TEST(EventClockTest, FollowsAClockThatRunsSlower)
{
    EventClock clock;
    bigtime_t time = 0;
    const bigtime_t kEnd = 30 * kMinute;

    // A second lost in half an hour.
    for (bigtime_t when = 0; when <= kEnd; when += 1'000'000) {
        const bigtime_t own = when - when / 1800;
        time = clock.TimeOf(kBegin + static_cast<uint64>(own / 1000), when);
    }

    EXPECT_GE(time, kEnd - 100'000);
    EXPECT_LE(time, kEnd);
}

TEST(EventClockTest, BeginsAnewWithAClockThatDoes)
{
    EventClock clock;
    clock.TimeOf(4'294'967'000, 1'000'000);

    EXPECT_EQ(clock.TimeOf(100, 1'500'000), 1'500'000);
}

TEST(EventClockTest, ForgetsWhatItSawLongAgo)
{
    EventClock clock;
    clock.TimeOf(kBegin, 0);

    // In an hour without events the clocks went two seconds apart.
    EXPECT_EQ(clock.TimeOf(kBegin + 3'598'000, 60 * kMinute), 60 * kMinute);
}
