#include "PaneWindowFixture.h"
#include "panes/EditControl.h"

#include <InterfaceDefs.h>

namespace norvane {

using kits::testing::AnswerAlert;
using kits::testing::TypeFunctionKey;
using kits::testing::TypeKey;
using kits::testing::TypeText;
using kits::testing::WaitFor;

/// A name that could not be given: what was typed is not lost.
class RenameRefusedTest : public PaneWindowFixture
{
protected:
    bool HasField()
    {
        return Locked([this] { return fList->FindView("renamecontainer") != nullptr; });
    }

    bool FieldOpens()
    {
        return WaitFor([this] {
            return Locked(
                [this] { return dynamic_cast<EditControl*>(fWindow->CurrentFocus()) != nullptr; });
        });
    }

    void StartRename(int32 row)
    {
        Click(row);
        TypeFunctionKey(B_F6_KEY, B_SHIFT_KEY);
        ASSERT_TRUE(FieldOpens());
    }
};

TEST_F(RenameRefusedTest, WhatWasTypedStaysAfterARefusal)
{
    fTree.Write("shown/a", "1");
    fTree.Write("shown/long", "2");
    Open();
    StartRename(1);
    TypeText("long");
    TypeKey(B_LEFT_ARROW, B_SHIFT_KEY); // "g" is selected
    TypeKey(B_ENTER);
    ASSERT_TRUE(AnswerAlert("OK"));
    ASSERT_TRUE(FieldOpens());
    TypeText("er");
    TypeKey(B_ENTER);
    EXPECT_TRUE(WaitFor([this] { return fTree.List("shown") == "loner\nlong\n"; }));
    EXPECT_TRUE(WaitFor([this] { return !HasField(); }));
    EXPECT_TRUE(Locked([this] { return fWindow->CurrentFocus() == fList; }));
}

TEST_F(RenameRefusedTest, WhatIsNoNameStaysToBeChanged)
{
    fTree.Write("shown/a", "1");
    Open();
    StartRename(1);
    TypeText("x/y");
    TypeKey(B_ENTER);
    ASSERT_TRUE(AnswerAlert("OK"));
    ASSERT_TRUE(FieldOpens());
    TypeKey(B_BACKSPACE);
    TypeKey(B_BACKSPACE);
    TypeText("z");
    TypeKey(B_ENTER);
    EXPECT_TRUE(WaitFor([this] { return fTree.List("shown") == "xz\n"; }));
}

TEST_F(RenameRefusedTest, OfARowThatWentNothingIsOpened)
{
    fTree.Write("shown/a", "1");
    Open();
    StartRename(1);
    fTree.Remove("shown/a");
    ASSERT_TRUE(Becomes([this] { return Names(); }, ".. "));
    EXPECT_FALSE(HasField());
}

} // namespace norvane
