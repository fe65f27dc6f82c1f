#include <Message.h>
#include <Rect.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace {

std::vector<std::string> Names(const BMessage& message, type_code type = B_ANY_TYPE)
{
    std::vector<std::string> names;
    const char* name = nullptr;
    type_code found = 0;
    for (int32 i = 0; message.GetInfo(type, i, &name, &found) == B_OK; i++) {
        names.emplace_back(name);
    }
    return names;
}

using NameList = std::vector<std::string>;

} // namespace

TEST(MessageTest, FindsValuesOfEveryTypeAgain)
{
    BMessage message('test');
    int object = 0;
    message.AddBool("bool", true);
    message.AddInt8("int8", -8);
    message.AddInt16("int16", -1600);
    message.AddInt32("int32", std::numeric_limits<int32>::min());
    message.AddInt64("int64", std::numeric_limits<int64>::max());
    message.AddFloat("float", 1.5f);
    message.AddDouble("double", -2.25);
    message.AddString("string", "text");
    message.AddPoint("point", BPoint(1, 2));
    message.AddRect("rect", BRect(1, 2, 3, 4));
    message.AddPointer("pointer", &object);

    EXPECT_TRUE(message.GetBool("bool"));
    int8 byte = 0;
    EXPECT_EQ(message.FindInt8("int8", &byte), B_OK);
    EXPECT_EQ(byte, -8);
    int16 small = 0;
    EXPECT_EQ(message.FindInt16("int16", &small), B_OK);
    EXPECT_EQ(small, -1600);
    EXPECT_EQ(message.GetInt32("int32", 0), std::numeric_limits<int32>::min());
    EXPECT_EQ(message.GetInt64("int64", 0), std::numeric_limits<int64>::max());
    EXPECT_EQ(message.GetFloat("float", 0), 1.5f);
    double wide = 0;
    EXPECT_EQ(message.FindDouble("double", &wide), B_OK);
    EXPECT_EQ(wide, -2.25);
    BString text;
    EXPECT_EQ(message.FindString("string", &text), B_OK);
    EXPECT_EQ(text, "text");
    BPoint point;
    EXPECT_EQ(message.FindPoint("point", &point), B_OK);
    EXPECT_EQ(point, BPoint(1, 2));
    BRect rect;
    EXPECT_EQ(message.FindRect("rect", &rect), B_OK);
    EXPECT_EQ(rect, BRect(1, 2, 3, 4));
    void* pointer = nullptr;
    EXPECT_EQ(message.FindPointer("pointer", &pointer), B_OK);
    EXPECT_EQ(pointer, &object);
}

TEST(MessageTest, KeepsSeveralValuesOfAName)
{
    BMessage message;
    for (int32 i = 0; i < 1000; i++) {
        ASSERT_EQ(message.AddInt32("number", i), B_OK);
        ASSERT_EQ(message.AddString("text", std::string(static_cast<size_t>(i % 50), 'x').c_str()),
                  B_OK);
    }

    int32 count = 0;
    type_code type = 0;
    EXPECT_EQ(message.GetInfo("number", &type, &count), B_OK);
    EXPECT_EQ(count, 1000);
    EXPECT_EQ(type, B_INT32_TYPE);
    for (int32 i = 0; i < 1000; i++) {
        ASSERT_EQ(message.GetInt32("number", i, -1), i);
        ASSERT_EQ(BString(message.GetString("text", i, nullptr)).Length(), i % 50);
    }
}

TEST(MessageTest, SaysWhyNothingWasFound)
{
    BMessage message;
    message.AddInt32("number", 5);
    int32 number = 9;

    EXPECT_EQ(message.FindInt32("other", &number), B_NAME_NOT_FOUND);
    EXPECT_EQ(number, 0);
    EXPECT_EQ(message.FindInt32(nullptr, &number), B_NAME_NOT_FOUND);
    EXPECT_EQ(message.FindInt32("number", 1, &number), B_BAD_INDEX);
    EXPECT_EQ(message.FindInt32("number", -1, &number), B_BAD_INDEX);
    EXPECT_EQ(message.FindInt32("number", nullptr), B_BAD_VALUE);
    float real = 9;
    EXPECT_EQ(message.FindFloat("number", &real), B_BAD_TYPE);
    EXPECT_EQ(real, 0);
    const char* text = "";
    EXPECT_EQ(message.FindString("number", &text), B_BAD_TYPE);
    EXPECT_EQ(text, nullptr);
    BRect rect(0, 0, 5, 5);
    EXPECT_EQ(message.FindRect("number", &rect), B_BAD_TYPE);
    EXPECT_FALSE(rect.IsValid());
    EXPECT_EQ(message.GetInt32("other", 17), 17);
    EXPECT_STREQ(message.GetString("other", "fallback"), "fallback");
}

