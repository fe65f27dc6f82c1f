#include "app/MenuTable.h"

#include "CaseName.h"

#include <AppDefs.h>
#include <InterfaceDefs.h>

#include <gtest/gtest.h>

#include <ostream>
#include <set>
#include <string>

namespace norvane {

namespace {

const MenuLine* Find(const char* label)
{
    for (const MenuColumn& column : MainMenus()) {
        for (const MenuLine& line : column.lines) {
            if (line.label != nullptr && std::string(line.label) == label) {
                return &line;
            }
        }
    }
    return nullptr;
}

} // namespace

TEST(MenuTableTest, HasTheMenusInOrder)
{
    std::string labels;
    for (const MenuColumn& column : MainMenus()) {
        labels += std::string(column.label) + "|";
    }
    EXPECT_EQ(labels, "File|Navigation|View|Applications|Windows|Help|Add-Ons|");
}

struct ExpectedLine
{
    const char* label;
    uint32 what;
    char shortcut;
    uint32 modifiers;
};

void PrintTo(const ExpectedLine& line, std::ostream* out)
{
    *out << line.label;
}

class MenuLineTest : public ::testing::TestWithParam<ExpectedLine>
{
};

TEST_P(MenuLineTest, SendsItsCommandByItsShortcut)
{
    const ExpectedLine& expected = GetParam();
    const MenuLine* line = Find(expected.label);
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->what, expected.what);
    EXPECT_EQ(line->shortcut, expected.shortcut);
    EXPECT_EQ(line->modifiers, expected.modifiers);
}

INSTANTIATE_TEST_SUITE_P(
    All, MenuLineTest,
    ::testing::Values(
        ExpectedLine{"Open", 100, 'O', 0}, ExpectedLine{"Rename", 107, 'E', 0},
        ExpectedLine{"New Folder", 106, 'N', 0}, ExpectedLine{"Empty Trash", 108, 0, 0},
        ExpectedLine{"Calculate Occupied Space", 102, 'S', 0}, ExpectedLine{"About", 105, 0, 0},
        ExpectedLine{"Quit", B_QUIT_REQUESTED, 'Q', 0},
        ExpectedLine{"Up a Level", 110, B_UP_ARROW, 0},
        ExpectedLine{"Open in Left Pane", 111, B_LEFT_ARROW, 0},
        ExpectedLine{"Open in Right Pane", 112, B_RIGHT_ARROW, 0},
        ExpectedLine{"Down a Level", 113, B_DOWN_ARROW, 0},
        ExpectedLine{"GoTo Directory", 134, 'G', 0}, ExpectedLine{"Add Pane", 120, 'P', 0},
        ExpectedLine{"Remove Pane", 121, 'P', B_SHIFT_KEY},
        ExpectedLine{"Revert to Default", 122, 'D', 0}, ExpectedLine{"Query", 123, 'U', 0},
        ExpectedLine{"Ftp Connections", 124, 'F', 0},
        ExpectedLine{"Disconnect FTP Connection", 125, 'F', B_SHIFT_KEY},
        ExpectedLine{"Preferences", 135, 'R', 0}, ExpectedLine{"Open Tracker", 130, 'T', 0},
        ExpectedLine{"Open Terminal", 131, 'T', B_SHIFT_KEY}, ExpectedLine{"Pane 1", 1000, '1', 0},
        ExpectedLine{"Pane 9", 1008, '9', 0}, ExpectedLine{"Pane 10", 1009, '0', 0},
        ExpectedLine{"Keybord Help", 140, 0, 0}),
    [](const auto& tested) { return CaseName(tested.param.label); });

TEST(MenuTableTest, NoTwoLinesShareAShortcut)
{
    std::set<std::pair<char, uint32>> shortcuts;
    for (const MenuColumn& column : MainMenus()) {
        for (const MenuLine& line : column.lines) {
            if (line.shortcut != 0) {
                EXPECT_TRUE(shortcuts.insert({line.shortcut, line.modifiers}).second) << line.label;
            }
        }
    }
    EXPECT_EQ(shortcuts.size(), 29u);
}

TEST(MenuTableTest, GroupsTheFileMenu)
{
    std::string shape;
    for (const MenuLine& line : MainMenus()[0].lines) {
        shape += line.label != nullptr ? 'i' : '-';
    }
    EXPECT_EQ(shape, "iiii-i-i-i");
}

} // namespace norvane
