#include "fileops/windows/GetTextWin.h"

#include "ApplicationEnvironment.h"

#include <AppDefs.h>
#include <Button.h>
#include <Font.h>
#include <InterfaceDefs.h>
#include <Looper.h>
#include <Message.h>
#include <OS.h>
#include <StringView.h>
#include <TextControl.h>
#include <TextView.h>

#include <gtest/gtest.h>

#include <cmath>
#include <mutex>
#include <string>

namespace norvane {

namespace {

constexpr uint32 kReply = 514;
constexpr char kQuestion[] = "What Directory do you want to go to?";

/// Keeps the reply.
class ReplyLooper : public BLooper
{
public:
    ReplyLooper() : BLooper("reply") {}

    void MessageReceived(BMessage* message) override
    {
        if (message->what == kReply) {
            std::lock_guard<std::mutex> lock(fMutex);
            fReply = *message;
            fReplies++;
        } else {
            BLooper::MessageReceived(message);
        }
    }
    bool AwaitReply()
    {
        return kits::testing::WaitFor([this] { return CountReplies() > 0; });
    }
    int CountReplies()
    {
        std::lock_guard<std::mutex> lock(fMutex);
        return fReplies;
    }
    std::string Text(const char* field)
    {
        std::lock_guard<std::mutex> lock(fMutex);
        return fReply.GetString(field, "(none)");
    }
    int Button()
    {
        std::lock_guard<std::mutex> lock(fMutex);
        int8 button = -1;
        fReply.FindInt8("button", &button);
        return button;
    }

private:
    std::mutex fMutex;
    BMessage fReply;
    int fReplies = 0;
};

class GetTextWinTest : public ::testing::Test
{
protected:
    GetTextWinTest() : fTarget(new ReplyLooper) { fTarget->Run(); }
    void TearDown() override
    {
        if (fWindow != nullptr && fWindow->Lock()) {
            fWindow->Quit();
        }
        fTarget->Lock();
        fTarget->Quit();
    }

    void Make(const char* label = kQuestion, const char* button2 = "Cancel",
              const char* button3 = nullptr, const char* text = "")
    {
        fWindow = new GetTextWin(BRect(100, 100, 700, 500), "GoTo", fTarget, label, text, kReply,
                                 "OK", button2, button3);
    }
    void Show()
    {
        fWindow->Show();
        ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
    }
    BRect FrameOf(const char* name) { return fWindow->FindView(name)->Frame(); }
    static float LabelWidth(const char* label) { return std::ceil(BFont().StringWidth(label)); }
    bool AwaitReply()
    {
        const bool hasCome = fTarget->AwaitReply();
        fWindow = nullptr; // it quits by itself
        return hasCome;
    }

