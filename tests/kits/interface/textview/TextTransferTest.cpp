#include "TextViewFixture.h"

#include <app/ClipboardHooks.h>

#include <mutex>
#include <string>

namespace {

using namespace kits::testing;

// What was offered to those who press the middle button; the headless desktop has no such thing.
std::mutex gLock;
std::string gSelected;    // guarded by gLock
std::string gOnClipboard; // guarded by gLock

uint64 Offer(kits::ClipboardKind kind, std::string text)
{
    std::lock_guard<std::mutex> lock(gLock);
    (kind == kits::ClipboardKind::kPrimary ? gSelected : gOnClipboard) = std::move(text);
    return 1;
}

kits::ClipboardContent Fetch(kits::ClipboardKind kind)
{
    std::lock_guard<std::mutex> lock(gLock);
    return {kind == kits::ClipboardKind::kPrimary ? gSelected : gOnClipboard, 0};
}

class TextTransferTest : public TextViewFixture
{
protected:
    TextTransferTest() : fBefore(kits::GetClipboardHooks())
    {
        gSelected.clear();
        gOnClipboard.clear();
        kits::SetClipboardHooks({Offer, Fetch});
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
        return gSelected;
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

    TypeKey(B_RIGHT_ARROW, B_SHIFT_KEY);
    TypeKey(B_RIGHT_ARROW, B_SHIFT_KEY);
    EXPECT_EQ(Selected(), "on");

    TypeKey('a', B_COMMAND_KEY);
    EXPECT_EQ(Selected(), "one two three");
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
    kits::SetClipboardHooks({Offer, [](kits::ClipboardKind) -> kits::ClipboardContent {
                                 ADD_FAILURE() << "asked";
                                 return {};
                             }});

    TypeKey('c', B_COMMAND_KEY);
    Sync(fWindow);

    std::lock_guard<std::mutex> lock(gLock);
    EXPECT_EQ(gOnClipboard, "one");
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
    EXPECT_EQ(gOnClipboard, "");
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
        gOnClipboard = "secret";
    }

    TypeKey('v', B_COMMAND_KEY);

    EXPECT_EQ(Text(), "secret");
}

} // namespace
