#include <String.h>

#include <gtest/gtest.h>

#include <cstring>
#include <utility>

TEST(StringTest, IsEmptyWhenNothingWasPutIn)
{
    const BString empty;
    const BString fromNull(static_cast<const char*>(nullptr));

    EXPECT_STREQ(empty.String(), "");
    EXPECT_EQ(empty.Length(), 0);
    EXPECT_TRUE(fromNull.IsEmpty());
}

TEST(StringTest, TakesAtMostTheGivenBytes)
{
    EXPECT_STREQ(BString("folder", 3).String(), "fol");
    EXPECT_STREQ(BString("folder", 30).String(), "folder");
    EXPECT_STREQ(BString("folder", 0).String(), "");
    EXPECT_STREQ(BString("folder", -1).String(), "");
}

TEST(StringTest, CopiesAreIndependent)
{
    BString original("one");
    BString copy(original);

    copy += " two";

    EXPECT_STREQ(original.String(), "one");
    EXPECT_STREQ(copy.String(), "one two");
}

TEST(StringTest, MovingLeavesAnEmptyText)
{
    BString from("text");
    BString to("older");

    to = std::move(from);

    EXPECT_STREQ(to.String(), "text");
    EXPECT_STREQ(from.String(), ""); // NOLINT(bugprone-use-after-move): that is what is tested
}

TEST(StringTest, AssignsAPartOfItself)
{
    BString text("abcdef");

    text = text.String() + 2;

    EXPECT_STREQ(text.String(), "cdef");
}

TEST(StringTest, AssignsItself)
{
    BString text("abc");
    BString& same = text;

    text = same;
    EXPECT_STREQ(text.String(), "abc");

    text.Adopt(same);
    EXPECT_STREQ(text.String(), "abc");
}

TEST(StringTest, AdoptTakesTheTextAway)
{
    BString from("abcdef");
    BString to("older");

    to.Adopt(from, 2);

    EXPECT_STREQ(to.String(), "ab");
    EXPECT_TRUE(from.IsEmpty());
}

TEST(StringTest, SetsToOneCharacterManyTimes)
{
    BString text;

    EXPECT_STREQ(text.SetTo('x', 3).String(), "xxx");
    EXPECT_STREQ(text.SetTo('x', 0).String(), "");
    EXPECT_STREQ(text.SetTo('x', -3).String(), "");
}

TEST(StringTest, FormatsArgumentsThatAreItsOwnText)
{
    BString text("left");

    text.SetToFormat("%s and %s (%d)", text.String(), "right", 7);

    EXPECT_STREQ(text.String(), "left and right (7)");
}

TEST(StringTest, CountsLettersOfSeveralBytesOnce)
{
    EXPECT_EQ(BString("a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x99\x82").CountChars(), 4);
    EXPECT_EQ(BString("").CountChars(), 0);
}

TEST(StringTest, InsertsAtAPlaceWithinTheText)
{
    BString text("ad");

    EXPECT_STREQ(text.Insert("bc", 1).String(), "abcd");
    EXPECT_STREQ(text.Insert("<<", -5).String(), "<<abcd");
    EXPECT_STREQ(text.Insert(">>", 500).String(), "<<abcd>>");
    EXPECT_STREQ(text.Insert("12345", 2, 0).String(), "12<<abcd>>");
    EXPECT_STREQ(text.Insert("12345", 3, 9, 0).String(), "4512<<abcd>>");
    EXPECT_STREQ(text.Insert('-', 2, 4).String(), "4512--<<abcd>>");
}

TEST(StringTest, AppendsAndPrependsPartsOfItself)
{
    BString text("ab");

    text.Append(text);
    EXPECT_STREQ(text.String(), "abab");

    text.Prepend(text.String() + 3);
    EXPECT_STREQ(text.String(), "babab");

    text.Append(text, 1);
    EXPECT_STREQ(text.String(), "bababb");
}

TEST(StringTest, GrowsLetterByLetter)
{
    BString text;

    for (int i = 0; i < 100000; i++) {
        text += static_cast<char>('a' + i % 26);
    }

    EXPECT_EQ(text.Length(), 100000);
    EXPECT_EQ(text.ByteAt(99999), 'a' + 99999 % 26);
    EXPECT_EQ(std::strlen(text.String()), 100000u);
}

