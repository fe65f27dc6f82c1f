#include "fileops/engine/OperationProgress.h"

#include <gtest/gtest.h>

namespace norvane {

constexpr bigtime_t kSecond = 1'000'000;

TEST(OperationProgressTest, CountsFileAndWhole)
{
    OperationProgress progress;
    progress.Start(5'000'000'000, 0);
    progress.StartFile(3'000'000'000);
    progress.Add(3'000'000'000);
    progress.StartFile(2'000'000'000);
    progress.Add(500'000'000);
    EXPECT_EQ(progress.FileDoneBytes(), 500'000'000);
    EXPECT_EQ(progress.DoneBytes(), 3'500'000'000);
    EXPECT_EQ(progress.Percent(), 70);
}

TEST(OperationProgressTest, TitleStartsAsGiven)
{
    OperationProgress progress;
    EXPECT_EQ(progress.Title("Copy", 0), "Copy");
    progress.Start(100, 0);
    EXPECT_EQ(progress.Title("Copy", 10 * kSecond), "Copy");
}

TEST(OperationProgressTest, TellsTheTimeLeftOnlyAfterThreeSeconds)
{
    OperationProgress progress;
    progress.Start(100, 0);
    progress.Add(42);
    EXPECT_EQ(progress.Title("Copy", 2 * kSecond), "Copy - 42 %");
    EXPECT_EQ(progress.Title("Copy", 42 * kSecond), "Copy - 42 %, 58 s left");
    EXPECT_EQ(progress.Title("Copy", 84 * kSecond), "Copy - 42 %, 2 min left");
    EXPECT_EQ(progress.Title("Copy", 8400 * kSecond), "Copy - 42 %, 3 h left");
}

TEST(OperationProgressTest, NeverPassesTheEnd)
{
    OperationProgress progress;
    progress.Start(10, 0);
    progress.Add(25);
    EXPECT_EQ(progress.Percent(), 100);
    EXPECT_EQ(progress.Title("Copy", 5 * kSecond), "Copy - 100 %");
}

TEST(OperationProgressTest, SaysHundredOnlyWhenAllIsDone)
{
    OperationProgress progress;
    progress.Start(1'000'000, 0);
    progress.Add(999'999);
    EXPECT_EQ(progress.Percent(), 99);
}

TEST(OperationProgressTest, WhatWasMovedCountsWithoutBeingCopied)
{
    OperationProgress progress;
    progress.Start(1000, 0);
    progress.AdvanceTo(400);
    EXPECT_EQ(progress.Title("Delete", 0), "Delete - 40 %");
    progress.AdvanceTo(300); // some of it was copied, and has been counted
    EXPECT_EQ(progress.DoneBytes(), 400);
}

TEST(OperationProgressTest, ADeletionCountsEntries)
{
    OperationProgress progress;
    progress.AddEntries(7); // while measuring
    progress.Start(1000, 0);
    progress.StartEntries(200);
    EXPECT_EQ(progress.Title("Delete", 0), "Delete");
    progress.AddEntries(50);
    EXPECT_EQ(progress.Percent(), 25);
    EXPECT_EQ(progress.DoneBytes(), 250); // so that the bar stands at the same share
    EXPECT_EQ(progress.TimeLeft(4'000'000), 12'000'000);
    progress.AddEntries(500);
    EXPECT_EQ(progress.Percent(), 100);
}

} // namespace norvane
