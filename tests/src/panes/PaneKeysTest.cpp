#include "panes/PaneKeys.h"

#include "PaneRowsFixture.h"
#include "panes/PaneMarks.h"

#include <InterfaceDefs.h>
#include <Message.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace norvane;

struct KeyCase
{
    const char* name;
    std::string bytes;
    int32 functionKey;
    uint32 modifiers;
    PaneCommand command;
    bool isUsedUp;
    PaneCommand heldCommand; // when the key repeats
};

void PrintTo(const KeyCase& value, std::ostream* out)
{
    *out << value.name;
}

class PaneKeysTest : public ::testing::TestWithParam<KeyCase>
{
};

TEST_P(PaneKeysTest, HasItsMeaning)
{
    const KeyCase& param = GetParam();
    KeyPress key{param.bytes.c_str(), static_cast<int32>(param.bytes.size()), param.functionKey,
                 param.modifiers, false};
    EXPECT_EQ(MeaningOf(key).command, param.command);
    EXPECT_EQ(MeaningOf(key).isUsedUp, param.isUsedUp);
    key.isRepeat = true;
    EXPECT_EQ(MeaningOf(key).command, param.heldCommand);
    EXPECT_EQ(MeaningOf(key).isUsedUp, param.isUsedUp);
}

using enum PaneCommand;
const std::string kFunction(1, B_FUNCTION_KEY);

INSTANTIATE_TEST_SUITE_P(
    Keys, PaneKeysTest,
    ::testing::Values(
        KeyCase{"Delete", {B_DELETE}, 0, 0, kTrash, false, kNone},
        KeyCase{"Backspace", {B_BACKSPACE}, 0, 0, kUp, false, kUp},
        KeyCase{"Escape", {B_ESCAPE}, 0, 0, kStop, false, kNone},
        KeyCase{"Space", " ", 0, 0, kMarkAndMeasure, true, kMarkAndMeasure},
        KeyCase{"Insert", {B_INSERT}, 0, 0, kMarkAndGoOn, true, kMarkAndGoOn},
        KeyCase{"Star", "*", 0, 0, kToggleMarks, true, kToggleMarks},
        KeyCase{"Plus", "+", 0, 0, kMarkAll, true, kMarkAll},
        KeyCase{"Minus", "-", 0, 0, kUnmarkAll, true, kUnmarkAll},
        KeyCase{"Letter", "b", 0, 0, kTypeAhead, true, kTypeAhead},
        KeyCase{"OtherScript", "\xc3\xa4", 0, 0, kTypeAhead, true, kTypeAhead},
        KeyCase{"LetterWithCommand", "b", 0, B_COMMAND_KEY, kNone, false, kNone},
        KeyCase{"LetterWithOption", "b", 0, B_OPTION_KEY, kNone, false, kNone},
        KeyCase{"Slash", "/", 0, 0, kFilter, true, kFilter},
        KeyCase{"SlashWithCommand", "/", 0, B_COMMAND_KEY, kNone, false, kNone},
        KeyCase{"PlusWithCommand", "+", 0, B_COMMAND_KEY, kMarkMatching, true, kNone},
        KeyCase{"MinusWithCommand", "-", 0, B_COMMAND_KEY, kUnmarkMatching, true, kNone},
        KeyCase{"ArrowWithShift", {B_DOWN_ARROW}, 0, B_SHIFT_KEY, kMarkTo, true, kMarkTo},
        KeyCase{"EndWithShift", {B_END}, 0, B_SHIFT_KEY, kMarkTo, true, kMarkTo},
        KeyCase{"ArrowWithShiftAndCommand",
                {B_DOWN_ARROW},
                0,
                B_SHIFT_KEY | B_COMMAND_KEY,
                kNone,
                false,
                kNone},
        KeyCase{"Enter", {B_ENTER}, 0, 0, kNone, false, kNone},
        KeyCase{"Arrow", {B_DOWN_ARROW}, 0, 0, kNone, false, kNone},
        KeyCase{"F1", kFunction, B_F1_KEY, 0, kHelp, false, kHelp},
        KeyCase{"F2", kFunction, B_F2_KEY, 0, kRefresh, false, kRefresh},
        KeyCase{"F3", kFunction, B_F3_KEY, 0, kLister, false, kNone},
        KeyCase{"F4", kFunction, B_F4_KEY, 0, kEditor, false, kNone},
        KeyCase{"F5", kFunction, B_F5_KEY, 0, kCopy, false, kNone},
        KeyCase{"F6", kFunction, B_F6_KEY, 0, kMove, false, kNone},
        KeyCase{"F6WithShift", kFunction, B_F6_KEY, B_SHIFT_KEY, kRename, false, kNone},
        KeyCase{"F7", kFunction, B_F7_KEY, 0, kNewFolder, false, kNone},
        KeyCase{"F7WithControl", kFunction, B_F7_KEY, B_CONTROL_KEY, kQuery, false, kNone},
        KeyCase{"F8", kFunction, B_F8_KEY, 0, kTrash, false, kNone},
        KeyCase{"F12", kFunction, B_F12_KEY, 0, kNone, false, kNone}),
    [](const auto& tested) { return std::string(tested.param.name); });

