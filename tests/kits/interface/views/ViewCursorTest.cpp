#include "WindowFixture.h"

#include <Cursor.h>

using kits::PointerShape;
using kits::testing::MoveMouse;
using kits::testing::PointerOver;
using kits::testing::PressMouse;
using kits::testing::ReleaseMouse;

namespace {

constexpr BCursor kEdge(B_CURSOR_ID_RESIZE_EAST_WEST);

/// Two views side by side: one with a pointer of its own, one without.
class ViewCursorTest : public WindowFixture
{
protected:
    void SetUp() override
    {
        WindowFixture::SetUp();
        fPlain = Add(BRect(0, 0, 49, 99), "plain");
        fText = Add(BRect(50, 0, 99, 99), "text");
        fText->SetViewCursor(B_CURSOR_I_BEAM);
        Show();
    }

    PointerShape ShapeAt(BView* view, BPoint where)
    {
        MoveMouse(view, where);
        return PointerOver(fWindow);
    }

    const BPoint fInside{10, 10};
    NotingView* fPlain = nullptr;
    NotingView* fText = nullptr;
};

TEST_F(ViewCursorTest, TheViewBelowGivesThePointerItsShape)
{
    EXPECT_EQ(ShapeAt(fText, fInside), PointerShape::kText);
    EXPECT_EQ(ShapeAt(fPlain, fInside), PointerShape::kArrow);
    EXPECT_EQ(ShapeAt(fText, fInside), PointerShape::kText);
    EXPECT_EQ(ShapeAt(fText, BPoint(120, 10)), PointerShape::kArrow); // beside both
}

TEST_F(ViewCursorTest, AnotherShapeShowsAtOnceUnderThePointerAndNowhereElse)
{
    EXPECT_EQ(ShapeAt(fText, fInside), PointerShape::kText);
    Locked([&] { fPlain->SetViewCursor(&kEdge); });
    EXPECT_EQ(PointerOver(fWindow), PointerShape::kText);
    Locked([&] { fText->SetViewCursor(&kEdge); });
    EXPECT_EQ(PointerOver(fWindow), PointerShape::kResizeHorizontal);
    Locked([&] { fText->SetViewCursor(B_CURSOR_SYSTEM_DEFAULT); });
    EXPECT_EQ(PointerOver(fWindow), PointerShape::kArrow);
    Locked([&] { fText->SetViewCursor(&kEdge); });
    Locked([&] { fText->SetViewCursor(nullptr); });
    EXPECT_EQ(PointerOver(fWindow), PointerShape::kArrow);
}

TEST_F(ViewCursorTest, TheViewThatHasTheMouseKeepsItsShapeWhereverThePointerGoes)
{
    fText->takesMouse = true;
    PressMouse(fText, fInside);
    EXPECT_EQ(ShapeAt(fPlain, fInside), PointerShape::kText);
    ReleaseMouse(fPlain, fInside);
    EXPECT_EQ(PointerOver(fWindow), PointerShape::kArrow);
}

TEST_F(ViewCursorTest, AViewThatGoesOrHidesGivesTheShapeBack)
{
    EXPECT_EQ(ShapeAt(fText, fInside), PointerShape::kText);
    Locked([&] { fText->Hide(); });
    EXPECT_EQ(PointerOver(fWindow), PointerShape::kArrow);
    Locked([&] { fText->Show(); });
    EXPECT_EQ(ShapeAt(fText, BPoint(20, 20)), PointerShape::kText);
    Locked([&] {
        fText->RemoveSelf();
        delete fText;
    });
    EXPECT_EQ(PointerOver(fWindow), PointerShape::kArrow);
}

} // namespace
