#include "ControlWindow.h"

#include <AppDefs.h>
#include <Message.h>
#include <Messenger.h>
#include <TextView.h>

#include <server/NativeWindow.h>
#include <server/Surface.h>
#include <testing/Native.h>

#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QInputMethodQueryEvent>

#include <string>

namespace {

using namespace kits::testing;

/// A field with the focus, and an input method that writes into it.
class TextInputTest : public ControlTest
{
protected:
    void ShowText(const char* text)
    {
        fView = Add(new BTextView(BRect(10, 10, 209, 55), "text", BRect(2, 2, 190, 43),
                                  B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW | B_NAVIGABLE));
        fOther = Add(new BTextView(BRect(10, 60, 209, 90), "other", BRect(2, 2, 190, 28),
                                   B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW | B_NAVIGABLE));
        fView->SetText(text);
        Show();
        Focus(fView);
        ASSERT_TRUE(WaitFor([this] { return Published().isTextField; }));
    }
    kits::InputMethodState Published()
    {
        Sync(fWindow);
        SyncServer();
        kits::InputMethodState state;
        OnServer([&] {
            auto* surface = static_cast<kits::Surface*>(NativeOf(fWindow));
            state = surface->Owner().GetPublished().inputMethod;
        });
        return state;
    }
    void Preview(const char* text, int caret = -1, const char* commit = "")
    {
        OnServer([=, this] {
            QList<QInputMethodEvent::Attribute> attributes;
            if (caret >= 0) {
                attributes.append({QInputMethodEvent::Cursor, caret, 1, QVariant()});
            }
            QInputMethodEvent event(QString::fromUtf8(text), attributes);
            event.setCommitString(QString::fromUtf8(commit));
            QCoreApplication::sendEvent(NativeOf(fWindow), &event);
        });
        Sync(fWindow);
    }
    void CommitOver(const char* text, int from, int length)
    {
        OnServer([=, this] {
            QInputMethodEvent event;
            event.setCommitString(QString::fromUtf8(text), from, length);
            QCoreApplication::sendEvent(NativeOf(fWindow), &event);
        });
    }
    std::string Text()
    {
        return Locked([this] { return std::string(fView->Text()); });
    }
    float CaretX() { return Published().caret.left; }

