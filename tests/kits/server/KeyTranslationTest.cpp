#include <InterfaceDefs.h>

#include "server/KeyTranslation.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using kits::KeyNumber;
using kits::ModifierSides;
using kits::NativeKey;
using kits::TranslateKey;

namespace {

using Strings = std::vector<std::string>;

struct KeyCase
{
    const char* name;
    NativeKey native;
    std::string bytes;
    int32 key;
    int32 rawChar;
    Strings shortcuts;
};

class KeyTranslationTest : public ::testing::TestWithParam<KeyCase>
{
};

QString Text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

std::string Byte(char byte)
{
    return std::string(1, byte);
}

} // namespace

TEST_P(KeyTranslationTest, GivesThePlatformsKey)
{
    const KeyCase& expected = GetParam();

    const kits::PlatformKey key = TranslateKey(expected.native);

    EXPECT_EQ(key.bytes, expected.bytes);
    EXPECT_EQ(key.key, expected.key);
    EXPECT_EQ(key.rawChar, expected.rawChar);
    EXPECT_EQ(key.shortcuts, expected.shortcuts);
}

// Scan codes: the kernel's number of the position plus eight.
INSTANTIATE_TEST_SUITE_P(
    Keys, KeyTranslationTest,
    ::testing::Values(
        KeyCase{"letter", {Qt::Key_A, Text("a"), {}, 38, 0}, "a", 0x3c, 'a', {"A"}},
        KeyCase{"capital", {Qt::Key_A, Text("A"), Qt::ShiftModifier, 38, 0}, "A", 0x3c, 'a', {"A"}},
        KeyCase{"ctrl letter has a control byte as text",
                {Qt::Key_P, Text("\x10"), Qt::ControlModifier, 33, 0},
                "p",
                0x30,
                'p',
                {"P"}},
        KeyCase{"ctrl digit",
                {Qt::Key_2, QString(QChar(0)), Qt::ControlModifier, 11, 0},
                "2",
                0x13,
                '2',
                {"2"}},
        KeyCase{"US ctrl shift digit",
                {Qt::Key_At, QString(QChar(0)), Qt::ControlModifier | Qt::ShiftModifier, 11, 0},
                "@",
                0x13,
                '2',
                {"@", "2"}},
        KeyCase{"French digit row",
                {Qt::Key_Ampersand, Text("&"), Qt::ControlModifier, 10, 0},
                "&",
                0x12,
                '&',
                {"&", "1"}},
        KeyCase{"French letters stay where they are printed",
                {Qt::Key_A, Text("\x01"), Qt::ControlModifier, 24, 0},
                "a",
                0x27,
                'a',
                {"A"}},
        KeyCase{"Cyrillic letter falls back to the position",
                {0x417, Text("з"), Qt::ControlModifier, 33, 0},
                "з",
                0x30,
                0x437,
                {"З", "P"}},
        KeyCase{"German at",
                {Qt::Key_At, Text("@"), Qt::GroupSwitchModifier, 24, 0},
                "@",
                0x27,
                '@',
                {"@"}},
        KeyCase{"slash with ctrl",
                {Qt::Key_Slash, Text("\x1f"), Qt::ControlModifier, 61, 0},
                "/",
                0x55,
                '/',
                {"/"}},
        KeyCase{
            "return", {Qt::Key_Return, Text("\r"), {}, 36, 0}, Byte(B_ENTER), 0x47, B_ENTER, {}},
        KeyCase{"keypad enter",
                {Qt::Key_Enter, Text("\r"), Qt::KeypadModifier, 104, 0},
                Byte(B_ENTER),
                0x5b,
                B_ENTER,
                {}},
        KeyCase{"backtab",
                {Qt::Key_Backtab, {}, Qt::ShiftModifier, 23, 0},
                Byte(B_TAB),
                0x26,
                B_TAB,
                {}},
        KeyCase{"delete", {Qt::Key_Delete, Text("\x7f"), {}, 119, 0}, "\x7f", 0x34, 0x7f, {}},
        KeyCase{"keypad delete has no text",
                {Qt::Key_Delete, {}, Qt::KeypadModifier, 91, 0},
                "\x7f",
                0x65,
                0x7f,
                {}},
        KeyCase{"F1", {Qt::Key_F1, {}, {}, 67, 0}, Byte(B_FUNCTION_KEY), B_F1_KEY, 0, {}},
        KeyCase{"shift F6",
                {Qt::Key_F6, {}, Qt::ShiftModifier, 72, 0},
                Byte(B_FUNCTION_KEY),
                B_F6_KEY,
                0,
                {}},
        KeyCase{"F12", {Qt::Key_F12, {}, {}, 96, 0}, Byte(B_FUNCTION_KEY), B_F12_KEY, 0, {}},
        KeyCase{"keypad plus with ctrl",
                {Qt::Key_Plus, Text("+"), Qt::KeypadModifier | Qt::ControlModifier, 86, 0},
                "+",
                0x3a,
                '+',
                {"+"}},
        KeyCase{"keypad digit",
                {Qt::Key_7, Text("7"), Qt::KeypadModifier, 79, 0},
                "7",
                0x37,
                '7',
                {"7"}},
        KeyCase{"keypad arrow",
                {Qt::Key_Up, {}, Qt::KeypadModifier, 80, 0},
                Byte(B_UP_ARROW),
                0x38,
                B_UP_ARROW,
                {}},
        KeyCase{"menu key is known elsewhere", {Qt::Key_Menu, {}, {}, 147, 0}, "", 0x68, 0, {}},
        KeyCase{"its place may have another", {Qt::Key_Multi_key, {}, {}, 135, 0}, "", 0, 0, {}},
        KeyCase{"menu key has no character", {Qt::Key_Menu, {}, {}, 135, 0}, "", 0x68, 0, {}},
        KeyCase{"space", {Qt::Key_Space, Text(" "), {}, 65, 0}, " ", 0x5e, ' ', {}},
        KeyCase{"umlaut", {0xe4 - 0x20, Text("ä"), {}, 48, 0}, "ä", 0x46, 0xe4, {"Ä"}},
        KeyCase{"unknown position", {Qt::Key_B, Text("b"), {}, 0, 0}, "b", 0, 'b', {"B"}}),
    [](const ::testing::TestParamInfo<KeyCase>& tested) {
        std::string name = tested.param.name;
        for (char& letter : name) {
            letter = letter == ' ' ? '_' : letter;
        }
        return name;
    });

