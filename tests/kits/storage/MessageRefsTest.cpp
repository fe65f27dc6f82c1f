#include <Entry.h>
#include <Message.h>

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

namespace {

/// The bytes of a ref as a message holds them, with a name that may be no name.
void AddBytes(BMessage& message, const char* name, size_t nameBytes)
{
    char bytes[64] = {};
    std::memcpy(bytes + 16, name, nameBytes);
    message.AddData("refs", B_REF_TYPE, bytes, static_cast<ssize_t>(16 + nameBytes), false);
}

} // namespace

TEST(MessageRefsTest, FindsRefsAgain)
{
    const entry_ref first(std::numeric_limits<dev_t>::max(), std::numeric_limits<ino_t>::max(),
                          "a");
    const entry_ref second(1, 2, "a longer name\nwith a line break and \xFF");
    BMessage message;

    EXPECT_EQ(message.AddRef("refs", &first), B_OK);
    EXPECT_EQ(message.AddRef("refs", &second), B_OK);

    entry_ref found;
    EXPECT_EQ(message.FindRef("refs", &found), B_OK);
    EXPECT_EQ(found, first);
    EXPECT_EQ(message.FindRef("refs", 1, &found), B_OK);
    EXPECT_EQ(found, second);
    EXPECT_TRUE(message.HasRef("refs", 1));
    EXPECT_FALSE(message.HasRef("refs", 2));
}

TEST(MessageRefsTest, ReplacesInPlace)
{
    const entry_ref first(1, 2, "first");
    const entry_ref second(3, 4, "a second one with a longer name");
    BMessage message;
    message.AddRef("refs", &first);
    message.AddRef("refs", &first);

    EXPECT_EQ(message.ReplaceRef("refs", &second), B_OK);
    EXPECT_EQ(message.ReplaceRef("refs", 2, &second), B_BAD_INDEX);

    entry_ref found;
    EXPECT_EQ(message.FindRef("refs", 0, &found), B_OK);
    EXPECT_EQ(found, second);
    EXPECT_EQ(message.FindRef("refs", 1, &found), B_OK);
    EXPECT_EQ(found, first);
}

TEST(MessageRefsTest, TakesNoRefWithoutAName)
{
    const entry_ref nameless;
    BMessage message;

    EXPECT_EQ(message.AddRef("refs", &nameless), B_BAD_VALUE);
    EXPECT_EQ(message.AddRef("refs", nullptr), B_BAD_VALUE);

    EXPECT_TRUE(message.IsEmpty());
}

TEST(MessageRefsTest, FindsNoRefInBytesThatAreNone)
{
    BMessage message;
    AddBytes(message, "", 0);
    AddBytes(message, "", 1);
    AddBytes(message, "open", 4);
    AddBytes(message, "a/b", 4);
    AddBytes(message, "a\0b", 4);
    AddBytes(message, "good", 5);

    for (int32 i = 0; i < 5; i++) {
        entry_ref found(1, 2, "older");
        EXPECT_EQ(message.FindRef("refs", i, &found), B_BAD_VALUE) << "value " << i;
        EXPECT_EQ(found, entry_ref()) << "value " << i;
    }
    entry_ref found;
    EXPECT_EQ(message.FindRef("refs", 5, &found), B_OK);
    EXPECT_STREQ(found.name, "good");
}
