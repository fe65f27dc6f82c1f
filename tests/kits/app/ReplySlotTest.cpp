#include "app/ReplySlot.h"

#include <Message.h>
#include <OS.h>

#include <gtest/gtest.h>

namespace {

using kits::ReplySlot;

constexpr bigtime_t kNow = 0;

TEST(ReplySlotTest, WhatSettlesItFirstCounts)
{
    ReplySlot slot;

    slot.Answer(std::make_unique<BMessage>(1));
    slot.Answer(std::make_unique<BMessage>(2));
    slot.Fail(B_BAD_PORT_ID);

    BMessage reply;
    EXPECT_EQ(slot.Wait(&reply, kNow), B_OK);
    EXPECT_EQ(reply.what, 1u);
}

TEST(ReplySlotTest, TimesOutWhenNobodySettlesIt)
{
    ReplySlot slot;

    BMessage reply(3);
    EXPECT_EQ(slot.Wait(&reply, system_time() + 1000), B_TIMED_OUT);
    EXPECT_EQ(reply.what, 3u);
}

TEST(ReplySlotTest, TellsOnceThatItIsSettled)
{
    int told = 0;
    ReplySlot slot([&told] { ++told; });

    slot.Fail(B_BAD_PORT_ID);
    slot.Answer(std::make_unique<BMessage>(1));

    EXPECT_EQ(told, 1);
}

TEST(ReplySlotTest, WhoeverIsToldFindsTheAnswer)
{
    BMessage reply;
    status_t found = B_ERROR;
    ReplySlot* asked = nullptr;
    ReplySlot slot([&] { found = asked->Wait(&reply, kNow); });
    asked = &slot;

    slot.Answer(std::make_unique<BMessage>(1));

    EXPECT_EQ(found, B_OK);
    EXPECT_EQ(reply.what, 1u);
}

} // namespace
