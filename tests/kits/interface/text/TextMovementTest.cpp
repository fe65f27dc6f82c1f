#include <interface/text/TextBuffer.h>
#include <interface/text/TextMovement.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kits {

namespace {

using Places = std::vector<int32>;

Places WalkBack(const TextBuffer& text, int32 (TextMovement::*step)(int32) const)
{
    const TextMovement movement(text);
    Places places;
    for (int32 at = text.Length(); at > 0 && places.size() < 100;) {
        at = (movement.*step)(at);
        places.push_back(at);
    }
    return places;
}

Places WalkOn(const TextBuffer& text, int32 (TextMovement::*step)(int32) const)
{
    const TextMovement movement(text);
    Places places;
    for (int32 at = 0; at < text.Length() && places.size() < 100;) {
        at = (movement.*step)(at);
        places.push_back(at);
    }
    return places;
}

class Buffer : public TextBuffer
{
public:
    explicit Buffer(const char* text) { SetText(text); }
};

} // namespace

TEST(TextMovementTest, GoesByWhatIsSeenAsOneCharacter)
{
    // e and a combining accent; a family of four joined people; a stray byte.
    const Buffer text("ae\xcc\x81"
                      "\xf0\x9f\x91\xa8\xe2\x80\x8d\xf0\x9f\x91\xa9\xff"
                      "z");

    EXPECT_EQ(WalkOn(text, &TextMovement::NextCharacter), (Places{1, 4, 15, 16, 17}));
    EXPECT_EQ(WalkBack(text, &TextMovement::PreviousCharacter), (Places{16, 15, 4, 1, 0}));
}

TEST(TextMovementTest, CrossesLineBreaks)
{
    const Buffer text("a\n\nb");

    EXPECT_EQ(WalkOn(text, &TextMovement::NextCharacter), (Places{1, 2, 3, 4}));
    EXPECT_EQ(WalkBack(text, &TextMovement::PreviousCharacter), (Places{3, 2, 1, 0}));
}

TEST(TextMovementTest, WordsAreReachedAtTheirBeginning)
{
    const Buffer text("one, two  x\nlast");

    EXPECT_EQ(WalkOn(text, &TextMovement::NextWord), (Places{5, 10, 11, 12, 16}));
    EXPECT_EQ(WalkBack(text, &TextMovement::PreviousWord), (Places{12, 11, 10, 5, 0}));
}

TEST(TextMovementTest, PathsAreWalkedByTheirParts)
{
    const Buffer text("/home/my files");

    EXPECT_EQ(WalkOn(text, &TextMovement::NextWord), (Places{1, 6, 9, 14}));
}

TEST(TextMovementTest, StaysAtTheEnds)
{
    const Buffer text("ab");
    const TextMovement movement(text);

    EXPECT_EQ(movement.NextCharacter(2), 2);
    EXPECT_EQ(movement.NextWord(2), 2);
    EXPECT_EQ(movement.PreviousCharacter(0), 0);
    EXPECT_EQ(movement.PreviousWord(0), 0);
    const TextBuffer empty;
    EXPECT_EQ(TextMovement(empty).NextWord(0), 0);
}

struct WordCase
{
    const char* name;
    const char* text;
    int32 offset;
    int32 from;
    int32 to;
};

class TextWordTest : public ::testing::TestWithParam<WordCase>
{
};

TEST_P(TextWordTest, IsFoundAtItsOffset)
{
    const Buffer text(GetParam().text);
    int32 from = -1;
    int32 to = -1;
    TextMovement(text).GetWord(GetParam().offset, &from, &to);

    EXPECT_EQ(from, GetParam().from);
    EXPECT_EQ(to, GetParam().to);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, TextWordTest,
    ::testing::Values(WordCase{"InTheFirst", "one two", 1, 0, 3},
                      WordCase{"AtTheFirst", "one two", 0, 0, 3},
                      WordCase{"AtTheSecond", "one two", 4, 4, 7},
                      WordCase{"AtTheEnd", "one two", 7, 4, 7},
                      WordCase{"OnTheBlank", "one two", 3, 3, 4},
                      WordCase{"InNothing", "", 0, 0, 0}, WordCase{"InALine", "a\nword\n", 4, 2, 6},
                      WordCase{"BehindALineFeed", "a\nword\n", 7, 7, 7},
                      WordCase{"AroundALongCharacter", "na\xc3\xafve so", 3, 0, 6}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(TextMovementTest, LineIncludesItsBreak)
{
    const Buffer text("ab\ncd");
    int32 from = -1;
    int32 to = -1;
    TextMovement(text).GetLine(1, &from, &to);
    EXPECT_EQ(from, 0);
    EXPECT_EQ(to, 3);

    TextMovement(text).GetLine(5, &from, &to);
    EXPECT_EQ(from, 3);
    EXPECT_EQ(to, 5);
}

} // namespace kits
