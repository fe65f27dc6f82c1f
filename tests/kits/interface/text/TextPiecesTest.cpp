#include <interface/text/TextBuffer.h>
#include <interface/text/TextCutting.h>
#include <interface/text/TextPieces.h>

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace kits {

namespace {

constexpr int32 kMostPiece = TextPieces::kPieceBytes * 2;

class TextPiecesTest : public ::testing::Test
{
protected:
    void SetText(const std::string& text)
    {
        fText.SetText(text);
        fPieces.Clear();
    }
    void Replace(int32 from, int32 to, const std::string& inserted)
    {
        fText.Replace(from, to, inserted);
        fPieces.TextReplaced(from, to - from, static_cast<int32>(inserted.size()));
    }
    /// The pieces of a line are all of it, in order, none of them too long; empty when it is short.
    ::testing::AssertionResult IsWellCut(int32 line)
    {
        const int32 start = fText.LineStart(line);
        const int32 end = fText.LineEnd(line);
        const std::span<TextPiece> pieces = fPieces.Of(line);
        if (end - start <= TextPieces::kWholeBytes) {
            return pieces.empty() ? ::testing::AssertionSuccess()
                                  : ::testing::AssertionFailure() << "cut at " << start;
        }
        if (pieces.empty() || pieces.front().start != start) {
            return ::testing::AssertionFailure() << "no piece at " << start;
        }
        for (size_t i = 0; i < pieces.size(); ++i) {
            const int32 next = i + 1 < pieces.size() ? pieces[i + 1].start : end;
            if (next <= pieces[i].start || next - pieces[i].start > kMostPiece) {
                return ::testing::AssertionFailure()
                       << "piece from " << pieces[i].start << " to " << next;
            }
        }
        return ::testing::AssertionSuccess();
    }

    TextBuffer fText;
    TextPieces fPieces{fText};
};

std::string Family()
{
    // Four people, joined to be seen as one character.
    return "\xf0\x9f\x91\xa8\xe2\x80\x8d\xf0\x9f\x91\xa9\xe2\x80\x8d\xf0\x9f\x91\xa7\xe2\x80\x8d"
           "\xf0\x9f\x91\xa6";
}

} // namespace

struct CutCase
{
    const char* name;
    std::string before; // of these, three hundred bytes
    std::string around; // the place that is wanted is inside
    int32 wanted;       // in `around`
    int32 cut;
};

class SafeCutTest : public ::testing::TestWithParam<CutCase>
{
};

TEST_P(SafeCutTest, HarmsNothing)
{
    std::string line;
    while (line.size() < 300) {
        line += GetParam().before;
    }
    const int32 length = static_cast<int32>(line.size());
    line += GetParam().around + std::string(100, 'z');

    EXPECT_EQ(SafeCut(line, length + GetParam().wanted), length + GetParam().cut);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, SafeCutTest,
    ::testing::Values(
        CutCase{"BetweenLetters", "a", "bcd", 2, 2}, CutCase{"BehindABlank", "a", "b cd", 3, 2},
        CutCase{"InAWord", "a", "b cd", 2, 2}, CutCase{"InACharacter", "a", "\xc3\xa9", 1, 0},
        CutCase{"InAnEmoji", "a", "b\xf0\x9f\x98\x80", 3, 1},
        CutCase{"BeforeAnAccent", "a", "be\xcc\x81\xcc\x82", 2, 1}, // e, two accents
        CutCase{"BetweenAccents", "a", "be\xcc\x81\xcc\x82", 4, 1},
        CutCase{"BeforeABlanksAccent", "a", "b \xcc\x81", 2, 1}, // an accent of the blank
        CutCase{"BehindTheFirstOfAFamily", "a", Family(), 4, 0},
        CutCase{"InAFamily", "a", Family(), 14, 0},
        CutCase{"BetweenFamilies", Family(), Family(), 11, 0},
        CutCase{"BetweenBytes", "a", "\xff\xfe\xfd", 2, 2},
        CutCase{"BytesBeforeAnAccent", "\xff", "\xff\xc3\xa9", 2, 1},
        CutCase{"RightToLeft", "\xd7\x90", "\xd7\x91 \xd7\x92", 4, 3}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(TextPiecesTest, ShortLinesStayWhole)
{
    SetText(std::string(TextPieces::kWholeBytes, 'a') + "\n" +
            std::string(TextPieces::kWholeBytes + 1, 'b'));

    EXPECT_TRUE(fPieces.Of(0).empty());
    EXPECT_GE(fPieces.Of(1).size(), 2u);
    EXPECT_TRUE(IsWellCut(1));
}

TEST_F(TextPiecesTest, ChangesLeavePiecesElsewhereAlone)
{
    SetText(std::string(100'000, 'a'));
    for (TextPiece& piece : fPieces.Of(0)) {
        piece.width = 7;
    }

    Replace(50'000, 50'000, "b");

    EXPECT_TRUE(IsWellCut(0));
    int32 unknown = 0;
    for (const TextPiece& piece : fPieces.Of(0)) {
        unknown += piece.width < 0 ? 1 : 0;
    }
    EXPECT_GT(unknown, 0);
    EXPECT_LE(unknown, 3);
}

TEST_F(TextPiecesTest, ABorderMovesWhenItsCharacterGrows)
{
    SetText(std::string(10'000, 'a'));
    const int32 border = fPieces.Of(0)[1].start;

    Replace(border, border, "\xcc\x81"); // an accent for the letter before it

    EXPECT_TRUE(IsWellCut(0));
    for (const TextPiece& piece : fPieces.Of(0)) {
        EXPECT_NE(piece.start, border);
    }
}

TEST_F(TextPiecesTest, TypingDoesNotMakePiecesLongOrMany)
{
    SetText(std::string(10'000, 'a'));
    ASSERT_TRUE(IsWellCut(0));
    for (int32 i = 0; i < 10'000; ++i) {
        Replace(5000 + i, 5000 + i, "b");
    }
    EXPECT_TRUE(IsWellCut(0));
    EXPECT_LE(fPieces.Of(0).size(), 25u);

    for (int32 i = 0; i < 15'000; ++i) {
        Replace(3000, 3001, "");
    }
    EXPECT_TRUE(IsWellCut(0));
    EXPECT_LE(fPieces.Of(0).size(), 6u);
}

TEST_F(TextPiecesTest, FollowsChangesOfManyKinds)
{
    std::mt19937 random(11);
    const auto below = [&random](int32 limit) {
        return static_cast<int32>(random() % static_cast<uint32>(limit));
    };
    const std::string parts[] = {"",
                                 "x",
                                 "\n",
                                 "word \xc3\xa9",
                                 std::string(3000, 'y'),
                                 std::string(9000, 'z') + "\n",
                                 "\n" + std::string(5000, 'u')};
    SetText(std::string(30'000, 'a') + "\n" + std::string(30'000, 'b'));
    for (int32 round = 0; round < 3000; ++round) {
        const int32 from = fText.Clamp(below(fText.Length() + 1));
        const int32 most = std::min(fText.Length() - from, below(4) == 0 ? 20'000 : 4);
        const int32 to = fText.Clamp(from + below(most + 1));
        Replace(from, std::max(from, to), parts[below(7)]);
        // Asking cuts a line: not all of them at each round.
        const int32 line = below(fText.CountLines());
        ASSERT_TRUE(IsWellCut(line)) << "round " << round;
    }
    for (int32 line = 0; line < fText.CountLines(); ++line) {
        EXPECT_TRUE(IsWellCut(line));
    }
}

} // namespace kits