/// What keys do to the rows, and what they ask of the list.
class PaneKeysActionTest : public PaneRowsFixture, public KeyTarget
{
protected:
    void SetUp() override
    {
        PaneRowsFixture::SetUp();
        fMarks = std::make_unique<PaneMarks>(*fRows);
        fKeys = std::make_unique<PaneKeys>(*fList, *fRows, *fMarks, *this);
        Fill({}, {"a", "b", "c"});
    }

    bool Key(const std::string& bytes, int32 functionKey = 0)
    {
        return fKeys->KeyDown(
            {bytes.c_str(), static_cast<int32>(bytes.size()), functionKey, 0, false});
    }

    std::string Marked() const
    {
        std::string names;
        for (const DirListItem* row : fMarks->List().Rows()) {
            names += row->GetEntryName();
        }
        return names;
    }

    // KeyTarget
    bool CancelWork() override { return false; }
    void Trash() override { fAsked += "trash "; }
    void NavigateUp() override { fAsked += "up "; }
    void GoBack() override { fAsked += "back "; }
    void GoForward() override { fAsked += "forward "; }
    int64 GetSize() override
    {
        fAsked += "size ";
        return 0;
    }
    void Refresh() override { fAsked += "refresh "; }
    void DoRename() override { fAsked += "rename "; }
    void OpenLister() override { fAsked += "lister "; }
    void OpenEditor() override { fAsked += "editor "; }
    BMessage* GetRefMsg(int32) override { return nullptr; }
    void NotifyParent(uint32 code) override { fAsked += std::to_string(code) + " "; }
    void OpenFilter() override { fAsked += "filter "; }
    bool EndFilter() override
    {
        fAsked += "all ";
        return true;
    }

    std::unique_ptr<PaneMarks> fMarks;
    std::unique_ptr<PaneKeys> fKeys;
    std::string fAsked;
};

TEST_F(PaneKeysActionTest, AskTheListForWhatItDoes)
{
    EXPECT_FALSE(Key({B_DELETE}));
    EXPECT_FALSE(Key({B_BACKSPACE}));
    EXPECT_FALSE(Key(kFunction, B_F1_KEY));
    EXPECT_FALSE(Key(kFunction, B_F2_KEY));
    EXPECT_FALSE(Key(kFunction, B_F3_KEY));
    EXPECT_FALSE(Key(kFunction, B_F4_KEY));
    EXPECT_FALSE(Key(kFunction, B_F8_KEY));
    EXPECT_FALSE(Key(kFunction, B_F5_KEY)); // nothing is chosen and nobody is there to be told
    EXPECT_EQ(fAsked, "trash up 140 refresh lister editor trash ");
}

TEST_F(PaneKeysActionTest, MarkWithoutTheParentRow)
{
    EXPECT_TRUE(Key("+"));
    EXPECT_EQ(Marked(), "abc");
    EXPECT_TRUE(Key("-"));
    EXPECT_EQ(Marked(), "");
    fList->Select(0);
    EXPECT_TRUE(Key(" "));
    EXPECT_EQ(Marked(), "");
    EXPECT_EQ(fAsked, "size ");
}

TEST_F(PaneKeysActionTest, InsertMarksAndGoesOn)
{
    fList->Select(2);
    EXPECT_TRUE(Key({B_INSERT}));
    EXPECT_TRUE(Key({B_INSERT}));
    EXPECT_TRUE(Key({B_INSERT})); // on the last row it stays, and unmarks
    EXPECT_EQ(Marked(), "b");
    EXPECT_EQ(fList->CurrentSelection(), 3);
}

TEST_F(PaneKeysActionTest, LettersSelect)
{
    EXPECT_TRUE(Key("c"));
    EXPECT_EQ(fList->CurrentSelection(), 3);
    EXPECT_TRUE(Key("x"));
    EXPECT_EQ(fList->CurrentSelection(), 3);
}

} // namespace
