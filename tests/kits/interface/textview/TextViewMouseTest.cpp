#include "TextViewFixture.h"

#include <ScrollView.h>

#include <testing/Native.h>

#include <QCursor>
#include <QWindow>

#include <string>

namespace {

using namespace kits::testing;

using TextViewMouseTest = TextViewFixture;

TEST_F(TextViewMouseTest, ClickSetsTheCaretAndTakesTheFocus)
{
    AddText("one two");
    Show();

    Click(fView, Inside(4));

    EXPECT_TRUE(Locked([this] { return fView->IsFocus(); }));
    EXPECT_EQ(Selection(), "4-4");
}

TEST_F(TextViewMouseTest, DoubleClickTakesTheWordAndTripleClickTheLine)
{
    ShowText("one two\nnext");

    Click(fView, Inside(5), B_PRIMARY_MOUSE_BUTTON, 2);
    EXPECT_EQ(Selection(), "4-7");

    Click(fView, Inside(1), B_PRIMARY_MOUSE_BUTTON, 3);
    EXPECT_EQ(Selection(), "0-8");
}

TEST_F(TextViewMouseTest, DraggingSelectsBothWays)
{
    ShowText("one two three");

    Drag(fView, Inside(4), Inside(7));
    EXPECT_EQ(Selection(), "4-7");

    Drag(fView, Inside(7), Inside(4));
    EXPECT_EQ(Selection(), "4-7");
    TypeKey(B_RIGHT_ARROW, B_SHIFT_KEY); // the caret is at the left
    EXPECT_EQ(Selection(), "5-7");
}

TEST_F(TextViewMouseTest, DraggingFromADoubleClickTakesWholeWords)
{
    ShowText("one two three");

    Click(fView, Inside(5), B_PRIMARY_MOUSE_BUTTON, 1);
    PressMouse(fView, Inside(5));
    MoveMouse(fView, Inside(9));
    EXPECT_EQ(Selection(), "4-13");
    MoveMouse(fView, Inside(1));
    ReleaseMouse(fView, Inside(1));
    EXPECT_EQ(Selection(), "0-7");
}

TEST_F(TextViewMouseTest, ShiftClickExtends)
{
    ShowText("one two three");
    Click(fView, Inside(4));

    Click(fView, Inside(8), B_PRIMARY_MOUSE_BUTTON, 1, B_SHIFT_KEY);
    EXPECT_EQ(Selection(), "4-8");
    Click(fView, Inside(1), B_PRIMARY_MOUSE_BUTTON, 1, B_SHIFT_KEY);
    EXPECT_EQ(Selection(), "1-4");
}

TEST_F(TextViewMouseTest, DraggingOutsideScrolls)
{
    std::string lines;
    for (int i = 0; i < 100; ++i) {
        lines += "line\n";
    }
    ShowText(lines.c_str());

    PressMouse(fView, Inside(1));
    MoveMouse(fView, BPoint(20, 160));
    const bool hasScrolled =
        WaitFor([this] { return Locked([this] { return fView->Bounds().top > 60; }); });
    ReleaseMouse(fView, BPoint(20, 160));

    EXPECT_TRUE(hasScrolled);
}

TEST_F(TextViewMouseTest, PointerTellsThatThereIsText)
{
    ShowText("one");
    const auto shape = [this] {
        Sync(fWindow);
        SyncServer();
        Qt::CursorShape found = Qt::BlankCursor;
        OnServer([&] { found = NativeOf(fWindow)->cursor().shape(); });
        return found;
    };

    MoveMouse(fView, BPoint(20, 20));
    EXPECT_EQ(shape(), Qt::IBeamCursor);
    MoveMouse(fView, BPoint(20, 150));
    EXPECT_EQ(shape(), Qt::ArrowCursor);

    MoveMouse(fView, BPoint(20, 20));
    Locked([this] {
        fView->RemoveSelf();
        delete fView;
        return 0;
    });
    EXPECT_EQ(shape(), Qt::ArrowCursor);
}

// Scrolling

TEST_F(TextViewMouseTest, LongTextFollowsTheCaret)
{
    const std::string text(200, 'm');
    ShowText(text.c_str());

    TypeKey(B_END);
    EXPECT_TRUE(Locked([this] {
        return fView->Bounds().left > 0 && fView->PointAt(200).x <= fView->Bounds().right;
    }));

    TypeKey(B_HOME);
    EXPECT_EQ(Locked([this] { return fView->Bounds().left; }), 0);

    TypeKey(B_END);
    TypeKey('a', B_COMMAND_KEY);
    TypeText("x");
    EXPECT_EQ(Locked([this] { return fView->Bounds().left; }), 0);
}

TEST_F(TextViewMouseTest, ScrollBarsFollowTheText)
{
    auto* view = new BTextView(BRect(10, 10, 209, 69), "text", BRect(0, 0, 199, 59),
                               B_FOLLOW_LEFT | B_FOLLOW_TOP);
    auto* scroll = new BScrollView("scroll", view, B_FOLLOW_LEFT | B_FOLLOW_TOP, 0, false, true);
    Add(scroll);
    fView = view;
    Show();
    Focus(view);

    const auto range = [=, this] {
        return Locked([=] {
            float least = 0;
            float most = 0;
            scroll->ScrollBar(B_VERTICAL)->GetRange(&least, &most);
            return most;
        });
    };
    EXPECT_EQ(range(), 0);
    for (int i = 0; i < 9; ++i) {
        TypeKey(B_ENTER);
    }
    EXPECT_EQ(range(), 10 * 15 - 60);
    EXPECT_EQ(Locked([=] { return scroll->ScrollBar(B_VERTICAL)->Value(); }), 90);
    TypeKey(B_PAGE_UP);
    TypeKey(B_PAGE_UP);
    TypeKey(B_PAGE_UP);
    EXPECT_EQ(Locked([=] { return view->CurrentLine(); }), 0);
    EXPECT_EQ(Locked([=] { return view->Bounds().top; }), 0);
}

TEST_F(TextViewMouseTest, WordWrapMakesRows)
{
    ShowText("word word word word word word word word word word word word");

    const int32 rows = Locked([this] {
        fView->SetWordWrap(true);
        return fView->CountLines();
    });

    EXPECT_GT(rows, 1);
    EXPECT_EQ(Locked([this] { return fView->TextHeight(0, 1); }), 30);
    TypeKey(B_DOWN_ARROW);
    EXPECT_EQ(Locked([this] { return fView->CurrentLine(); }), 1);
    TypeKey(B_END);
    EXPECT_EQ(Locked([this] { return fView->CurrentLine(); }), 1);
}

// Looks

TEST_F(TextViewMouseTest, ShowsTheCaretAndTheSelection)
{
    ShowText("mm");
    const auto count = [this](rgb_color color) {
        const Picture picture = TakePicture(fWindow);
        const float scale = picture.scale;
        return picture.Count(color, static_cast<int32>(10 * scale), static_cast<int32>(10 * scale),
                             static_cast<int32>(13 * scale), static_cast<int32>(30 * scale));
    };
    const rgb_color black = {0, 0, 0, 255};
    const rgb_color selected = {184, 198, 222, 255};
    const float scale = TakePicture(fWindow).scale;
    const auto caret = static_cast<int32>(15 * scale * scale); // one unit by the line's height
    EXPECT_TRUE(WaitFor([&] { return count(black) == caret; }));

    TypeKey(B_RIGHT_ARROW, B_SHIFT_KEY);
    EXPECT_EQ(count(black), 0);
    EXPECT_GE(count(selected), 15);
}

TEST_F(TextViewMouseTest, CaretBlinks)
{
    ShowText("");
    const auto isShown = [this] {
        const rgb_color black = {0, 0, 0, 255};
        return TakePicture(fWindow).Count(black, 10, 10, 40, 40) > 0;
    };

    EXPECT_TRUE(WaitFor(isShown));
    EXPECT_TRUE(WaitFor([&] { return !isShown(); }));
    EXPECT_TRUE(WaitFor(isShown));
}

TEST_F(TextViewMouseTest, PointerIsOrdinaryWhereTextCannotBeSelected)
{
    ShowText("one two");
    MoveMouse(fView, BPoint(10, 10));
    EXPECT_EQ(PointerOver(fWindow), kits::PointerShape::kText);
    Locked([this] {
        fView->MakeEditable(false);
        fView->MakeSelectable(false);
        return 0;
    });
    EXPECT_EQ(PointerOver(fWindow), kits::PointerShape::kArrow);
}

} // namespace
