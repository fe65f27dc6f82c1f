#include "panes/TypeAhead.h"

#include "RowFixture.h"

namespace {

using namespace norvane;

class TypeAheadTest : public RowFixture
{
protected:
    int32 Type(const std::string& typed, int32 selected)
    {
        return FindByFirstCharacter(*this, typed.c_str(), static_cast<int32>(typed.size()),
                                    selected);
    }
};

TEST_F(TypeAheadTest, WalksFromOneRowToTheNextAndWraps)
{
    for (const char* name : {"apple", "bean", "Berry", "cherry"}) {
        Add(name);
    }
    EXPECT_EQ(Type("b", -1), 1);
    EXPECT_EQ(Type("b", 1), 2);
    EXPECT_EQ(Type("b", 2), 1);
    EXPECT_EQ(Type("B", 0), 1);
    EXPECT_EQ(Type("c", 3), 3);
    EXPECT_EQ(Type("x", 0), -1);
}

TEST_F(TypeAheadTest, StartsAtTheTopFromTheLastRow)
{
    Add("b1");
    Add("b2");
    EXPECT_EQ(Type("b", 1), 0);
}

TEST_F(TypeAheadTest, StartsAtTheTopFromARowOfAnotherLetter)
{
    Add("b1");
    Add("c");
    Add("b2");
    EXPECT_EQ(Type("b", 1), 0);
}

TEST_F(TypeAheadTest, FoldsTheCaseOfEveryScript)
{
    AddParent();
    Add("Ärger");
    Add("жук");
    Add(".hidden");
    EXPECT_EQ(Type("ä", -1), 1);
    EXPECT_EQ(Type("Ж", -1), 2);
    EXPECT_EQ(Type(".", -1), 0);
    EXPECT_EQ(Type(".", 0), 3);
}

TEST_F(TypeAheadTest, StepsOverNamesThatAreNoText)
{
    Add("\xff\xfe");
    Add("");
    Add("a");
    EXPECT_EQ(Type("a", -1), 2);
    EXPECT_EQ(Type("\xff", -1), -1);
}

TEST_F(TypeAheadTest, FindsNothingInAnEmptyList)
{
    EXPECT_EQ(Type("a", -1), -1);
}

TEST(TypeAheadKeyTest, TakesLettersDigitsAndTheDot)
{
    for (const char* key : {"a", "Z", "0", ".", "ö", "я", "中", "ß"}) {
        EXPECT_TRUE(IsTypeAheadKey(key, static_cast<int32>(std::string(key).size()))) << key;
    }
    for (const char* key : {" ", "-", "*", "\n", "\x1b", "\x7f", "€", "\xc3", ""}) {
        EXPECT_FALSE(IsTypeAheadKey(key, static_cast<int32>(std::string(key).size()))) << key;
    }
}

} // namespace