TEST(KeyNumberTest, IsZeroForPositionsOutsideTheTable)
{
    EXPECT_EQ(KeyNumber(0), 0);
    EXPECT_EQ(KeyNumber(8), 0);
    EXPECT_EQ(KeyNumber(136), 0);
    EXPECT_EQ(KeyNumber(0xffffffff), 0);
}

TEST(KeyCodeTest, TellsKeysWithoutPositionApart)
{
    const NativeKey left{Qt::Key_Left, {}, {}, 0, 0};
    const NativeKey right{Qt::Key_Right, {}, {}, 0, 0};

    EXPECT_NE(kits::KeyCode(left), kits::KeyCode(right));
}

TEST(ModifierSidesTest, NamesTheSideThatIsHeld)
{
    ModifierSides sides;

    sides.Changed(105, true); // right Ctrl

    EXPECT_EQ(sides.Modifiers(Qt::ControlModifier, 0),
              uint32{B_COMMAND_KEY | B_CONTROL_KEY | B_RIGHT_COMMAND_KEY | B_RIGHT_CONTROL_KEY});
    EXPECT_EQ(sides.Modifiers(Qt::NoModifier, 0), 0u);
}

TEST(ModifierSidesTest, ReportsModifiersWhoseKeyWasNotSeen)
{
    const ModifierSides sides;

    EXPECT_EQ(sides.Modifiers(Qt::ShiftModifier | Qt::AltModifier, 0),
              uint32{B_SHIFT_KEY | B_OPTION_KEY});
}

TEST(ModifierSidesTest, ReadsTheLocksFromTheNativeBits)
{
    const ModifierSides sides;

    EXPECT_EQ(sides.Modifiers(Qt::NoModifier, 0x12), uint32{B_CAPS_LOCK | B_NUM_LOCK});
}