TEST(StringTest, RemovesWithinBounds)
{
    BString text("abcdef");

    EXPECT_STREQ(text.Remove(1, 2).String(), "adef");
    EXPECT_STREQ(text.Remove(2, 100).String(), "ad");
    EXPECT_STREQ(text.Remove(5, 1).String(), "ad");
    EXPECT_STREQ(text.Remove(0, -1).String(), "ad");
}

TEST(StringTest, TruncatesOnlyToLess)
{
    BString text("abcdef");

    EXPECT_EQ(text.Truncate(10).Length(), 6);
    EXPECT_STREQ(text.Truncate(3, false).String(), "abc");
    EXPECT_STREQ(text.Truncate(-2).String(), "");
    EXPECT_STREQ(text.Truncate(0, false).String(), "");
}

TEST(StringTest, CopiesAndMovesParts)
{
    BString text("abcdef");
    BString part;

    text.CopyInto(part, 2, 2);
    EXPECT_STREQ(part.String(), "cd");

    text.MoveInto(part, 4, 100);
    EXPECT_STREQ(part.String(), "ef");
    EXPECT_STREQ(text.String(), "abcd");

    char buffer[4] = "---";
    text.MoveInto(buffer, 0, 2);
    EXPECT_STREQ(buffer, "ab-");
    EXPECT_STREQ(text.String(), "cd");
}

TEST(StringTest, ReadsBytesOutsideAsZero)
{
    const BString text("ab");

    EXPECT_EQ(text.ByteAt(1), 'b');
    EXPECT_EQ(text.ByteAt(2), '\0');
    EXPECT_EQ(text.ByteAt(-1), '\0');
    EXPECT_EQ(text[0], 'a');
}

TEST(StringTest, LendsItsBufferForWriting)
{
    BString text("abc");
    char* buffer = text.LockBuffer(10);
    ASSERT_NE(buffer, nullptr);
    EXPECT_STREQ(buffer, "abc");

    std::memcpy(buffer, "0123456789", 11);
    text.UnlockBuffer();
    EXPECT_STREQ(text.String(), "0123456789");

    text.LockBuffer(0);
    text.UnlockBuffer(4);
    EXPECT_STREQ(text.String(), "0123");
}

TEST(StringTest, LendsABufferOfAnEmptyText)
{
    BString text;
    BString other;

    text.LockBuffer(0)[0] = '\0';
    text.UnlockBuffer();

    EXPECT_STREQ(text.String(), "");
    EXPECT_STREQ(other.String(), "");
}

TEST(StringTest, UnlockNeverReadsBeyondTheBuffer)
{
    BString text;
    char* buffer = text.LockBuffer(15);
    std::memset(buffer, 'x', 16); // the closing zero, too

    text.UnlockBuffer(500);

    EXPECT_EQ(std::strlen(text.String()), static_cast<size_t>(text.Length()));
}

TEST(StringTest, WritesNumbersAsText)
{
    BString text;

    text << "a" << 'b' << BString("c") << int32{-5} << " " << uint32{4000000000u} << " "
         << int64{-5000000000} << " " << UINT64_MAX << " " << 2.345f;

    EXPECT_STREQ(text.String(), "abc-5 4000000000 -5000000000 18446744073709551615 2.35");
}

TEST(StringTest, PrependsTextsPartsAndBytes)
{
    BString text("end");

    text.Prepend(BString("b"));
    EXPECT_EQ(text, "bend");
    text.Prepend(BString("xyz"), 2);
    EXPECT_EQ(text, "xybend");
    text.Prepend("12345", 3);
    EXPECT_EQ(text, "123xybend");
    text.Prepend('-', 2);
    EXPECT_EQ(text, "--123xybend");
}

TEST(StringTest, AppendsAndInsertsPartsOfAnother)
{
    BString text("ad");
    text += BString("e");
    EXPECT_EQ(text, "ade");

    text.Insert(BString("xbcx"), 1, 2, 1);
    EXPECT_EQ(text, "abcde");
    text.Insert(BString("tail"), 2, 9, 99);
    EXPECT_EQ(text, "abcdeil");

    text = 'z';
    EXPECT_EQ(text, "z");
}
