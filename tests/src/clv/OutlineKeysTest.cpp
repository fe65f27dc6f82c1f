#include "ListWindowFixture.h"

#include <AppDefs.h>
#include <Handler.h>
#include <Message.h>

namespace {

using namespace norvane;

/// What arrow keys do in an outline: a(a1(a11) a2) b.
class OutlineKeysTest : public ListWindowFixture
{
protected:
    void OpenTree(bool isHierarchical = true)
    {
        Open(isHierarchical);
        Locked([&] {
            if (isHierarchical) {
                fList->AddColumn(new CLVColumn(nullptr, 20, CLV_EXPANDER));
            }
            fList->AddColumn(new CLVColumn("name", 200));
            fList->Add("a", 0, true);
            fList->Add("a1", 1, true, !isHierarchical);
            fList->Add("a11", 2);
            fList->Add("a2", 1);
            fList->Add("b");
            fList->MakeFocus();
        });
    }

    void Type(char key, uint32 modifiers = 0)
    {
        kits::testing::TypeKey(key, modifiers);
        Settle();
    }

    void Select(int32 row)
    {
        Locked([&] { fList->Select(row); });
    }

    /// The visible rows, and the selected one.
    std::string Shown()
    {
        return Locked([&] {
            const auto* row = static_cast<TestRow*>(fList->ItemAt(fList->CurrentSelection()));
            return fList->Names() + "| " + (row != nullptr ? row->Name() : "nothing");
        });
    }
};

TEST_F(OutlineKeysTest, RightExpandsAndThenGoesIn)
{
    OpenTree();
    Select(1);
    Type(B_RIGHT_ARROW);
    EXPECT_EQ(Shown(), "a a1 a11 a2 b | a1");
    Type(B_RIGHT_ARROW);
    EXPECT_EQ(Shown(), "a a1 a11 a2 b | a11");
    Type(B_RIGHT_ARROW);
    EXPECT_EQ(Shown(), "a a1 a11 a2 b | a11");
}

TEST_F(OutlineKeysTest, LeftCollapsesAndThenGoesOut)
{
    OpenTree();
    Select(2);
    Type(B_LEFT_ARROW);
    EXPECT_EQ(Shown(), "a a1 a2 b | a");
    Type(B_LEFT_ARROW);
    EXPECT_EQ(Shown(), "a b | a");
    Type(B_LEFT_ARROW);
    EXPECT_EQ(Shown(), "a b | a");
}

TEST_F(OutlineKeysTest, UpAndDownGoOnFromThere)
{
    OpenTree();
    Select(2);
    Type(B_LEFT_ARROW);
    Type(B_DOWN_ARROW);
    EXPECT_EQ(Shown(), "a a1 a2 b | a1");
    Type(B_LEFT_ARROW);
    Type(B_LEFT_ARROW);
    Type(B_DOWN_ARROW);
    EXPECT_EQ(Shown(), "a b | b");
}

TEST_F(OutlineKeysTest, ARowThatHidesTheSelectedOneIsSelected)
{
    OpenTree();
    kits::testing::TakePicture(fWindow); // an arrow is where its row was painted
    Select(2);
    const BPoint arrow = Locked([&] {
        const BRect button = fList->rows[0]->ExpanderButtonRect();
        return button.LeftTop() + BPoint(5, 5) + fList->Frame().LeftTop();
    });
    Click(arrow);
    EXPECT_EQ(Shown(), "a b | a");
}

TEST_F(OutlineKeysTest, WithModifiersOrWithoutASelectionNothingHappens)
{
    OpenTree();
    Type(B_LEFT_ARROW);
    EXPECT_EQ(Shown(), "a a1 a2 b | nothing");
    Select(0);
    Type(B_LEFT_ARROW, B_SHIFT_KEY);
    Type(B_LEFT_ARROW, B_COMMAND_KEY);
    EXPECT_EQ(Shown(), "a a1 a2 b | a");
}

/// Notes the keys that a list leaves to others.
class KeyNotes : public BHandler
{
public:
    void MessageReceived(BMessage* message) override
    {
        count += message->what == B_KEY_DOWN ? 1 : 0;
    }

    int count = 0;
};

TEST_F(OutlineKeysTest, AFlatListLeavesTheKeysToOthers)
{
    OpenTree(false);
    KeyNotes others;
    Locked([&] {
        fWindow->AddHandler(&others);
        fList->SetNextHandler(&others);
    });
    Select(1);
    Type(B_LEFT_ARROW);
    Type(B_RIGHT_ARROW);
    EXPECT_EQ(Shown(), "a a1 a11 a2 b | a1");
    Locked([&] {
        EXPECT_EQ(others.count, 2);
        fList->SetNextHandler(fList->Parent());
        fWindow->RemoveHandler(&others);
    });
}

} // namespace
