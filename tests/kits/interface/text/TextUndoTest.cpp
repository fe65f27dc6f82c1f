#include <interface/text/TextUndo.h>

#include <gtest/gtest.h>

namespace kits {

namespace {

/// A text that is changed only through what is recorded.
class TextUndoTest : public ::testing::Test
{
protected:
    void Change(int32 offset, int32 removed, const std::string& inserted, TextAction action)
    {
        const auto from = static_cast<size_t>(offset);
        const auto count = static_cast<size_t>(removed);
        fUndo.Record(
            {{offset, fText.substr(from, count), inserted}, action, offset, offset + removed});
        fText.replace(from, count, inserted);
    }
    void Type(const std::string& text)
    {
        for (const char letter : text) {
            Change(static_cast<int32>(fText.size()), 0, std::string(1, letter),
                   TextAction::kTyping);
        }
    }
    void EraseBack() { Change(static_cast<int32>(fText.size()) - 1, 1, "", TextAction::kErasing); }

    void Undo()
    {
        const TextChange& change = fUndo.TakeBack().change;
        fText.replace(static_cast<size_t>(change.offset), change.inserted.size(), change.removed);
    }
    void Redo()
    {
        const TextChange& change = fUndo.DoAgain().change;
        fText.replace(static_cast<size_t>(change.offset), change.removed.size(), change.inserted);
    }

    TextUndo fUndo;
    std::string fText;
};

} // namespace

TEST_F(TextUndoTest, TypingIsTakenBackWordByWord)
{
    Type("one two three");

    Undo();
    EXPECT_EQ(fText, "one two ");
    Undo();
    EXPECT_EQ(fText, "one ");
    Undo();
    EXPECT_EQ(fText, "");
    EXPECT_FALSE(fUndo.CanUndo());

    Redo();
    Redo();
    EXPECT_EQ(fText, "one two ");
    Redo();
    EXPECT_EQ(fText, "one two three");
    EXPECT_FALSE(fUndo.CanRedo());
}

TEST_F(TextUndoTest, MovingTheCaretEndsARun)
{
    Type("ab");
    fUndo.EndRun();
    Type("cd");

    Undo();

    EXPECT_EQ(fText, "ab");
}

TEST_F(TextUndoTest, TypingElsewhereIsAStepOfItsOwn)
{
    Type("ab");
    Change(0, 0, "x", TextAction::kTyping);

    Undo();

    EXPECT_EQ(fText, "ab");
}

TEST_F(TextUndoTest, TouchingDeletionsAreOneStep)
{
    Type("abcdef");
    EraseBack();
    EraseBack();
    Change(0, 1, "", TextAction::kErasing); // elsewhere
    Change(0, 1, "", TextAction::kErasing);
    EXPECT_EQ(fText, "cd");

    Undo();
    EXPECT_EQ(fText, "abcd");
    Undo();
    EXPECT_EQ(fText, "abcdef");
}

TEST_F(TextUndoTest, TypingOverASelectionBringsItBack)
{
    Type("abc");
    Change(1, 2, "x", TextAction::kTyping);
    Change(2, 0, "y", TextAction::kTyping);
    EXPECT_EQ(fText, "axy");

    Undo();

    EXPECT_EQ(fText, "abc");
}

TEST_F(TextUndoTest, PastesAreNeverJoined)
{
    Change(0, 0, "a", TextAction::kPasting);
    Change(1, 0, "b", TextAction::kPasting);

    Undo();

    EXPECT_EQ(fText, "a");
}

TEST_F(TextUndoTest, AChangeForgetsWhatWasTakenBack)
{
    Type("ab");
    Undo();
    Type("c");

    EXPECT_FALSE(fUndo.CanRedo());
    Undo();
    EXPECT_EQ(fText, "");
}

TEST_F(TextUndoTest, TypingAfterUndoIsNotJoinedWithWhatStandsBeforeIt)
{
    Type("one two");
    Undo();
    Type("x");
    EXPECT_EQ(fText, "one x");

    Undo();
    EXPECT_EQ(fText, "one ");
}

TEST_F(TextUndoTest, OldStepsAreForgotten)
{
    for (int i = 0; i < 3000; ++i) {
        Change(0, 0, "a", TextAction::kPasting);
    }
    int steps = 0;
    for (; fUndo.CanUndo(); ++steps) {
        Undo();
    }
    EXPECT_EQ(steps, 2000);
}

} // namespace kits