TEST(MessageTest, RefusesAnotherTypeUnderAName)
{
    BMessage message;
    message.AddInt32("name", 5);

    EXPECT_EQ(message.AddString("name", "text"), B_BAD_TYPE);
    EXPECT_EQ(message.AddInt32(nullptr, 5), B_BAD_VALUE);
    EXPECT_EQ(message.AddInt32(std::string(256, 'n').c_str(), 5), B_BAD_VALUE);
    EXPECT_EQ(message.AddInt32(std::string(255, 'n').c_str(), 5), B_OK);
    EXPECT_EQ(message.AddString("text", static_cast<const char*>(nullptr)), B_BAD_VALUE);

    EXPECT_EQ(message.CountNames(B_ANY_TYPE), 2);
}

TEST(MessageTest, KeepsNamesInTheOrderOfAdding)
{
    BMessage message;
    message.AddInt32("b", 1);
    message.AddString("a", "x");
    message.AddInt32("c", 2);
    message.AddInt32("b", 3);

    EXPECT_EQ(Names(message), (NameList{"b", "a", "c"}));
    EXPECT_EQ(Names(message, B_INT32_TYPE), (NameList{"b", "c"}));
    EXPECT_EQ(message.CountNames(B_INT32_TYPE), 2);
    char* name = nullptr;
    type_code type = 0;
    int32 count = 0;
    EXPECT_EQ(message.GetInfo(B_INT32_TYPE, 0, &name, &type, &count), B_OK);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(message.GetInfo(B_INT32_TYPE, 2, &name, &type, &count), B_BAD_INDEX);
    EXPECT_EQ(message.GetInfo(B_FLOAT_TYPE, 0, &name, &type, &count), B_BAD_TYPE);
    EXPECT_EQ(name, nullptr);
}

TEST(MessageTest, RemovesValuesAndNames)
{
    BMessage message;
    for (const char* text : {"one", "a longer text", "three"}) {
        message.AddString("text", text);
    }
    message.AddInt32("number", 1);

    EXPECT_EQ(message.RemoveData("text", 1), B_OK);
    EXPECT_STREQ(message.GetString("text", 0, nullptr), "one");
    EXPECT_STREQ(message.GetString("text", 1, nullptr), "three");
    EXPECT_EQ(message.RemoveData("text", 2), B_BAD_INDEX);
    EXPECT_EQ(message.RemoveData("nothing"), B_NAME_NOT_FOUND);

    EXPECT_EQ(message.RemoveData("number"), B_OK);
    EXPECT_FALSE(message.HasInt32("number"));
    EXPECT_EQ(message.RemoveName("number"), B_NAME_NOT_FOUND);
    EXPECT_EQ(message.RemoveName("text"), B_OK);
    EXPECT_TRUE(message.IsEmpty());
}

TEST(MessageTest, ReplacesInPlace)
{
    BMessage message;
    for (const char* text : {"one", "two", "three"}) {
        message.AddString("text", text);
    }
    message.AddInt32("number", 1);
    message.AddInt32("number", 2);

    EXPECT_EQ(message.ReplaceString("text", 1, "something much longer"), B_OK);
    EXPECT_EQ(message.ReplaceString("text", "1"), B_OK);
    EXPECT_EQ(message.ReplaceInt32("number", 1, 20), B_OK);
    EXPECT_EQ(message.ReplaceInt32("number", 2, 30), B_BAD_INDEX);
    EXPECT_EQ(message.ReplaceInt32("text", 5), B_BAD_TYPE);
    EXPECT_EQ(message.ReplaceInt32("other", 5), B_NAME_NOT_FOUND);

    EXPECT_STREQ(message.GetString("text", 0, nullptr), "1");
    EXPECT_STREQ(message.GetString("text", 1, nullptr), "something much longer");
    EXPECT_STREQ(message.GetString("text", 2, nullptr), "three");
    EXPECT_EQ(message.GetInt32("number", 0, 0), 1);
    EXPECT_EQ(message.GetInt32("number", 1, 0), 20);
}

TEST(MessageTest, RenamesAndReplacesWhatHadTheName)
{
    BMessage message;
    message.AddInt32("old", 1);
    message.AddString("new", "gone");

    EXPECT_EQ(message.Rename("old", "new"), B_OK);
    EXPECT_EQ(message.Rename("old", "new"), B_NAME_NOT_FOUND);
    EXPECT_EQ(message.Rename("new", nullptr), B_BAD_VALUE);
    EXPECT_EQ(message.Rename("new", "new"), B_OK);

    EXPECT_EQ(Names(message), NameList{"new"});
    EXPECT_EQ(message.GetInt32("new", 0), 1);
}

TEST(MessageTest, KeepsItsDataWhenItIsAssignedToItself)
{
    BMessage message('self');
    message.AddInt32("number", 1);
    const BMessage& same = message;

    message = same;

    EXPECT_EQ(message.GetInt32("number", 0), 1);
}

TEST(MessageTest, CopiesChangeApart)
{
    BMessage original('orig');
    original.AddInt32("number", 1);
    BMessage copy(original);
    BMessage assigned;
    assigned.AddString("other", "x");
    assigned = original;

    copy.ReplaceInt32("number", 2);
    assigned.RemoveName("number");
    original.AddInt32("number", 3);

    EXPECT_EQ(original.GetInt32("number", 0, 0), 1);
    EXPECT_EQ(original.GetInt32("number", 1, 0), 3);
    EXPECT_EQ(copy.GetInt32("number", 0), 2);
    EXPECT_FALSE(copy.HasInt32("number", 1));
    EXPECT_TRUE(assigned.IsEmpty());
    EXPECT_EQ(assigned.what, uint32{'orig'});
}

