#include "ControlWindow.h"

#include <Clipboard.h>
#include <ScrollView.h>
#include <TextView.h>

#include <functional>
#include <string>

namespace {

using namespace kits::testing;

/// A text view in a shown window, with the focus.
class TextViewTest : public ControlTest
{
protected:
    BTextView* AddText(const char* text, BRect frame = BRect(10, 10, 209, 109))
    {
        auto* view =
            new BTextView(frame, "text", BRect(2, 2, frame.Width() - 2, frame.Height() - 2),
                          B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW | B_NAVIGABLE);
        view->SetText(text);
        fView = Add(view);
        return view;
    }
    void ShowText(const char* text)
    {
        AddText(text);
        Show();
        Focus(fView);
    }

    std::string Text()
    {
        return Locked([this] { return std::string(fView->Text()); });
    }
    /// "start-end"; with the caret at the end that it is at.
    std::string Selection()
    {
        return Locked([this] {
            int32 start = -1;
            int32 end = -1;
            fView->GetSelection(&start, &end);
            return std::to_string(start) + "-" + std::to_string(end);
        });
    }
    void Select(int32 start, int32 end)
    {
        Locked([=, this] {
            fView->Select(start, end);
            return 0;
        });
    }
    /// The middle of a character on the screen.
    BPoint Inside(int32 offset)
    {
        return Locked([=, this] {
            const BPoint left = fView->PointAt(offset);
            const BPoint right = fView->PointAt(offset + 1);
            return BPoint(left.x + (right.x - left.x) * 0.3f, left.y + 7);
        });
    }

