#include "panes/PaneGestures.h"

#include "PaneRowsFixture.h"

#include <InterfaceDefs.h>

namespace {

using namespace norvane;

class PaneGesturesTest : public PaneRowsFixture
{
protected:
    void SetUp() override
    {
        PaneRowsFixture::SetUp();
        fMarks = std::make_unique<PaneMarks>(*fRows);
        fGestures = std::make_unique<PaneGestures>(*fRows, *fMarks);
        Fill({}, {"a", "b", "c", "d"});
    }

    bool Press(int32 index, uint32 modifiers = 0, uint32 buttons = B_PRIMARY_MOUSE_BUTTON)
    {
        return fGestures->Pressed(fHere, index, modifiers, buttons);
    }

    void Click(int32 index)
    {
        EXPECT_TRUE(Press(index));
        fGestures->Released();
    }

    std::string Marked() const
    {
        std::string names;
        for (const DirListItem* row : fMarks->List().Rows()) {
            names += row->GetEntryName() + std::string(" ");
        }
        return names;
    }

    void RowsLeave(const std::vector<DirListItem*>& rows) override
    {
        fMarks->Forget(rows);
        for (const DirListItem* row : rows) {
            fGestures->Forget(row);
        }
    }

    const BPoint fHere{50, 50};
    std::unique_ptr<PaneMarks> fMarks;
    std::unique_ptr<PaneGestures> fGestures;
};

TEST_F(PaneGesturesTest, CommandMarksTheAnchorAndTheRow)
{
    Click(1);
    EXPECT_FALSE(Press(3, B_COMMAND_KEY));
    EXPECT_EQ(Marked(), "a c ");
    EXPECT_FALSE(Press(3, B_COMMAND_KEY));
    EXPECT_EQ(Marked(), "a ");
}

TEST_F(PaneGesturesTest, ShiftMarksFromTheAnchorOn)
{
    EXPECT_FALSE(Press(3, B_SHIFT_KEY));
    EXPECT_EQ(Marked(), "");
    Click(4);
    EXPECT_FALSE(Press(2, B_SHIFT_KEY));
    EXPECT_EQ(Marked(), "b c d ");
}

TEST_F(PaneGesturesTest, AReleaseInPlaceEmptiesTheMarks)
{
    fMarks->Mark(1, 3);
    EXPECT_TRUE(Press(4));
    fGestures->Moved(BPoint(60, 40), B_PRIMARY_MOUSE_BUTTON);
    fGestures->Released();
    EXPECT_EQ(Marked(), "");
}

TEST_F(PaneGesturesTest, AReleaseInPlaceIsTheNextAnchor)
{
    Click(1);
    EXPECT_FALSE(Press(2, B_COMMAND_KEY));
    Click(4);
    EXPECT_FALSE(Press(3, B_SHIFT_KEY));
    EXPECT_EQ(Marked(), "c d ");
}

TEST_F(PaneGesturesTest, ACommandClickIsTheNextAnchor)
{
    Click(1);
    EXPECT_FALSE(Press(3, B_COMMAND_KEY));
    EXPECT_FALSE(Press(4, B_SHIFT_KEY));
    EXPECT_EQ(Marked(), "a c d ");
}

TEST_F(PaneGesturesTest, APressThatMovesAwayIsNoAnchor)
{
    Click(1);
    EXPECT_FALSE(Press(2, B_COMMAND_KEY));
    EXPECT_TRUE(Press(4));
    fGestures->Moved(BPoint(61, 50), B_PRIMARY_MOUSE_BUTTON);
    fGestures->Released();
    EXPECT_FALSE(Press(3, B_SHIFT_KEY));
    EXPECT_EQ(Marked(), "a b c ");
}

TEST_F(PaneGesturesTest, APressThatMovesAwayKeepsThem)
{
    fMarks->Mark(1, 3);
    EXPECT_TRUE(Press(4));
    fGestures->Moved(BPoint(61, 50), B_PRIMARY_MOUSE_BUTTON);
    fGestures->Moved(fHere, B_PRIMARY_MOUSE_BUTTON);
    fGestures->Released();
    EXPECT_EQ(Marked(), "a b c ");
}

TEST_F(PaneGesturesTest, TheSecondaryButtonReleasedInPlaceAsksForAMenu)
{
    EXPECT_TRUE(Press(2, 0, B_SECONDARY_MOUSE_BUTTON));
    EXPECT_EQ(fGestures->Released(), std::optional(fRows->RowAt(2)));
    EXPECT_EQ(fGestures->Released(), std::nullopt); // once

    EXPECT_TRUE(Press(-1, 0, B_SECONDARY_MOUSE_BUTTON)); // beside the rows: of the place
    EXPECT_EQ(fGestures->Released(), std::optional<DirListItem*>(nullptr));
}

TEST_F(PaneGesturesTest, OtherPressesAskForNone)
{
    for (const uint32 buttons : {uint32{B_PRIMARY_MOUSE_BUTTON}, uint32{B_TERTIARY_MOUSE_BUTTON},
                                 uint32{B_PRIMARY_MOUSE_BUTTON | B_SECONDARY_MOUSE_BUTTON}}) {
        EXPECT_TRUE(Press(2, 0, buttons));
        EXPECT_EQ(fGestures->Released(), std::nullopt);
    }
    EXPECT_TRUE(Press(2, 0, B_SECONDARY_MOUSE_BUTTON));
    fGestures->Moved(BPoint(61, 50), B_SECONDARY_MOUSE_BUTTON);
    EXPECT_EQ(fGestures->Released(), std::nullopt);

    EXPECT_TRUE(Press(2, 0, B_SECONDARY_MOUSE_BUTTON));
    fRows->Remove(fRows->RowAt(2)); // that it was about
    EXPECT_EQ(fGestures->Released(), std::nullopt);
}

TEST_F(PaneGesturesTest, OtherButtonsMarkNothing)
{
    Click(1);
    EXPECT_TRUE(Press(3, B_COMMAND_KEY, B_SECONDARY_MOUSE_BUTTON));
    EXPECT_TRUE(Press(3, B_SHIFT_KEY, B_SECONDARY_MOUSE_BUTTON));
    EXPECT_EQ(Marked(), "");
}

TEST_F(PaneGesturesTest, BesideTheRowsNothingIsMarked)
{
    Click(1);
    EXPECT_FALSE(Press(-1, B_COMMAND_KEY));
    EXPECT_FALSE(Press(-1, B_SHIFT_KEY));
    EXPECT_EQ(Marked(), "");
    Click(-1);
    EXPECT_FALSE(Press(2, B_SHIFT_KEY));
    EXPECT_EQ(Marked(), "");
}

TEST_F(PaneGesturesTest, TheAnchorGoesWithItsRow)
{
    Click(2);
    fRows->Remove(Row("b"));
    EXPECT_FALSE(Press(3, B_SHIFT_KEY));
    EXPECT_EQ(Marked(), "");
}

TEST_F(PaneGesturesTest, APressedRowThatGoesIsNoAnchor)
{
    EXPECT_TRUE(Press(2));
    fRows->Remove(Row("b"));
    fGestures->Released();
    EXPECT_FALSE(Press(3, B_SHIFT_KEY));
    EXPECT_EQ(Marked(), "");
}

} // namespace