    BTextView* fView = nullptr;
    BTextView* fOther = nullptr;
};

TEST_F(TextInputTest, PreviewIsShownAndNoPartOfTheText)
{
    ShowText("ab");
    TypeKey(B_END);
    ASSERT_TRUE(WaitFor([this] { return Published().caretOffset == 2; }));
    const float before = CaretX();

    Preview("mmm");

    EXPECT_EQ(Text(), "ab");
    EXPECT_TRUE(WaitFor([&] { return CaretX() > before + 15; }));

    Preview("mmm", 0);
    EXPECT_TRUE(WaitFor([&] { return CaretX() == before; }));
}

TEST_F(TextInputTest, CommitTakesThePreviewsPlace)
{
    ShowText("ab");
    TypeKey(B_RIGHT_ARROW);

    Preview("ni");
    Preview("nihao");
    CommitText("\xe4\xbd\xa0\xe5\xa5\xbd");

    EXPECT_EQ(Text(), "a\xe4\xbd\xa0\xe5\xa5\xbd"
                      "b");
    TypeText("x");
    EXPECT_EQ(Text(), "a\xe4\xbd\xa0\xe5\xa5\xbdxb");
}

TEST_F(TextInputTest, PreviewThatIsGivenUpLeavesNothing)
{
    ShowText("ab");

    Preview("ni");
    Preview("");
    TypeText("x");

    EXPECT_EQ(Text(), "xab");
}

TEST_F(TextInputTest, OneEventMayEnterAndShow)
{
    ShowText("");

    Preview("b", -1, "a");
    EXPECT_EQ(Text(), "a");
    CommitText("c");

    EXPECT_EQ(Text(), "ac");
}

TEST_F(TextInputTest, PreviewTakesTheSelectionsPlace)
{
    ShowText("one two");
    TypeKey(B_RIGHT_ARROW, B_COMMAND_KEY | B_SHIFT_KEY);

    Preview("x");
    EXPECT_EQ(Text(), "two");

    CommitText("y ");
    EXPECT_EQ(Text(), "y two");
}

TEST_F(TextInputTest, CommitMayReplaceTextAroundTheCaret)
{
    ShowText("teh \xff");
    TypeKey(B_END);
    TypeKey(B_LEFT_ARROW);
    TypeKey(B_LEFT_ARROW);

    CommitOver("the", -3, 3);

    EXPECT_EQ(Text(), "the \xff");
}

TEST_F(TextInputTest, ComposedLettersAreTyped)
{
    ShowText("caf");
    TypeKey(B_END);

    CommitText("\xc3\xa9");

    EXPECT_EQ(Text(), "caf\xc3\xa9");
}

TEST_F(TextInputTest, ClickingKeepsWhatIsPreviewed)
{
    ShowText("ab");
    TypeKey(B_END);
    Preview("cd");
    const int32 resets = Published().resets;

    Click(fView, BPoint(3, 8));

    EXPECT_EQ(Text(), "abcd");
    EXPECT_TRUE(WaitFor([&] { return Published().resets > resets; }));
    TypeText("x");
    EXPECT_EQ(Text(), "xabcd");
}

TEST_F(TextInputTest, LosingTheFocusKeepsWhatIsPreviewed)
{
    ShowText("");
    Preview("cd");

    Focus(fOther);
    CommitText("late");

    EXPECT_EQ(Text(), "cd");
}

TEST_F(TextInputTest, WhatComesForAnEndedPreviewIsDropped)
{
    ShowText("");
    Preview("cd");
    const int32 resets = Published().resets;
    Click(fView, BPoint(3, 8));
    ASSERT_EQ(Text(), "cd");

    BMessage late(B_INPUT_METHOD_EVENT);
    late.AddString("be:string", "CD");
    late.AddBool("be:confirmed", true);
    late.AddInt32("kits:resets", resets);
    BMessenger(fView).SendMessage(&late);
    EXPECT_EQ(Text(), "cd");

    late.ReplaceInt32("kits:resets", resets + 1);
    BMessenger(fView).SendMessage(&late);
    EXPECT_EQ(Text(), "CDcd");
}

TEST_F(TextInputTest, InputMethodsAreToldOfTheTextAroundTheCaret)
{
    ShowText("one\ntw\xff\xc3\xa9\nthree");
    TypeKey(B_DOWN_ARROW);
    TypeKey(B_END);
    TypeKey(B_LEFT_ARROW, B_SHIFT_KEY);

    ASSERT_TRUE(WaitFor([this] { return Published().caretOffset == 5; }));
    const kits::InputMethodState state = Published();
    EXPECT_EQ(state.surroundingText, "tw\xef\xbf\xbd\xc3\xa9");
    EXPECT_EQ(state.anchorOffset, 7);
    EXPECT_EQ(state.caret.top, 10 + 2 + 15);
}

TEST_F(TextInputTest, TextThatCannotBeEditedTakesNothing)
{
    ShowText("ab");
    Locked([this] {
        fView->MakeEditable(false);
        return 0;
    });

    Preview("x");
    CommitText("y");
    CommitOver("z", -1, 1);

    EXPECT_EQ(Text(), "ab");
}

TEST_F(TextInputTest, HiddenTextIsNotTold)
{
    ShowText("secret");
    Locked([this] {
        fView->HideTyping(true);
        fView->Select(2, 4);
        return 0;
    });

    ASSERT_TRUE(WaitFor([this] { return Published().hidesText; }));
    EXPECT_TRUE(Published().isTextField);
    EXPECT_EQ(Published().surroundingText, "");
    EXPECT_EQ(Published().caretOffset, 0);
    EXPECT_EQ(Published().anchorOffset, 0);
    OnServer([this] {
        QInputMethodQueryEvent query(Qt::ImHints | Qt::ImSurroundingText);
        QCoreApplication::sendEvent(NativeOf(fWindow), &query);
        const int hints = query.value(Qt::ImHints).toInt();
        EXPECT_NE(hints & int(Qt::ImhHiddenText), 0);
        EXPECT_NE(hints & int(Qt::ImhSensitiveData), 0);
        EXPECT_EQ(query.value(Qt::ImSurroundingText).toString(), QString());
    });
}

TEST_F(TextInputTest, OtherTextHasNoHints)
{
    ShowText("plain");

    OnServer([this] {
        QInputMethodQueryEvent query(Qt::ImHints);
        QCoreApplication::sendEvent(NativeOf(fWindow), &query);
        EXPECT_EQ(query.value(Qt::ImHints).toInt(), 0);
    });
}

TEST_F(TextInputTest, PreviewInHiddenTextIsHiddenToo)
{
    ShowText("");
    Locked([this] {
        fView->HideTyping(true);
        return 0;
    });
    const float before = CaretX();
    Preview("iii");
    ASSERT_TRUE(WaitFor([&] { return CaretX() > before; }));
    const float three = CaretX() - before;

    Preview("mmmmmm");
    ASSERT_TRUE(WaitFor([&] { return CaretX() > before + three; }));
    EXPECT_NEAR(CaretX() - before, 2 * three, 1);

    Locked([this] {
        fView->MakeFocus(false);
        return 0;
    });
    EXPECT_EQ(Text(), "mmmmmm");
}

} // namespace
