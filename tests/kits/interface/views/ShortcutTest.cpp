#include "interface/views/Shortcut.h"

#include <InterfaceDefs.h>
#include <Message.h>

#include <gtest/gtest.h>

#include <initializer_list>

namespace {

BMessage Key(uint32 modifiers, std::initializer_list<const char*> candidates, int8 byte = 0)
{
    BMessage key(B_KEY_DOWN);
    key.AddInt32("modifiers", static_cast<int32>(modifiers));
    for (const char* candidate : candidates) {
        key.AddString("kits:shortcut", candidate);
    }
    key.AddInt8("byte", byte);
    return key;
}

constexpr uint32 kCtrl = B_COMMAND_KEY | B_CONTROL_KEY;

TEST(ShortcutTest, NamesTheKeysAsTheyArePrinted)
{
    EXPECT_EQ(kits::ShortcutText('o', 0), "Ctrl+O");
    EXPECT_EQ(kits::ShortcutText('P', B_SHIFT_KEY), "Ctrl+Shift+P");
    EXPECT_EQ(kits::ShortcutText(B_UP_ARROW, 0), "Ctrl+Up");
    EXPECT_EQ(kits::ShortcutText('1', B_OPTION_KEY | B_COMMAND_KEY), "Ctrl+Alt+1");
}

TEST(ShortcutTest, LettersFitWithoutRegardToCase)
{
    EXPECT_EQ(kits::MatchShortcut(Key(kCtrl, {"o"}), 'O', 0), 0);
    EXPECT_EQ(kits::MatchShortcut(Key(kCtrl | B_CAPS_LOCK, {"O"}), 'o', B_COMMAND_KEY), 0);
}

TEST(ShortcutTest, ShiftAndOptionMustBeAsAsked)
{
    EXPECT_EQ(kits::MatchShortcut(Key(kCtrl | B_SHIFT_KEY, {"p"}), 'P', 0), -1);
    EXPECT_EQ(kits::MatchShortcut(Key(kCtrl, {"p"}), 'P', B_SHIFT_KEY), -1);
    EXPECT_EQ(kits::MatchShortcut(Key(kCtrl | B_SHIFT_KEY, {"p"}), 'P', B_SHIFT_KEY), 0);
    EXPECT_EQ(kits::MatchShortcut(Key(kCtrl | B_OPTION_KEY, {"p"}), 'P', 0), -1);
}

TEST(ShortcutTest, WithoutCommandNothingFits)
{
    EXPECT_EQ(kits::MatchShortcut(Key(0, {"p"}), 'P', 0), -1);
}

TEST(ShortcutTest, LaterCandidatesFitWorse)
{
    const BMessage key = Key(kCtrl, {"&", "1"});

    EXPECT_EQ(kits::MatchShortcut(key, '&', 0), 0);
    EXPECT_EQ(kits::MatchShortcut(key, '1', 0), 1);
    EXPECT_EQ(kits::MatchShortcut(key, '2', 0), -1);
}

TEST(ShortcutTest, ArrowKeysFitByTheirByte)
{
    EXPECT_GE(kits::MatchShortcut(Key(kCtrl, {}, B_UP_ARROW), B_UP_ARROW, 0), 0);
    EXPECT_EQ(kits::MatchShortcut(Key(kCtrl, {}, B_UP_ARROW), B_DOWN_ARROW, 0), -1);
}

TEST(ShortcutTest, NoShortcutFitsNoKey)
{
    EXPECT_EQ(kits::MatchShortcut(Key(kCtrl, {""}), 0, 0), -1);
}

} // namespace
