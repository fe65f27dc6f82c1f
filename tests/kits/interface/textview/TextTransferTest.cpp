#include "TextViewFixture.h"

#include <app/ClipboardHooks.h>

#include <OS.h>

#include <atomic>
#include <mutex>
#include <string>

namespace {

using namespace kits::testing;

// What was offered to those who press the middle button; the headless desktop has no such thing.
std::mutex gLock;
kits::SharedText gSelected;    // guarded by gLock
kits::SharedText gOnClipboard; // guarded by gLock
int32 gOffers = 0;             // guarded by gLock

uint64 Offer(kits::ClipboardKind kind, kits::SharedText text)
{
    std::lock_guard<std::mutex> lock(gLock);
    gOffers++;
    (kind == kits::ClipboardKind::kPrimary ? gSelected : gOnClipboard) = std::move(text);
    return 1;
}

bool Peek(kits::ClipboardKind kind, kits::ClipboardContent* content)
{
    std::lock_guard<std::mutex> lock(gLock);
    *content = {kind == kits::ClipboardKind::kPrimary ? gSelected : gOnClipboard, 1};
    return true;
}

kits::ClipboardContent Fetch(kits::ClipboardKind kind, const std::atomic<bool>*)
{
    kits::ClipboardContent content;
    Peek(kind, &content);
    return content;
}

class TextTransferTest : public TextViewFixture
{
protected:
    TextTransferTest() : fBefore(kits::GetClipboardHooks())
    {
        gSelected = {};
        gOnClipboard = {};
        gOffers = 0;
        kits::SetClipboardHooks({Offer, Peek, Fetch});
    }
    void TearDown() override
    {
        TextViewFixture::TearDown();
        kits::SetClipboardHooks(fBefore);
    }

    std::string Selected()
    {
        Sync(fWindow);
        std::lock_guard<std::mutex> lock(gLock);
        return std::string(gSelected.View());
    }
    int32 CountOffers()
    {
        Sync(fWindow);
        std::lock_guard<std::mutex> lock(gLock);
        return gOffers;
    }