    ReplyLooper* fTarget;          // deletes itself
    GetTextWin* fWindow = nullptr; // deletes itself
};

TEST_F(GetTextWinTest, IsAsWideAsALongLabel)
{
    Make(kQuestion, nullptr);
    const float label = LabelWidth(kQuestion);
    ASSERT_GT(label, LabelWidth("OK") + 96);

    EXPECT_EQ(fWindow->Frame().Width(), label + 10);
    EXPECT_EQ(fWindow->Frame().Height(), 80);
    EXPECT_EQ(FrameOf("Label1"), BRect(5, 0, 5 + label, 20));
    EXPECT_EQ(FrameOf("Text1"), BRect(5, 22, 5 + label, 42));
}

TEST_F(GetTextWinTest, IsAsWideAsItsButtonsUnderAShortLabel)
{
    Make("Go?", "Cancel", "Somewhere else");
    const float widest = LabelWidth("Somewhere else");
    const float label = LabelWidth("Go?");
    const float width = widest * 3 + 96 + 10;

    EXPECT_EQ(fWindow->Frame().Width(), width);
    EXPECT_EQ(FrameOf("Label1").left, std::floor((width - label) / 2));
    EXPECT_EQ(FrameOf("Text1").Width(), label);
    const float gap = (width - widest * 3 - 48) / 4;
    EXPECT_EQ(FrameOf("Button2"), BRect(std::floor(2 * gap + widest + 16), 44,
                                        std::floor(2 * gap + widest + 16) + widest + 16, 74));
    EXPECT_EQ(FrameOf("Button3").left, std::floor(3 * gap + 2 * widest + 32));
    // The default button's mark lies around its face.
    EXPECT_EQ(FrameOf("Button1").InsetByCopy(3, 3),
              BRect(std::floor(gap), 44, std::floor(gap) + widest + 16, 74));
}

TEST_F(GetTextWinTest, IsCentredOnTheFrame)
{
    Make();
    const BRect frame = fWindow->Frame();

    EXPECT_NEAR(frame.left + frame.Width() / 2, 400, 0.5);
    EXPECT_EQ(frame.top, 260);
}

TEST_F(GetTextWinTest, ThirdButtonNeedsASecond)
{
    Make(kQuestion, nullptr, "Never");

    EXPECT_NE(fWindow->FindView("Button1"), nullptr);
    EXPECT_EQ(fWindow->FindView("Button2"), nullptr);
    EXPECT_EQ(fWindow->FindView("Button3"), nullptr);
}

TEST_F(GetTextWinTest, CannotBeResized)
{
    Make();

    EXPECT_EQ(fWindow->Flags() & (B_NOT_RESIZABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE),
              B_NOT_RESIZABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE);
    EXPECT_TRUE(fWindow->IsModal());
}

TEST_F(GetTextWinTest, FirstButtonRepliesWithTheText)
{
    Make();
    Show();

    kits::testing::TypeText("/tmp");
    ASSERT_TRUE(kits::testing::WaitUntilAnswers(fWindow));
    kits::testing::Click(kits::testing::FindView(fWindow, "Button1"));

    ASSERT_TRUE(AwaitReply());
    EXPECT_EQ(fTarget->Text("text"), "/tmp");
    EXPECT_EQ(fTarget->Text("title"), "GoTo");
    EXPECT_EQ(fTarget->Button(), 0);
}

TEST_F(GetTextWinTest, TheOnlyButtonRepliesWithTheText)
{
    Make(kQuestion, nullptr);
    Show();

    kits::testing::TypeText("alone");
    ASSERT_TRUE(kits::testing::WaitUntilAnswers(fWindow));
    kits::testing::Click(kits::testing::FindView(fWindow, "Button1"));

    ASSERT_TRUE(AwaitReply());
    EXPECT_EQ(fTarget->Text("text"), "alone");
    EXPECT_EQ(fTarget->Button(), 0);
}

TEST_F(GetTextWinTest, EnterPressesTheFirstButton)
{
    Make();
    Show();

    ASSERT_TRUE(kits::testing::WaitUntilAnswers(fWindow));
    kits::testing::TypeText("~");
    kits::testing::TypeKey(B_ENTER);

    ASSERT_TRUE(AwaitReply());
    EXPECT_EQ(fTarget->Text("text"), "~");
}

TEST_F(GetTextWinTest, OtherButtonsReplyWithoutText)
{
    Make(kQuestion, "Cancel", "Home", "typed");
    Show();
    ASSERT_TRUE(kits::testing::WaitUntilAnswers(fWindow));

    kits::testing::Click(kits::testing::FindView(fWindow, "Button3"));

    ASSERT_TRUE(AwaitReply());
    EXPECT_EQ(fTarget->Text("text"), "");
    EXPECT_EQ(fTarget->Button(), 2);
}

TEST_F(GetTextWinTest, EscapePressesCancel)
{
    Make(kQuestion, "Cancel", nullptr, "typed");
    Show();
    ASSERT_TRUE(kits::testing::WaitUntilAnswers(fWindow));

    kits::testing::TypeKey(B_ESCAPE);

    ASSERT_TRUE(AwaitReply());
    EXPECT_EQ(fTarget->Text("text"), "");
    EXPECT_EQ(fTarget->Button(), 1);
}

TEST_F(GetTextWinTest, TakesTextAtOnceButNoAnswer)
{
    Make();
    // Typed before anything of it was seen.
    for (const char* bytes : {"a", "b", "\n"}) {
        BMessage key(B_KEY_DOWN);
        key.AddInt64("when", system_time());
        key.AddInt32("modifiers", 0);
        key.AddString("bytes", bytes);
        key.AddInt8("byte", bytes[0]);
        fWindow->PostMessage(&key);
    }

    Show();

    auto* field = dynamic_cast<BTextControl*>(kits::testing::FindView(fWindow, "Text1"));
    ASSERT_NE(field, nullptr);
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_EQ(fTarget->CountReplies(), 0);
    ASSERT_TRUE(fWindow->Lock());
    EXPECT_STREQ(field->Text(), "ab");
    fWindow->Unlock();
}

TEST_F(GetTextWinTest, FieldGetsTheFocusBackWithTheWindow)
{
    Make();
    Show();
    auto* field = dynamic_cast<BTextControl*>(kits::testing::FindView(fWindow, "Text1"));
    kits::testing::TypeKey(B_TAB);
    kits::testing::Sync(fWindow);
    ASSERT_TRUE(fWindow->Lock());
    EXPECT_FALSE(field->TextView()->IsFocus());
    fWindow->WindowActivated(true);
    EXPECT_TRUE(field->TextView()->IsFocus());
    fWindow->Unlock();
}

TEST_F(GetTextWinTest, ClosingRepliesNothing)
{
    Make();
    Show();

    kits::testing::CloseWindow(fWindow);

    EXPECT_TRUE(kits::testing::WaitForNoWindow("GoTo"));
    fWindow = nullptr;
    EXPECT_EQ(fTarget->CountReplies(), 0);
}

} // namespace

} // namespace norvane
