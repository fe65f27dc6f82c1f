#include "TextViewFixture.h"

#include <Clipboard.h>
#include <Message.h>
#include <ScrollBar.h>
#include <TypeConstants.h>

#include <string>
#include <vector>

namespace {

using namespace kits::testing;

using TextViewTest = TextViewFixture;

TEST_F(TextViewTest, TypedTextGoesToTheCaret)
{
    ShowText("name");

    TypeText("my ");
    TypeKey(B_END);
    TypeText("s");

    EXPECT_EQ(Text(), "my names");
    EXPECT_EQ(Selection(), "8-8");
}

TEST_F(TextViewTest, TypedTextReplacesTheSelection)
{
    ShowText("one two");
    Select(0, 3);

    TypeText("x");

    EXPECT_EQ(Text(), "x two");
}

TEST_F(TextViewTest, EnterAndTabAreText)
{
    ShowText("");

    TypeText("a");
    TypeKey(B_ENTER);
    TypeKey(B_TAB);
    TypeText("b");

    EXPECT_EQ(Text(), "a\n\tb");
}

TEST_F(TextViewTest, ErasesByCharacterAndByWord)
{
    ShowText("one two three");
    TypeKey(B_END);

    TypeKey(B_BACKSPACE);
    EXPECT_EQ(Text(), "one two thre");
    TypeKey(B_BACKSPACE, B_COMMAND_KEY);
    EXPECT_EQ(Text(), "one two ");
    TypeKey(B_HOME);
    TypeKey(B_DELETE);
    EXPECT_EQ(Text(), "ne two ");
    TypeKey(B_DELETE, B_COMMAND_KEY);
    EXPECT_EQ(Text(), "two ");
}

TEST_F(TextViewTest, BytesThatAreNoTextSurviveEditingBesideThem)
{
    ShowText("a\xff\xfe"
             "b");
    TypeKey(B_RIGHT_ARROW);

    TypeText("x");
    EXPECT_EQ(Text(), "ax\xff\xfe"
                      "b");

    TypeKey(B_RIGHT_ARROW);
    TypeText("y");
    EXPECT_EQ(Text(), "ax\xff"
                      "y\xfe"
                      "b");
    TypeKey(B_DELETE);
    EXPECT_EQ(Text(), "ax\xff"
                      "yb");
}

TEST_F(TextViewTest, ArrowsMoveAndShiftSelects)
{
    ShowText("one two");

    TypeKey(B_RIGHT_ARROW, B_COMMAND_KEY);
    EXPECT_EQ(Selection(), "4-4");
    TypeKey(B_RIGHT_ARROW, B_SHIFT_KEY);
    TypeKey(B_RIGHT_ARROW, B_SHIFT_KEY);
    EXPECT_EQ(Selection(), "4-6");
    TypeKey(B_LEFT_ARROW);
    EXPECT_EQ(Selection(), "4-4");
    TypeKey(B_END, B_SHIFT_KEY);
    EXPECT_EQ(Selection(), "4-7");
    TypeKey(B_LEFT_ARROW, B_SHIFT_KEY | B_COMMAND_KEY);
    EXPECT_EQ(Selection(), "4-4");
    TypeKey(B_HOME, B_SHIFT_KEY);
    EXPECT_EQ(Selection(), "0-4");
}

TEST_F(TextViewTest, RowsAreWalkedKeepingThePlace)
{
    ShowText("mmmmmm\nmm\nmmmmmm");
    Select(5, 5);

    TypeKey(B_DOWN_ARROW);
    EXPECT_EQ(Selection(), "9-9");
    TypeKey(B_DOWN_ARROW);
    EXPECT_EQ(Selection(), "15-15");
    TypeKey(B_DOWN_ARROW);
    EXPECT_EQ(Selection(), "16-16");
    TypeKey(B_UP_ARROW);
    TypeKey(B_UP_ARROW);
    TypeKey(B_UP_ARROW, B_SHIFT_KEY);
    EXPECT_EQ(Selection(), "0-5");
}

TEST_F(TextViewTest, RightToLeftTextIsWalkedAsSeen)
{
    ShowText("\xd7\x90\xd7\x91\xd7\x92"); // three Hebrew letters; the caret is at the right
    EXPECT_EQ(Selection(), "0-0");

    TypeKey(B_LEFT_ARROW);
    EXPECT_EQ(Selection(), "2-2");
    TypeKey(B_RIGHT_ARROW);
    EXPECT_EQ(Selection(), "0-0");
    TypeKey(B_LEFT_ARROW, B_COMMAND_KEY);
    EXPECT_EQ(Selection(), "6-6");
    TypeKey(B_BACKSPACE);
    EXPECT_EQ(Text(), "\xd7\x90\xd7\x91");
}

TEST_F(TextViewTest, EditingKeysWorkOnTheClipboard)
{
    ShowText("one two");
    Select(0, 3);

    TypeKey('c', B_COMMAND_KEY);
    TypeKey(B_END);
    TypeKey('v', B_COMMAND_KEY);
    EXPECT_EQ(Text(), "one twoone");

    TypeKey('a', B_COMMAND_KEY);
    TypeKey('x', B_COMMAND_KEY);
    EXPECT_EQ(Text(), "");
    TypeKey('v', B_COMMAND_KEY);
    TypeKey('v', B_COMMAND_KEY);
    EXPECT_EQ(Text(), "one twooneone twoone");
}

TEST_F(TextViewTest, CopiedBytesArePastedAsTheyWere)
{
    ShowText("\xff\xfe.txt");

    TypeKey('a', B_COMMAND_KEY);
    TypeKey('c', B_COMMAND_KEY);
    TypeKey(B_END);
    TypeKey('v', B_COMMAND_KEY);

    EXPECT_EQ(Text(), "\xff\xfe.txt\xff\xfe.txt");
}

TEST_F(TextViewTest, PastedLineEndsBecomePlain)
{
    ShowText("");
    be_clipboard->Lock();
    be_clipboard->Clear();
    be_clipboard->Data()->AddData("text/plain", B_MIME_TYPE, "a\r\nb\rc", 6);
    be_clipboard->Commit();
    be_clipboard->Unlock();

    TypeKey('v', B_COMMAND_KEY);

    EXPECT_EQ(Text(), "a\nb\nc");
}

TEST_F(TextViewTest, UndoAndRedoAnswerTheirKeys)
{
    ShowText("");
    TypeText("one two");

    TypeKey('z', B_COMMAND_KEY);
    EXPECT_EQ(Text(), "one ");
    TypeKey('z', B_COMMAND_KEY);
    EXPECT_EQ(Text(), "");
    TypeKey('z', B_COMMAND_KEY | B_SHIFT_KEY);
    TypeKey('z', B_COMMAND_KEY | B_SHIFT_KEY);
    EXPECT_EQ(Text(), "one two");
    EXPECT_EQ(Selection(), "7-7");
}

TEST_F(TextViewTest, MovingTheCaretBeginsAnotherStep)
{
    ShowText("");
    TypeText("ab");
    TypeKey(B_LEFT_ARROW);
    TypeKey(B_RIGHT_ARROW);
    TypeText("cd");

    TypeKey('z', B_COMMAND_KEY);

    EXPECT_EQ(Text(), "ab");
}

TEST_F(TextViewTest, WheelScrolls)
{
    std::string lines;
    for (int i = 0; i < 100; ++i) {
        lines += "line\n";
    }
    AddText(lines.c_str());
    Show();
    Add(new BScrollBar(BRect(210, 10, 223, 109), "bar", fView, 0, 1000, B_VERTICAL));

    TurnWheel(fView, BPoint(20, 20), 1);

    EXPECT_GT(Locked([this] { return fView->Bounds().top; }), 0);
}

TEST_F(TextViewTest, UndoBringsTheSelectionBack)
{
    ShowText("one two");
    Select(0, 3);
    TypeText("x");

    TypeKey('z', B_COMMAND_KEY);

    EXPECT_EQ(Text(), "one two");
    EXPECT_EQ(Selection(), "0-3");
}

TEST_F(TextViewTest, SettingTheTextCannotBeUndone)
{
    ShowText("");
    TypeText("x");
    Locked([this] {
        fView->SetText("new");
        return 0;
    });

    TypeKey('z', B_COMMAND_KEY);

    EXPECT_EQ(Text(), "new");
    EXPECT_FALSE(Locked([this] { return fView->CanUndo(); }));
}

TEST_F(TextViewTest, EditingKeysComeBeforeShortcuts)
{
    ShowText("one");
    fWindow->Lock();
    for (const char key : {'a', 'c', 'x', 'v', 'z'}) {
        fWindow->AddShortcut(static_cast<uint32>(key), 0, new BMessage('tesc'));
    }
    fWindow->AddShortcut('k', 0, new BMessage('tesk'));
    fWindow->Unlock();

    TypeKey('a', B_COMMAND_KEY);
    TypeKey('x', B_COMMAND_KEY);
    TypeKey('v', B_COMMAND_KEY);
    TypeKey('z', B_COMMAND_KEY);
    TypeKey('c', B_COMMAND_KEY);
    TypeKey('k', B_COMMAND_KEY); // none of its own

    const std::vector<BMessage> messages = fWindow->Messages();
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0].what, uint32('tesk'));
}

TEST_F(TextViewTest, TextThatCannotBeEditedLeavesEditingKeysToOthers)
{
    ShowText("one");
    Locked([this] {
        fView->MakeEditable(false);
        fWindow->AddShortcut('x', 0, new BMessage('tesx'));
        return 0;
    });

    TypeText("abc");
    TypeKey(B_DELETE);
    TypeKey('a', B_COMMAND_KEY);
    TypeKey('c', B_COMMAND_KEY);
    TypeKey('x', B_COMMAND_KEY);

    EXPECT_EQ(Text(), "one");
    EXPECT_EQ(Selection(), "0-3");
    EXPECT_EQ(fWindow->Messages().size(), 1u);
}

TEST_F(TextViewTest, OptionKeysAreNotText)
{
    ShowText("");

    TypeKey('a', B_OPTION_KEY);

    EXPECT_EQ(Text(), "");
}

} // namespace