    kits::ClipboardHooks fBefore;
};

TEST_F(TextTransferTest, WhatTheMouseSelectsIsOffered)
{
    ShowText("one two three");

    Drag(fView, Inside(4), Inside(7));
    EXPECT_EQ(Selected(), "two");

    Click(fView, Inside(1), B_PRIMARY_MOUSE_BUTTON, 2);
    EXPECT_EQ(Selected(), "one");
}

TEST_F(TextTransferTest, WhatKeysSelectIsOffered)
{
    ShowText("one two three");

    PressModifier(B_SHIFT_KEY);
    TypeKey(B_RIGHT_ARROW, B_SHIFT_KEY);
    TypeKey(B_RIGHT_ARROW, B_SHIFT_KEY);
    EXPECT_EQ(CountOffers(), 0);
    ReleaseModifier(B_SHIFT_KEY);
    EXPECT_EQ(Selected(), "on");
    EXPECT_EQ(CountOffers(), 1);

    TypeKey('a', B_COMMAND_KEY);
    EXPECT_EQ(Selected(), "one two three");
}

TEST_F(TextTransferTest, WhatKeysSelectIsOfferedWhenTheFocusGoes)
{
    ShowText("one two three");

    PressModifier(B_SHIFT_KEY);
    TypeKey(B_RIGHT_ARROW, B_SHIFT_KEY);
    Locked([this] {
        fView->MakeFocus(false);
        return 0;
    });

    EXPECT_EQ(Selected(), "o");
    ReleaseModifier(B_SHIFT_KEY);
}

TEST_F(TextTransferTest, SelectingOnInALargeTextCostsWhatItCostsInASmallOne)
{
    constexpr int32 kSteps = 50;
    constexpr bigtime_t kFrame = 16'000;
    std::string large;
    while (large.size() < 100'000'000) {
        large += "a line of text that is like most of them, and ends after a while here\n";
    }
    ShowText(large.c_str());
    Select(0, static_cast<int32>(large.size()) - 200);
    Sync(fWindow);

    PressModifier(B_SHIFT_KEY);
    const bigtime_t start = system_time();
    HoldKey(B_RIGHT_ARROW, kSteps - 1, B_SHIFT_KEY);
    Sync(fWindow, 30'000'000);
    const bigtime_t took = system_time() - start;
    ReleaseModifier(B_SHIFT_KEY);

    EXPECT_LT(took, kSteps * kFrame);
    Sync(fWindow);
    std::lock_guard<std::mutex> lock(gLock);
    EXPECT_EQ(gOffers, 1);
    EXPECT_EQ(gSelected.View().size(), large.size() - 200 + kSteps);
}

TEST_F(TextTransferTest, WhatIsOfferedStaysAsItWas)
{
    const std::string large(1'000'000, 'x');
    ShowText(large.c_str());
    TypeKey('a', B_COMMAND_KEY);

    TypeText("new");
    Sync(fWindow);

    EXPECT_EQ(Text(), "new");
    EXPECT_EQ(Selected(), large);
}

TEST_F(TextTransferTest, EmptySelectionsKeepTheOffer)
{
    ShowText("one two three");
    Drag(fView, Inside(4), Inside(7));

    Click(fView, Inside(1));
    TypeKey(B_RIGHT_ARROW);

    EXPECT_EQ(Selected(), "two");
}

TEST_F(TextTransferTest, MiddleButtonPastesWhereItIsPressed)
{
    ShowText("one two");
    Drag(fView, Inside(4), Inside(6));

    Click(fView, Inside(0), B_TERTIARY_MOUSE_BUTTON);

    EXPECT_EQ(Text(), "twone two");
    EXPECT_EQ(Selection(), "2-2");
    TypeKey('z', B_COMMAND_KEY);
    EXPECT_EQ(Text(), "one two");
}

TEST_F(TextTransferTest, MiddleButtonLeavesOtherTextAlone)
{
    ShowText("one two");
    Drag(fView, Inside(4), Inside(6));
    Locked([this] {
        fView->MakeEditable(false);
        return 0;
    });

    Click(fView, Inside(0), B_TERTIARY_MOUSE_BUTTON);

    EXPECT_EQ(Text(), "one two");
}

TEST_F(TextTransferTest, CopyingAsksNobodyForWhatIsThere)
{
    ShowText("one");
    TypeKey('a', B_COMMAND_KEY);
    // A program that hangs must not be asked for what is about to be replaced.
    kits::SetClipboardHooks(
        {Offer, nullptr,
         [](kits::ClipboardKind, const std::atomic<bool>*) -> kits::ClipboardContent {
             ADD_FAILURE() << "asked";
             return {};
         }});

    TypeKey('c', B_COMMAND_KEY);
    Sync(fWindow);

    std::lock_guard<std::mutex> lock(gLock);
    EXPECT_EQ(gOnClipboard.View(), "one");
}

TEST_F(TextTransferTest, HiddenTextIsGivenToNobody)
{
    ShowText("one two three");
    Locked([this] {
        fView->HideTyping(true);
        return 0;
    });

    TypeKey('a', B_COMMAND_KEY);
    TypeKey('c', B_COMMAND_KEY);
    TypeKey('x', B_COMMAND_KEY);
    TypeKey(B_DELETE, B_SHIFT_KEY);
    Drag(fView, Inside(4), Inside(7));

    EXPECT_EQ(Selected(), "");
    EXPECT_EQ(Text(), "one two three");
    std::lock_guard<std::mutex> lock(gLock);
    EXPECT_EQ(gOnClipboard.View(), "");
}

TEST_F(TextTransferTest, HiddenTextTakesWhatIsPasted)
{
    ShowText("one");
    Locked([this] {
        fView->HideTyping(true);
        return 0;
    });
    Select(0, 3);
    {
        std::lock_guard<std::mutex> lock(gLock);
        gOnClipboard = kits::SharedText(std::string("secret"));
    }

    TypeKey('v', B_COMMAND_KEY);

    EXPECT_EQ(Text(), "secret");
}

} // namespace
