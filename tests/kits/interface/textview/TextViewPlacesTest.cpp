#include "TextViewFixture.h"

#include <Region.h>
#include <TextControl.h>

namespace {

using namespace kits::testing;

class TextViewPlacesTest : public TextViewFixture
{
};

TEST_F(TextViewPlacesTest, GoesToALineAndNoFurther)
{
    ShowText("one\ntwo\nthree");

    Locked([this] {
        fView->GoToLine(1);
        return 0;
    });
    EXPECT_EQ(Selection(), "4-4");
    EXPECT_EQ(Locked([this] { return fView->CurrentLine(); }), 1);

    Locked([this] {
        fView->GoToLine(99);
        return 0;
    });
    EXPECT_EQ(Selection(), "8-8");
    Locked([this] {
        fView->GoToLine(-1);
        return 0;
    });
    EXPECT_EQ(Selection(), "0-0");
}

TEST_F(TextViewPlacesTest, FindsLinesByTheirHeightAndTellsTheirWidth)
{
    AddText("i\n\nwide line");
    const float height = fView->LineHeight();

    EXPECT_EQ(fView->LineAt(BPoint(0, -50)), 0);
    EXPECT_EQ(fView->LineAt(BPoint(500, 2 + height * 1.5f)), 1);
    EXPECT_EQ(fView->LineAt(BPoint(0, 9999)), 2);
    EXPECT_EQ(fView->LineWidth(1), 0);
    EXPECT_GT(fView->LineWidth(2), fView->LineWidth(0));
    EXPECT_EQ(fView->LineWidth(3), 0);
    EXPECT_EQ(fView->LineWidth(-1), 0);
}

TEST_F(TextViewPlacesTest, TellsTheRegionOfARun)
{
    AddText("first\nsecond");
    BRegion region(BRect(0, 0, 500, 500));

    fView->GetTextRegion(2, 8, &region);

    const float height = fView->LineHeight();
    const BPoint start = fView->PointAt(2);
    const BPoint end = fView->PointAt(8);
    EXPECT_TRUE(region.Contains(start + BPoint(1, 1)));
    EXPECT_FALSE(region.Contains(BPoint(start.x - 2, start.y + 1)));
    EXPECT_TRUE(region.Contains(BPoint(end.x - 2, end.y + 1)));
    EXPECT_FALSE(region.Contains(BPoint(end.x + 2, end.y + 1)));
    EXPECT_EQ(region.Frame().bottom, end.y + height - 1);

    fView->GetTextRegion(4, 4, &region);
    EXPECT_TRUE(region.IsEmpty());
}

TEST_F(TextViewPlacesTest, TellsBytesInsideTheText)
{
    AddText("a\xffz");

    EXPECT_EQ(fView->ByteAt(1), 0xff);
    EXPECT_EQ(fView->ByteAt(3), 0);
    EXPECT_EQ(fView->ByteAt(-1), 0);
}

TEST_F(TextViewPlacesTest, TabsReachAsFarAsTheirWidth)
{
    AddText("\tx");

    fView->SetTabWidth(80);
    EXPECT_EQ(fView->TabWidth(), 80);
    const float near = fView->PointAt(1).x;
    fView->SetTabWidth(120);

    EXPECT_EQ(fView->PointAt(1).x, near + 40);
}

TEST_F(TextViewPlacesTest, RemovesTheSelectionOfAnEditableText)
{
    ShowText("one two");
    Select(3, 7);
    Locked([this] {
        fView->MakeEditable(false);
        fView->Clear();
        return 0;
    });
    EXPECT_EQ(Text(), "one two");

    Locked([this] {
        fView->MakeEditable(true);
        fView->Clear();
        return 0;
    });
    EXPECT_EQ(Text(), "one");
    EXPECT_TRUE(Locked([this] { return fView->CanUndo(); }));
    EXPECT_FALSE(Locked([this] { return fView->CanRedo(); }));

    Locked([this] {
        fView->Undo();
        return 0;
    });
    EXPECT_EQ(Text(), "one two");
    EXPECT_TRUE(Locked([this] { return fView->CanRedo(); }));

    Select(0, 4);
    Locked([this] {
        fView->Delete();
        return 0;
    });
    EXPECT_EQ(Text(), "two");
}

TEST_F(TextViewPlacesTest, KeepsNoStepsUnlessItDoesUndo)
{
    ShowText("");
    TypeText("a");
    ASSERT_EQ(Text(), "a");
    EXPECT_TRUE(Locked([this] { return fView->DoesUndo() && fView->CanUndo(); }));

    Locked([this] {
        fView->SetDoesUndo(false);
        return 0;
    });
    TypeText("b");

    EXPECT_EQ(Text(), "ab");
    EXPECT_FALSE(Locked([this] { return fView->DoesUndo() || fView->CanUndo(); }));
}

TEST_F(TextViewPlacesTest, IndentsAsTheLineAbove)
{
    ShowText("  a");
    Select(3, 3);
    EXPECT_FALSE(Locked([this] { return fView->DoesAutoindent(); }));

    Locked([this] {
        fView->SetAutoindent(true);
        return 0;
    });
    TypeKey(B_ENTER);

    EXPECT_TRUE(Locked([this] { return fView->DoesAutoindent(); }));
    EXPECT_EQ(Text(), "  a\n  ");
}

TEST_F(TextViewPlacesTest, TellsItsLimitAndItsWrapping)
{
    AddText("");
    EXPECT_EQ(fView->MaxBytes(), INT32_MAX);
    EXPECT_FALSE(fView->DoesWordWrap());

    fView->SetMaxBytes(12);
    fView->SetWordWrap(true);

    EXPECT_EQ(fView->MaxBytes(), 12);
    EXPECT_TRUE(fView->DoesWordWrap());
}

TEST_F(ControlTest, TextControlTellsHowItWasSetUp)
{
    auto* control = Add(
        new BTextControl(BRect(0, 0, 199, 19), "control", "Label", "text", new BMessage('tesi')));
    EXPECT_EQ(control->TextLength(), 4);
    EXPECT_EQ(control->ModificationMessage(), nullptr);
    auto* modified = new BMessage('tesm');

    control->SetModificationMessage(modified);
    control->SetAlignment(B_ALIGN_RIGHT, B_ALIGN_CENTER);

    alignment label = B_ALIGN_LEFT;
    alignment text = B_ALIGN_LEFT;
    control->GetAlignment(&label, &text);
    EXPECT_EQ(label, B_ALIGN_RIGHT);
    EXPECT_EQ(text, B_ALIGN_CENTER);
    EXPECT_EQ(control->ModificationMessage(), modified);
    control->GetAlignment(nullptr, nullptr);
}

} // namespace
