#include "ftp/sessions/PassControl.h"

#include "ControlWindow.h"

#include <Button.h>
#include <Clipboard.h>
#include <InterfaceDefs.h>
#include <TextView.h>
#include <TypeConstants.h>

#include <string>

namespace norvane {

namespace {

using kits::testing::TypeKey;
using kits::testing::TypeText;

class PassControlTest : public ControlTest
{
protected:
    /// A control that has the focus, and a button behind it.
    void Make(const char* text = "")
    {
        fControl = Add(new PassControl(BRect(20, 20, 220, 44), "pass", "Password:", text,
                                       new BMessage('test')));
        Add(new BButton(BRect(20, 80, 100, 104), "after", "After", new BMessage('tess')));
        Show();
        Focus(fControl);
    }
    /// Both texts, the shown one first.
    std::string Texts()
    {
        return Locked(
            [this] { return std::string(fControl->Text()) + "|" + fControl->actualText(); });
    }
    void Select(int32 from, int32 to)
    {
        Locked([=, this] {
            fControl->TextView()->Select(from, to);
            return 0;
        });
    }
    /// What an input method says to the control: shown only, or entered.
    void TellText(const char* text, bool isEntered)
    {
        BMessage input(B_INPUT_METHOD_EVENT);
        input.AddString("be:string", text);
        if (isEntered) {
            input.AddBool("be:confirmed", true);
        }
        fWindow->PostMessage(&input, fControl->TextView());
    }
    static void Offer(const std::string& text)
    {
        ASSERT_TRUE(be_clipboard->Lock());
        be_clipboard->Clear();
        be_clipboard->Data()->AddData("text/plain", B_MIME_TYPE, text.data(),
                                      static_cast<ssize_t>(text.size()));
        be_clipboard->Commit();
        be_clipboard->Unlock();
    }

