#include <String.h>

#include <gtest/gtest.h>

TEST(StringSearchTest, ComparesByteByByte)
{
    EXPECT_LT(BString("abc").Compare("abd"), 0);
    EXPECT_GT(BString("b").Compare("abc"), 0);
    EXPECT_LT(BString("ab").Compare(BString("abc")), 0);
    EXPECT_EQ(BString("abx").Compare("aby", 2), 0);
    EXPECT_EQ(BString("").Compare(nullptr), 0);
    EXPECT_GT(BString("\xFF").Compare("a"), 0);
}

TEST(StringSearchTest, IgnoresTheCaseOfAsciiLettersOnly)
{
    EXPECT_EQ(BString("ReadMe").ICompare("readme"), 0);
    EXPECT_NE(BString("ReadMe").Compare("readme"), 0);
    EXPECT_LT(BString("A").ICompare("b"), 0);
    EXPECT_GT(BString("C").ICompare("b"), 0);
    EXPECT_EQ(BString("ABx").ICompare("aby", 2), 0);
    EXPECT_NE(BString("\xC3\x84").ICompare("\xC3\xA4"), 0);
}

TEST(StringSearchTest, OrdersByOperators)
{
    const BString a("a");
    const BString b("b");

    EXPECT_TRUE(a == "a" && "a" == a && a != b && a != "b" && "b" != a);
    EXPECT_TRUE(a < b && a < "b" && "a" < b && a <= b && a <= "a" && "a" <= a);
    EXPECT_TRUE(b > a && b > "a" && "b" > a && b >= a && b >= "b" && "b" >= b);
    EXPECT_FALSE(a == b || a > b || a >= b || b < a || b <= a);
}

TEST(StringSearchTest, FindsFromTheFront)
{
    const BString text("abcabc");

    EXPECT_EQ(text.FindFirst("bc"), 1);
    EXPECT_EQ(text.FindFirst("bc", 2), 4);
    EXPECT_EQ(text.FindFirst(BString("x")), B_ERROR);
    EXPECT_EQ(text.FindFirst('c'), 2);
    EXPECT_EQ(text.FindFirst('c', 3), 5);
    EXPECT_EQ(text.FindFirst("abc", 7), B_ERROR);
    EXPECT_EQ(text.FindFirst("abc", -1), B_ERROR);
}

TEST(StringSearchTest, FindsFromTheBack)
{
    const BString text("abcabc");

    EXPECT_EQ(text.FindLast("bc"), 4);
    EXPECT_EQ(text.FindLast("bc", 5), 1);
    EXPECT_EQ(text.FindLast("bc", 6), 4);
    EXPECT_EQ(text.FindLast('a'), 3);
    EXPECT_EQ(text.FindLast('a', 3), 0);
    EXPECT_EQ(text.FindLast("x"), B_ERROR);
}

TEST(StringSearchTest, FindsWithoutRegardToCase)
{
    const BString text("Some TEXT text");

    EXPECT_EQ(text.IFindFirst("text"), 5);
    EXPECT_EQ(text.IFindFirst("TEXT", 6), 10);
    EXPECT_EQ(text.IFindLast("TEXT"), 10);
    EXPECT_EQ(text.IFindLast("some", 13), 0);
    EXPECT_EQ(text.IFindFirst("nothing"), B_ERROR);
    EXPECT_EQ(text.IFindLast("nothing"), B_ERROR);
}

TEST(StringSearchTest, ReplacesCharacters)
{
    BString text("a/b/c/d");

    EXPECT_STREQ(text.ReplaceFirst('/', ':').String(), "a:b/c/d");
    EXPECT_STREQ(text.ReplaceLast('/', ':').String(), "a:b/c:d");
    EXPECT_STREQ(text.ReplaceAll(':', '.').String(), "a.b/c.d");
    EXPECT_STREQ(text.Replace('.', '-', 1, 2).String(), "a.b/c-d");
}

TEST(StringSearchTest, ReplacesTexts)
{
    BString text("one two one two");

    EXPECT_STREQ(text.ReplaceFirst("one", "three").String(), "three two one two");
    EXPECT_STREQ(text.ReplaceLast("two", "").String(), "three two one ");
    EXPECT_STREQ(text.ReplaceAll("e", "ee").String(), "threeee two onee ");
    EXPECT_STREQ(text.Replace("ee", "x", 1, 4).String(), "threxe two onee ");
    EXPECT_STREQ(text.ReplaceAll("", "y").String(), "threxe two onee ");
    EXPECT_STREQ(text.IReplaceAll("O", "0").String(), "threxe tw0 0nee ");
    EXPECT_STREQ(text.IReplaceLast("NEE", "!").String(), "threxe tw0 0! ");
    EXPECT_STREQ(text.IReplaceFirst("THR", "").String(), "exe tw0 0! ");
}

TEST(StringSearchTest, ReplacesByAPartOfItself)
{
    BString text("ab-cd");

    text.ReplaceFirst("-", text.String());

    EXPECT_STREQ(text.String(), "abab-cdcd");
}

TEST(StringSearchTest, RemovesWhatItFinds)
{
    BString text("xaxbxc");

    EXPECT_STREQ(text.RemoveFirst("x").String(), "axbxc");
    EXPECT_STREQ(text.RemoveLast("x").String(), "axbc");
    EXPECT_STREQ(text.RemoveAll("x").String(), "abc");
    EXPECT_STREQ(text.RemoveFirst("").String(), "abc");
    EXPECT_STREQ(text.RemoveSet("ca").String(), "b");
    EXPECT_STREQ(text.RemoveSet(nullptr).String(), "b");
}

TEST(StringSearchTest, ReplacesSetsOfBytes)
{
    BString letters("a, b;c");
    BString runs("a, b;c");

    EXPECT_STREQ(letters.ReplaceSet(",; ", '_').String(), "a__b_c");
    EXPECT_STREQ(runs.ReplaceSet(",; ", "--").String(), "a--b--c");
}

TEST(StringSearchTest, ChangesCase)
{
    BString text("hELLO wide-WORLD \xC3\x84x");

    EXPECT_STREQ(BString(text).ToLower().String(), "hello wide-world \xC3\x84x");
    EXPECT_STREQ(BString(text).ToUpper().String(), "HELLO WIDE-WORLD \xC3\x84X");
    EXPECT_STREQ(BString(text).Capitalize().String(), "Hello wide-world \xC3\x84x");
    EXPECT_STREQ(text.CapitalizeEachWord().String(), "Hello Wide-World \xC3\x84x");
    EXPECT_STREQ(BString().Capitalize().String(), "");
}

TEST(StringSearchTest, EscapesAndTakesEscapesAway)
{
    BString text("a b\\c");

    EXPECT_STREQ(text.CharacterEscape(" \\", '\\').String(), "a\\ b\\\\c");
    EXPECT_STREQ(text.CharacterDeescape('\\').String(), "a b\\c");
    EXPECT_STREQ(text.CharacterEscape("x'y", "'", '\\').String(), "x\\'y");
    EXPECT_STREQ(text.CharacterDeescape("end\\", '\\').String(), "end\\");
}

TEST(StringSearchTest, ComparesTheFirstBytesWithoutRegardToCase)
{
    const BString text("Readme.TXT");

    EXPECT_EQ(text.ICompare(BString("README.md"), 7), 0);
    EXPECT_GT(text.ICompare(BString("README.md"), 8), 0);
    EXPECT_EQ(text.ICompare(BString(""), 0), 0);
}