TEST(MessageTest, MovesItsData)
{
    BMessage from('from');
    from.AddInt32("number", 1);

    BMessage to(std::move(from));

    EXPECT_EQ(to.GetInt32("number", 0), 1);
    EXPECT_TRUE(from.IsEmpty()); // NOLINT(bugprone-use-after-move): that is what is tested
}

TEST(MessageTest, TakesValuesThatItLendsItself)
{
    BMessage message;
    message.AddString("text", "a text that is longer than sixteen bytes");
    const BMessage holder(message);

    for (int i = 0; i < 20; i++) {
        ASSERT_EQ(message.AddString("text", message.GetString("text")), B_OK);
        ASSERT_EQ(message.ReplaceString("text", 0, message.GetString("text") + 1), B_OK);
    }

    EXPECT_STREQ(message.GetString("text"), "r than sixteen bytes");
    EXPECT_STREQ(holder.GetString("text"), "a text that is longer than sixteen bytes");
}

TEST(MessageTest, KeepsMessagesInside)
{
    BMessage inner('innr');
    inner.AddString("text", "deep");
    BMessage middle('midd');
    middle.AddMessage("inner", &inner);
    BMessage outer('outr');
    outer.AddMessage("middle", &middle);

    BMessage found;
    EXPECT_EQ(outer.FindMessage("middle", &found), B_OK);
    EXPECT_EQ(found.what, uint32{'midd'});
    EXPECT_EQ(found.FindMessage("inner", &found), B_OK);
    EXPECT_STREQ(found.GetString("text"), "deep");
    EXPECT_EQ(outer.AddMessage("middle", nullptr), B_BAD_VALUE);
    EXPECT_EQ(outer.FindMessage("nothing", &found), B_NAME_NOT_FOUND);
    EXPECT_TRUE(found.IsEmpty());
}

TEST(MessageTest, KeepsRawDataOfOneOrManySizes)
{
    BMessage message;
    EXPECT_EQ(message.AddData("fixed", B_RAW_TYPE, "abc", 3), B_OK);
    EXPECT_EQ(message.AddData("fixed", B_RAW_TYPE, "abcd", 4), B_BAD_VALUE);
    EXPECT_EQ(message.AddData("free", B_RAW_TYPE, "abc", 3, false, 10), B_OK);
    EXPECT_EQ(message.AddData("free", B_RAW_TYPE, nullptr, 0, false), B_OK);
    EXPECT_EQ(message.AddData("free", B_RAW_TYPE, nullptr, 1, false), B_BAD_VALUE);
    EXPECT_EQ(message.AddData("free", B_RAW_TYPE, "x", -1, false), B_BAD_VALUE);

    const void* data = nullptr;
    ssize_t size = 0;
    EXPECT_EQ(message.FindData("free", B_ANY_TYPE, 0, &data, &size), B_OK);
    EXPECT_EQ(std::string(static_cast<const char*>(data), static_cast<size_t>(size)), "abc");
    EXPECT_EQ(message.FindData("free", B_RAW_TYPE, 1, &data, &size), B_OK);
    EXPECT_EQ(size, 0);
    bool isFixedSize = true;
    type_code type = 0;
    EXPECT_EQ(message.GetInfo("free", &type, &isFixedSize), B_OK);
    EXPECT_FALSE(isFixedSize);
}

TEST(MessageTest, TakesNoTextFromBytesWithoutAnEnd)
{
    BMessage message;
    message.AddData("open", B_STRING_TYPE, "abc", 3, false);
    message.AddData("short", B_INT32_TYPE, "abc", 3);

    const char* text = "";
    EXPECT_EQ(message.FindString("open", &text), B_BAD_VALUE);
    EXPECT_EQ(text, nullptr);
    int32 number = 5;
    EXPECT_EQ(message.FindInt32("short", &number), B_BAD_VALUE);
    EXPECT_EQ(number, 0);
}

TEST(MessageTest, KnowsTheSystemsCodes)
{
    EXPECT_TRUE(BMessage(B_QUIT_REQUESTED).IsSystem());
    EXPECT_FALSE(BMessage(B_SIMPLE_DATA).IsSystem());
    EXPECT_FALSE(BMessage().IsSystem());
}

TEST(MessageTest, PrintsWhatItHolds)
{
    BMessage message(B_QUIT_REQUESTED);
    message.AddInt32("number", 5);
    message.AddInt32("number", -6);
    message.AddString("text", "hello");
    message.AddData("bytes", B_RAW_TYPE, "\x01\xff", 2);
    ::testing::internal::CaptureStdout();

    message.PrintToStream();

    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "BMessage('_QRQ')\n"
                                                        "    'LONG' \"number\" = 5, -6\n"
                                                        "    'CSTR' \"text\" = \"hello\"\n"
                                                        "    'RAWT' \"bytes\" = 2 bytes 01 ff\n");
}