    BTextView* fView = nullptr;
};

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

TEST_F(TextViewTest, MaxBytesCutsBetweenCharacters)
{
    ShowText("ab");
    Locked([this] {
        fView->SetMaxBytes(5);
        fView->Select(2, 2);
        return 0;
    });

    TypeText("\xe2\x82\xac"); // three bytes: there is room
    EXPECT_EQ(Text(), "ab\xe2\x82\xac");
    TypeText("z");
    EXPECT_EQ(Text(), "ab\xe2\x82\xac");

    Select(0, 2);
    TypeText("\xe2\x82\xac"); // two are free
    EXPECT_EQ(Text(), "ab\xe2\x82\xac");
    TypeText("\xc3\xa9");
    EXPECT_EQ(Text(), "\xc3\xa9\xe2\x82\xac");
}

TEST_F(TextViewTest, DisallowedCharactersAreLeftOut)
{
    ShowText("");
    Locked([this] {
        fView->DisallowChar('/');
        fView->DisallowChar(0x20ac);
        return 0;
    });

    TypeText("a/b\xe2\x82\xac"
             "c");
    EXPECT_EQ(Text(), "abc");

    Locked([this] {
        fView->AllowChar('/');
        return 0;
    });
    TypeText("/");
    EXPECT_EQ(Text(), "abc/");
}

TEST_F(TextViewTest, SingleLineTakesNoBreaks)
{
    ShowText("a\nb"); // what is set stays
    Locked([this] {
        fView->SetSingleLine(true);
        fView->Select(3, 3);
        return 0;
    });
    be_clipboard->Lock();
    be_clipboard->Clear();
    be_clipboard->Data()->AddData("text/plain", B_MIME_TYPE, "/a\n/b\n", 6);
    be_clipboard->Commit();
    be_clipboard->Unlock();

    TypeKey('v', B_COMMAND_KEY);
    TypeKey(B_ENTER);

    EXPECT_EQ(Text(), "a\nb/a /b");
    EXPECT_EQ(Locked([this] { return fView->CountLines(); }), 1);
}

TEST_F(TextViewTest, HooksSeeEveryChange)
{
    class Counter : public BTextView
    {
    public:
        using BTextView::BTextView;
        std::string log;

    protected:
        void InsertText(const char* text, int32 length, int32 offset,
                        const text_run_array* runs) override
        {
            log += "+" + std::string(text, static_cast<size_t>(length));
            BTextView::InsertText(text, length, offset, runs);
        }
        void DeleteText(int32 start, int32 end) override
        {
            log += "-" + std::to_string(end - start);
            BTextView::DeleteText(start, end);
        }
    };
    auto* view = new Counter(BRect(10, 10, 209, 109), "text", BRect(2, 2, 190, 90),
                             B_FOLLOW_LEFT | B_FOLLOW_TOP);
    Add(view);
    Show();
    Focus(view);
    fView = view;

    TypeText("ab");
    TypeKey(B_BACKSPACE);
    TypeKey('z', B_COMMAND_KEY);
    Select(0, 2);
    TypeText("x");

    EXPECT_EQ(Locked([=] { return view->log; }), "+a+b-1+b-2+x");
}

TEST_F(TextViewTest, InsertAndDeleteWorkAnywhere)
{
    ShowText("one two");

    const std::string text = Locked([this] {
        fView->Select(4, 4);
        fView->Insert(0, "<<", 2);
        fView->Delete(2, 3);
        fView->Insert(">");
        fView->Delete(90, 95);
        return std::string(fView->Text());
    });

    EXPECT_EQ(text, "<<ne >two");
    EXPECT_EQ(Selection(), "6-6");
    char part[4] = "";
    Locked([&] {
        fView->GetText(2, 2, part);
        return 0;
    });
    EXPECT_STREQ(part, "ne");
}

// Mouse

TEST_F(TextViewTest, ClickSetsTheCaretAndTakesTheFocus)
{
    AddText("one two");
    Show();

    Click(fView, Inside(4));

    EXPECT_TRUE(Locked([this] { return fView->IsFocus(); }));
    EXPECT_EQ(Selection(), "4-4");
}

TEST_F(TextViewTest, DoubleClickTakesTheWordAndTripleClickTheLine)
{
    ShowText("one two\nnext");

    Click(fView, Inside(5), B_PRIMARY_MOUSE_BUTTON, 2);
    EXPECT_EQ(Selection(), "4-7");

    Click(fView, Inside(1), B_PRIMARY_MOUSE_BUTTON, 3);
    EXPECT_EQ(Selection(), "0-8");
}

TEST_F(TextViewTest, DraggingSelectsBothWays)
{
    ShowText("one two three");

    Drag(fView, Inside(4), Inside(7));
    EXPECT_EQ(Selection(), "4-7");

    Drag(fView, Inside(7), Inside(4));
    EXPECT_EQ(Selection(), "4-7");
    TypeKey(B_RIGHT_ARROW, B_SHIFT_KEY); // the caret is at the left
    EXPECT_EQ(Selection(), "5-7");
}

TEST_F(TextViewTest, DraggingFromADoubleClickTakesWholeWords)
{
    ShowText("one two three");

    Click(fView, Inside(5), B_PRIMARY_MOUSE_BUTTON, 1);
    PressMouse(fView, Inside(5));
    MoveMouse(fView, Inside(9));
    EXPECT_EQ(Selection(), "4-13");
    MoveMouse(fView, Inside(1));
    ReleaseMouse(fView, Inside(1));
    EXPECT_EQ(Selection(), "0-7");
}

TEST_F(TextViewTest, ShiftClickExtends)
{
    ShowText("one two three");
    Click(fView, Inside(4));

    Click(fView, Inside(8), B_PRIMARY_MOUSE_BUTTON, 1, B_SHIFT_KEY);
    EXPECT_EQ(Selection(), "4-8");
    Click(fView, Inside(1), B_PRIMARY_MOUSE_BUTTON, 1, B_SHIFT_KEY);
    EXPECT_EQ(Selection(), "1-4");
}

TEST_F(TextViewTest, DraggingOutsideScrolls)
{
    std::string lines;
    for (int i = 0; i < 100; ++i) {
        lines += "line\n";
    }
    ShowText(lines.c_str());

    PressMouse(fView, Inside(1));
    MoveMouse(fView, BPoint(20, 160));
    const bool hasScrolled =
        WaitFor([this] { return Locked([this] { return fView->Bounds().top > 60; }); });
    ReleaseMouse(fView, BPoint(20, 160));

    EXPECT_TRUE(hasScrolled);
}

// Scrolling

TEST_F(TextViewTest, LongTextFollowsTheCaret)
{
    const std::string text(200, 'm');
    ShowText(text.c_str());

    TypeKey(B_END);
    EXPECT_TRUE(Locked([this] {
        return fView->Bounds().left > 0 && fView->PointAt(200).x <= fView->Bounds().right;
    }));

    TypeKey(B_HOME);
    EXPECT_EQ(Locked([this] { return fView->Bounds().left; }), 0);

    TypeKey(B_END);
    TypeKey('a', B_COMMAND_KEY);
    TypeText("x");
    EXPECT_EQ(Locked([this] { return fView->Bounds().left; }), 0);
}

TEST_F(TextViewTest, ScrollBarsFollowTheText)
{
    auto* view = new BTextView(BRect(10, 10, 209, 69), "text", BRect(0, 0, 199, 59),
                               B_FOLLOW_LEFT | B_FOLLOW_TOP);
    auto* scroll = new BScrollView("scroll", view, B_FOLLOW_LEFT | B_FOLLOW_TOP, 0, false, true);
    Add(scroll);
    fView = view;
    Show();
    Focus(view);

    const auto range = [=, this] {
        return Locked([=] {
            float least = 0;
            float most = 0;
            scroll->ScrollBar(B_VERTICAL)->GetRange(&least, &most);
            return most;
        });
    };
    EXPECT_EQ(range(), 0);
    for (int i = 0; i < 9; ++i) {
        TypeKey(B_ENTER);
    }
    EXPECT_EQ(range(), 10 * 15 - 60);
    EXPECT_EQ(Locked([=] { return scroll->ScrollBar(B_VERTICAL)->Value(); }), 90);
    TypeKey(B_PAGE_UP);
    TypeKey(B_PAGE_UP);
    TypeKey(B_PAGE_UP);
    EXPECT_EQ(Locked([=] { return view->CurrentLine(); }), 0);
    EXPECT_EQ(Locked([=] { return view->Bounds().top; }), 0);
}

TEST_F(TextViewTest, WordWrapMakesRows)
{
    ShowText("word word word word word word word word word word word word");

    const int32 rows = Locked([this] {
        fView->SetWordWrap(true);
        return fView->CountLines();
    });

    EXPECT_GT(rows, 1);
    EXPECT_EQ(Locked([this] { return fView->TextHeight(0, 1); }), 30);
    TypeKey(B_DOWN_ARROW);
    EXPECT_EQ(Locked([this] { return fView->CurrentLine(); }), 1);
    TypeKey(B_END);
    EXPECT_EQ(Locked([this] { return fView->CurrentLine(); }), 1);
}

// Looks

TEST_F(TextViewTest, ShowsTheCaretAndTheSelection)
{
    ShowText("mm");
    const auto count = [this](rgb_color color) {
        const Picture picture = TakePicture(fWindow);
        const float scale = picture.scale;
        return picture.Count(color, static_cast<int32>(10 * scale), static_cast<int32>(10 * scale),
                             static_cast<int32>(13 * scale), static_cast<int32>(30 * scale));
    };
    const rgb_color black = {0, 0, 0, 255};
    const rgb_color selected = {184, 198, 222, 255};
    EXPECT_TRUE(WaitFor([&] { return count(black) == 15; })); // one unit by the line's height

    TypeKey(B_RIGHT_ARROW, B_SHIFT_KEY);
    EXPECT_EQ(count(black), 0);
    EXPECT_GE(count(selected), 15);
}

TEST_F(TextViewTest, CaretBlinks)
{
    ShowText("");
    const auto isShown = [this] {
        const rgb_color black = {0, 0, 0, 255};
        return TakePicture(fWindow).Count(black, 10, 10, 40, 40) > 0;
    };

    EXPECT_TRUE(WaitFor(isShown));
    EXPECT_TRUE(WaitFor([&] { return !isShown(); }));
    EXPECT_TRUE(WaitFor(isShown));
}

} // namespace