    PassControl* fControl = nullptr; // the window's
};

TEST_F(PassControlTest, ShowsAnAsteriskForEachCharacter)
{
    Make("geh\xc3\xa4im\xe2\x82\xac");

    EXPECT_EQ(Texts(), "*******|geh\xc3\xa4im\xe2\x82\xac");
}

TEST_F(PassControlTest, KeepsWhatIsTyped)
{
    Make();

    TypeText("s\xc3\xa4 *t");

    EXPECT_EQ(Texts(), "*****|s\xc3\xa4 *t");
}

TEST_F(PassControlTest, BackspaceRemovesOneCharacter)
{
    Make();
    TypeText("a\xc3\xa4");

    TypeKey(B_BACKSPACE);
    EXPECT_EQ(Texts(), "*|a");
    TypeKey(B_BACKSPACE);
    TypeKey(B_BACKSPACE);
    EXPECT_EQ(Texts(), "|");
}

TEST_F(PassControlTest, BackspaceRemovesAllThatIsSelected)
{
    Make("abc\xc3\xa4\xc3\xb6\xc3\xbcxyz");

    Select(3, 6);
    TypeKey(B_BACKSPACE);

    EXPECT_EQ(Texts(), "******|abcxyz");
}

TEST_F(PassControlTest, TypingReplacesWhatIsSelected)
{
    Make("abcdef");

    Select(1, 5);
    TypeText("\xc3\xa4");

    EXPECT_EQ(Texts(), "***|a\xc3\xa4"
                       "f");
}

TEST_F(PassControlTest, TypingGoesToTheCaret)
{
    Make("ad");
    Select(2, 2);

    TypeKey(B_LEFT_ARROW);
    TypeText("\xc3\xa4");
    TypeText("c");

    EXPECT_EQ(Texts(), "****|a\xc3\xa4"
                       "cd");
}

TEST_F(PassControlTest, PastingIsNeitherShownNorLost)
{
    Make("ab");
    Offer("*\xc3\xa4\xc3\xb6*");
    Select(1, 1);

    TypeKey('v', B_COMMAND_KEY);
    TypeText("c"); // behind what was pasted

    EXPECT_EQ(Texts(), "*******|a*\xc3\xa4\xc3\xb6*cb");
}

TEST_F(PassControlTest, CuttingTakesAsterisksAlone)
{
    Make("abcd");
    Select(1, 3);

    TypeKey('x', B_COMMAND_KEY);
    EXPECT_EQ(Texts(), "**|ad");
    ASSERT_TRUE(be_clipboard->Lock());
    const void* data = nullptr;
    ssize_t size = 0;
    be_clipboard->Data()->FindData("text/plain", B_MIME_TYPE, &data, &size);
    EXPECT_EQ(std::string(static_cast<const char*>(data), static_cast<size_t>(size)), "**");
    be_clipboard->Unlock();
}

TEST_F(PassControlTest, ErasingAWordErasesTheText)
{
    Make("secret");
    Select(6, 6);

    TypeKey(B_BACKSPACE, B_COMMAND_KEY);

    EXPECT_EQ(Texts(), "|");
}

TEST_F(PassControlTest, NothingIsUndone)
{
    Make();
    TypeText("abc");

    TypeKey('z', B_COMMAND_KEY);

    EXPECT_EQ(Texts(), "***|abc");
}

TEST_F(PassControlTest, WhatAnInputMethodEntersIsKept)
{
    Make("a");
    Select(1, 1);

    TellText("\xe6\x97\xa5\xe6\x9c\xac", true);

    EXPECT_EQ(Texts(), "***|a\xe6\x97\xa5\xe6\x9c\xac");
}

TEST_F(PassControlTest, WhatAnInputMethodProposesIsNotShown)
{
    Make("a");
    Select(1, 1);

    TellText("nihao", false);
    TypeText("b"); // would enter what is shown

    EXPECT_EQ(Texts(), "**|ab");
}

TEST_F(PassControlTest, EnterAndDeleteDoNothing)
{
    Make("abc");
    Select(0, 1);

    TypeKey(B_DELETE);
    TypeKey(B_ENTER);

    EXPECT_EQ(Texts(), "***|abc");
    EXPECT_TRUE(fWindow->Messages().empty());
}

TEST_F(PassControlTest, TabMovesTheFocus)
{
    Make("abc");

    TypeKey(B_TAB);

    EXPECT_TRUE(Locked([this] { return fWindow->FindView("after")->IsFocus(); }));
    EXPECT_EQ(Texts(), "***|abc");
}

TEST_F(PassControlTest, SetTextReplacesBoth)
{
    Make("before");

    Locked([this] {
        fControl->SetText("n\xc3\xa4u");
        return 0;
    });
    EXPECT_EQ(Texts(), "***|n\xc3\xa4u");

    Locked([this] {
        fControl->SetText(nullptr);
        return 0;
    });
    EXPECT_EQ(Texts(), "|");
}

TEST_F(PassControlTest, PushAndPopWorkAtTheEnd)
{
    Make("a");
    BMessage key(B_KEY_DOWN);
    for (const char byte : {'\xe2', '\x82', '\xac'}) {
        key.AddInt8("byte", byte);
    }

    Locked([&] {
        fControl->PushChar(&key);
        return 0;
    });
    EXPECT_EQ(Texts(), "**|a\xe2\x82\xac");

    Locked([&] {
        fControl->PopChar();
        fControl->PopChar();
        fControl->PopChar();
        return 0;
    });
    EXPECT_EQ(Texts(), "|");
}

TEST_F(PassControlTest, BrokenTextKeepsItsBytes)
{
    Make("\x80\xff"
         "a\xc3");

    EXPECT_EQ(Texts(), "****|\x80\xff"
                       "a\xc3");
}

TEST_F(PassControlTest, LongTextsAreKeptWhole)
{
    const std::string text(5000, 'p');
    Make(text.c_str());

    EXPECT_EQ(Texts(), std::string(5000, '*') + "|" + text);
}

} // namespace

} // namespace norvane
