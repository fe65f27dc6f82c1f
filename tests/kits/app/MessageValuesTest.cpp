#include <Message.h>
#include <Messenger.h>
#include <Rect.h>

#include "RecordingLooper.h"

#include <gtest/gtest.h>

#include <string>

// Each type by the calls that name no index, and what they say when there is nothing to replace.

namespace {

/// A name with two values of a type, the first replaced by a third through the call without index.
struct Replacement
{
    const char* name;
    type_code type;
    void (*add)(BMessage& message);
    status_t (*replace)(BMessage& message);
    bool (*isReplaced)(const BMessage& message, int32 index);
};

int gObject = 0;

BMessage Coded(uint32 what)
{
    return BMessage(what);
}

const Replacement kReplacements[] = {
    {"bool", B_BOOL_TYPE,
     [](BMessage& m) {
         m.AddBool("x", false);
         m.AddBool("x", false);
     },
     [](BMessage& m) { return m.ReplaceBool("x", true); },
     [](const BMessage& m, int32 i) {
         return m.GetBool("x", i, false);
     }},
    {"int8", B_INT8_TYPE,
     [](BMessage& m) {
         m.AddInt8("x", 1);
         m.AddInt8("x", 1);
     },
     [](BMessage& m) { return m.ReplaceInt8("x", -3); },
     [](const BMessage& m, int32 i) {
         int8 value = 0;
         m.FindInt8("x", i, &value);
         return value == -3;
     }},
    {"int16", B_INT16_TYPE,
     [](BMessage& m) {
         m.AddInt16("x", 1);
         m.AddInt16("x", 1);
     },
     [](BMessage& m) { return m.ReplaceInt16("x", -300); },
     [](const BMessage& m, int32 i) {
         int16 value = 0;
         m.FindInt16("x", i, &value);
         return value == -300;
     }},
    {"int64", B_INT64_TYPE,
     [](BMessage& m) {
         m.AddInt64("x", 1);
         m.AddInt64("x", 1);
     },
     [](BMessage& m) { return m.ReplaceInt64("x", INT64_MIN); },
     [](const BMessage& m, int32 i) {
         return m.GetInt64("x", i, 0) == INT64_MIN;
     }},
    {"float", B_FLOAT_TYPE,
     [](BMessage& m) {
         m.AddFloat("x", 1);
         m.AddFloat("x", 1);
     },
     [](BMessage& m) { return m.ReplaceFloat("x", 2.5f); },
     [](const BMessage& m, int32 i) {
         return m.GetFloat("x", i, 0) == 2.5f;
     }},
    {"double", B_DOUBLE_TYPE,
     [](BMessage& m) {
         m.AddDouble("x", 1);
         m.AddDouble("x", 1);
     },
     [](BMessage& m) { return m.ReplaceDouble("x", -0.25); },
     [](const BMessage& m, int32 i) {
         double value = 0;
         m.FindDouble("x", i, &value);
         return value == -0.25;
     }},
    {"point", B_POINT_TYPE,
     [](BMessage& m) {
         m.AddPoint("x", BPoint(1, 1));
         m.AddPoint("x", BPoint(1, 1));
     },
     [](BMessage& m) { return m.ReplacePoint("x", BPoint(3, 4)); },
     [](const BMessage& m, int32 i) {
         BPoint value;
         m.FindPoint("x", i, &value);
         return value == BPoint(3, 4);
     }},
    {"rect", B_RECT_TYPE,
     [](BMessage& m) {
         m.AddRect("x", BRect(1, 1, 1, 1));
         m.AddRect("x", BRect(1, 1, 1, 1));
     },
     [](BMessage& m) { return m.ReplaceRect("x", BRect(1, 2, 3, 4)); },
     [](const BMessage& m, int32 i) {
         BRect value;
         m.FindRect("x", i, &value);
         return value == BRect(1, 2, 3, 4);
     }},
    {"pointer", B_POINTER_TYPE,
     [](BMessage& m) {
         m.AddPointer("x", nullptr);
         m.AddPointer("x", nullptr);
     },
     [](BMessage& m) { return m.ReplacePointer("x", &gObject); },
     [](const BMessage& m, int32 i) {
         void* value = nullptr;
         m.FindPointer("x", i, &value);
         return value == &gObject;
     }},
    {"message", B_MESSAGE_TYPE,
     [](BMessage& m) {
         const BMessage one = Coded('one ');
         m.AddMessage("x", &one);
         m.AddMessage("x", &one);
     },
     [](BMessage& m) {
         BMessage other = Coded('othr');
         other.AddString("text", "longer than what was there");
         return m.ReplaceMessage("x", &other);
     },
     [](const BMessage& m, int32 i) {
         BMessage value;
         m.FindMessage("x", i, &value);
         return value.what == 'othr' && value.HasString("text");
     }},
    {"raw", B_RAW_TYPE,
     [](BMessage& m) {
         m.AddData("x", B_RAW_TYPE, "ab", 2);
         m.AddData("x", B_RAW_TYPE, "ab", 2);
     },
     [](BMessage& m) { return m.ReplaceData("x", B_RAW_TYPE, "cd", 2); },
     [](const BMessage& m, int32 i) {
         const void* data = nullptr;
         ssize_t size = 0;
         m.FindData("x", B_RAW_TYPE, i, &data, &size);
         return size == 2 && std::string(static_cast<const char*>(data), 2) == "cd";
     }},
};

class MessageReplacementTest : public ::testing::TestWithParam<Replacement>
{
};

TEST_P(MessageReplacementTest, ReplacesTheFirstValueAlone)
{
    BMessage message;
    GetParam().add(message);

    EXPECT_EQ(GetParam().replace(message), B_OK);

    EXPECT_TRUE(GetParam().isReplaced(message, 0));
    EXPECT_FALSE(GetParam().isReplaced(message, 1));
    EXPECT_TRUE(message.HasData("x", GetParam().type, 1));
    EXPECT_FALSE(message.HasData("x", GetParam().type, 2));
}

TEST_P(MessageReplacementTest, ReplacesNothingOfAnotherTypeOrName)
{
    BMessage message;
    EXPECT_EQ(GetParam().replace(message), B_NAME_NOT_FOUND);
    EXPECT_TRUE(message.IsEmpty());

    message.AddString("x", "text");
    EXPECT_EQ(GetParam().replace(message), B_BAD_TYPE);
    EXPECT_STREQ(message.GetString("x"), "text");
    EXPECT_FALSE(message.HasData("x", GetParam().type));
}

INSTANTIATE_TEST_SUITE_P(Types, MessageReplacementTest, ::testing::ValuesIn(kReplacements),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST(MessageValuesTest, KeepsMessengersByTheirTarget)
{
    Record record;
    auto* looper = new RecordingLooper(record);
    looper->Run();
    BMessage message;
    EXPECT_EQ(message.AddMessenger("to", BMessenger()), B_OK);
    EXPECT_EQ(message.ReplaceMessenger("to", BMessenger(looper)), B_OK);

    BMessenger found;
    EXPECT_EQ(message.FindMessenger("to", &found), B_OK);
    EXPECT_EQ(found.SendMessage('sent'), B_OK);
    EXPECT_TRUE(record.Await());

    EndLooper(looper);
    EXPECT_EQ(message.FindMessenger("to", &found), B_OK);
    EXPECT_FALSE(found.IsValid());
    EXPECT_EQ(message.FindMessenger("other", &found), B_NAME_NOT_FOUND);
}

TEST(MessageValuesTest, TakesTextsOfBothKinds)
{
    BMessage message;

    EXPECT_EQ(message.AddString("text", BString("first")), B_OK);
    EXPECT_EQ(message.AddString("text", "second"), B_OK);

    EXPECT_STREQ(message.GetString("text", 0, ""), "first");
    EXPECT_STREQ(message.GetString("text", 1, ""), "second");
}

TEST(MessageValuesTest, MovingByAssignmentDropsWhatWasThere)
{
    BMessage from('from');
    from.AddInt32("number", 1);
    BMessage to('to  ');
    to.AddInt32("other", 2);

    to = std::move(from);

    EXPECT_EQ(to.what, uint32('from'));
    EXPECT_EQ(to.GetInt32("number", 0), 1);
    EXPECT_FALSE(to.HasInt32("other"));
    EXPECT_TRUE(from.IsEmpty()); // NOLINT(bugprone-use-after-move): the header says so
}

TEST(MessageValuesTest, WasDroppedNowhereUnlessItWasDropped)
{
    const BMessage message;
    BPoint offset(1, 1);

    EXPECT_FALSE(message.WasDropped());
    EXPECT_EQ(message.DropPoint(&offset), BPoint());
    EXPECT_EQ(offset, BPoint());
}

} // namespace
