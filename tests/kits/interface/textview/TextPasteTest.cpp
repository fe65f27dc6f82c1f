#include "NoThreads.h"
#include "TextViewFixture.h"

#include <Clipboard.h>
#include <OS.h>

#include <app/ClipboardHooks.h>
#include <app/DisplayHooks.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <string>

// Pasting from another program, which may take its time.

namespace {

using namespace kits::testing;

std::mutex gLock;
std::condition_variable gChange;
bool gIsAsked = false;        // guarded by gLock
bool gMayAnswer = false;      // guarded by gLock
bool gWasCancelled = false;   // guarded by gLock
kits::ClipboardContent gGets; // guarded by gLock
std::atomic<int32> gBeeps{0};

bool PeekForeign(kits::ClipboardKind, kits::ClipboardContent*)
{
    return false;
}

kits::ClipboardContent FetchSlowly(kits::ClipboardKind, const std::atomic<bool>* isCancelled)
{
    std::unique_lock<std::mutex> lock(gLock);
    gIsAsked = true;
    gChange.notify_all();
    bool isGivenUp = false;
    while (!gMayAnswer && !isGivenUp) {
        gChange.wait_for(lock, std::chrono::milliseconds(10));
        isGivenUp = isCancelled != nullptr && *isCancelled;
        gWasCancelled = gWasCancelled || isGivenUp;
    }
    return gGets;
}

class TextPasteTest : public TextViewFixture
{
protected:
    TextPasteTest() : fClipboard(kits::GetClipboardHooks()), fDisplay(kits::GetDisplayHooks())
    {
        gIsAsked = false;
        gMayAnswer = false;
        gWasCancelled = false;
        gGets = {kits::SharedText(std::string("pasted")), 0, false};
        gBeeps = 0;
        kits::SetClipboardHooks({fClipboard.offer, PeekForeign, FetchSlowly});
        kits::DisplayHooks display = fDisplay;
        display.beep = [] {
            gBeeps++;
        };
        kits::SetDisplayHooks(display);
    }
    void TearDown() override
    {
        Answer(); // nobody is left waiting when a test fails
        TextViewFixture::TearDown();
        kits::SetClipboardHooks(fClipboard);
        kits::SetDisplayHooks(fDisplay);
    }

    static bool WasAsked()
    {
        std::unique_lock<std::mutex> lock(gLock);
        return gChange.wait_for(lock, std::chrono::seconds(10), [] { return gIsAsked; });
    }
    static void Answer()
    {
        const std::lock_guard<std::mutex> lock(gLock);
        gMayAnswer = true;
        gChange.notify_all();
    }
    bool ShowsSoon(const std::string& text)
    {
        return WaitFor([&] { return Text() == text; }, 5'000'000);
    }

    const kits::ClipboardHooks fClipboard;
    const kits::DisplayHooks fDisplay;
};

TEST_F(TextPasteTest, TheWindowLivesWhileTheOtherProgramIsWaitedFor)
{
    ShowText("text");
    TypeKey('v', B_COMMAND_KEY);
    ASSERT_TRUE(WasAsked());

    EXPECT_TRUE(Sync(fWindow, 2'000'000));
    EXPECT_EQ(Text(), "text");

    Answer();
    EXPECT_TRUE(ShowsSoon("pastedtext"));
    EXPECT_EQ(gBeeps, 0);
}

TEST_F(TextPasteTest, WhatIsTypedMeanwhileComesBehindIt)
{
    ShowText("text");
    TypeText("1");
    TypeKey('v', B_COMMAND_KEY);
    TypeText("23");
    TypeKey(B_BACKSPACE);
    TypeText("4");
    ASSERT_TRUE(WasAsked());
    EXPECT_TRUE(Sync(fWindow, 2'000'000));
    EXPECT_EQ(Text(), "1text");

    Answer();

    EXPECT_TRUE(ShowsSoon("1pasted24text")) << Text();
}

TEST_F(TextPasteTest, OneThatWasGivenUpIsNotTakenForTheNext)
{
    const auto paste = [this] {
        Locked([this] {
            fView->Paste(be_clipboard);
            return 0;
        });
    };
    ShowText("text");
    paste();
    ASSERT_TRUE(WasAsked());

    paste(); // what was asked for first comes to its end

    const bool isAlive = Sync(fWindow, 2'000'000);
    if (!isAlive) {
        Answer(); // or nothing could be looked at any more
    }
    EXPECT_TRUE(isAlive);
    EXPECT_EQ(Text(), "text");
    Answer();
    EXPECT_TRUE(ShowsSoon("pastedtext")) << Text();
}

TEST_F(TextPasteTest, ItGoesWhereItWasAskedFor)
{
    ShowText("one two");
    Select(0, 3);
    TypeKey('v', B_COMMAND_KEY);
    ASSERT_TRUE(WasAsked());
    Click(fView, Inside(5));

    Answer();

    EXPECT_TRUE(ShowsSoon("pasted two")) << Text();
}

TEST_F(TextPasteTest, ASilentProgramGivesABeepAndNothingElse)
{
    ShowText("text");
    Select(0, 4);
    {
        const std::lock_guard<std::mutex> lock(gLock);
        gGets = {kits::SharedText(), 0, true};
    }
    TypeKey('v', B_COMMAND_KEY);
    Answer();

    EXPECT_TRUE(WaitFor([] { return gBeeps == 1; }));
    EXPECT_EQ(Text(), "text");
    TypeText("x");
    EXPECT_TRUE(ShowsSoon("x"));
}

TEST_F(TextPasteTest, WithoutAThreadForItThereIsABeepAndTypingGoesOn)
{
    ShowText("text");
    {
        const NoThreads none;
        TypeKey('v', B_COMMAND_KEY);
        EXPECT_TRUE(WaitFor([] { return gBeeps == 1; }));
    }
    TypeText("x");

    EXPECT_TRUE(ShowsSoon("xtext"));
    EXPECT_FALSE(gIsAsked);
}

TEST_F(TextPasteTest, TheMiddleButtonWaitsNoMore)
{
    ShowText("text");
    Click(fView, Inside(0), B_TERTIARY_MOUSE_BUTTON);
    ASSERT_TRUE(WasAsked());
    EXPECT_TRUE(Sync(fWindow, 2'000'000));

    Answer();

    EXPECT_TRUE(ShowsSoon("pastedtext"));
}

TEST_F(TextPasteTest, KeysGoOnWhenTheFieldIsGone)
{
    ShowText("text");
    BTextView* other = new BTextView(BRect(10, 120, 209, 139), "other", BRect(2, 2, 190, 17),
                                     B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW | B_NAVIGABLE);
    Add(other);
    TypeKey('v', B_COMMAND_KEY);
    ASSERT_TRUE(WasAsked());
    TypeText("ab");
    Sync(fWindow);

    Locked([this, other] {
        fView->RemoveSelf();
        other->MakeFocus();
        return 0;
    });

    EXPECT_TRUE(
        WaitFor([&] { return Locked([other] { return std::string(other->Text()); }) == "ab"; }));
    EXPECT_EQ(Text(), "text");
    delete fView;
}

} // namespace
