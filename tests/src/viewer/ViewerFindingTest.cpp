#include "ViewerFixture.h"

namespace {

using namespace norvane;
using kits::testing::TypeFunctionKey;
using kits::testing::TypeKey;
using kits::testing::TypeText;
using kits::testing::WaitFor;

class ViewerFindingTest : public ViewerFixture
{
protected:
    /// Lines of ten bytes each.
    void OpenLines()
    {
        std::string text;
        for (int i = 0; i < 500; i++) {
            text += "line " + std::to_string(1000 + i) + "\n";
        }
        fTree.Write("a.txt", text);
        OpenText("a.txt");
        ASSERT_TRUE(WaitFor([this] { return Length() == 5000; }));
    }

    int32 Length()
    {
        return Locked([this] { return Text()->TextLength(); });
    }

    std::string Selection()
    {
        return Locked([this] {
            int32 start = 0;
            int32 end = 0;
            Text()->GetSelection(&start, &end);
            return std::to_string(start) + "-" + std::to_string(end);
        });
    }
    bool Selects(const std::string& selection)
    {
        return WaitFor([&] { return Selection() == selection; });
    }

    /// Types an answer into the question that the key opens.
    void Answer(char key, const char* title, const char* text)
    {
        TypeKey(key, B_COMMAND_KEY);
        BWindow* question = kits::testing::WaitForWindow(title);
        ASSERT_NE(question, nullptr);
        ASSERT_TRUE(kits::testing::WaitForFocus(question));
        ASSERT_TRUE(kits::testing::WaitUntilAnswers(question));
        TypeText(text);
        TypeKey(B_ENTER);
        ASSERT_TRUE(kits::testing::WaitForNoWindow(title));
        ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
    }
};

TEST_F(ViewerFindingTest, FindsATextAndGoesOn)
{
    OpenLines();

    Answer('f', "Find", "line 12");

    EXPECT_TRUE(Selects("2000-2007")) << Selection();
    EXPECT_TRUE(Locked([this] { return Text()->Bounds().Contains(Text()->PointAt(2000)); }));
    TypeFunctionKey(B_F3_KEY);
    EXPECT_TRUE(Selects("2010-2017")) << Selection();
    TypeFunctionKey(B_F3_KEY, B_SHIFT_KEY);
    EXPECT_TRUE(Selects("2000-2007")) << Selection();
}

TEST_F(ViewerFindingTest, GoesRoundAtTheEnds)
{
    OpenLines();
    Answer('f', "Find", "1499");
    ASSERT_TRUE(Selects("4995-4999")) << Selection();

    TypeFunctionKey(B_F3_KEY);
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_TRUE(Selects("4995-4999")) << Selection();

    Locked([this] {
        Text()->Select(0, 0);
        return 0;
    });
    TypeFunctionKey(B_F3_KEY, B_SHIFT_KEY);
    EXPECT_TRUE(Selects("4995-4999")) << Selection();
}

TEST_F(ViewerFindingTest, WhatIsNotThereLeavesTheSelection)
{
    OpenLines();
    Locked([this] {
        Text()->Select(3, 5);
        return 0;
    });

    Answer('f', "Find", "no such thing");

    ASSERT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_EQ(Selection(), "3-5");
}

TEST_F(ViewerFindingTest, F3AsksWhenNothingWasSoughtYet)
{
    OpenLines();

    TypeFunctionKey(B_F3_KEY);

    BWindow* question = kits::testing::WaitForWindow("Find");
    ASSERT_NE(question, nullptr);
    ASSERT_TRUE(kits::testing::WaitForFocus(question));
    ASSERT_TRUE(kits::testing::WaitUntilAnswers(question));
    kits::testing::CloseWindow(question);
    EXPECT_TRUE(kits::testing::WaitForNoWindow("Find"));
}

TEST_F(ViewerFindingTest, GoesToALine)
{
    OpenLines();

    Answer('l', "GoTo", "300");

    EXPECT_TRUE(Selects("2990-2999")) << Selection();
    EXPECT_TRUE(Locked([this] { return Text()->Bounds().Contains(Text()->PointAt(2990)); }));
    Answer('l', "GoTo", "999999");
    EXPECT_TRUE(Selects("5000-5000")) << Selection();
}

TEST_F(ViewerFindingTest, ImagesHaveNoTextToFind)
{
    WriteImage("a.png", 40, 30);
    OpenImage("a.png");

    TypeKey('f', B_COMMAND_KEY);

    kits::testing::SyncServer();
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_EQ(kits::testing::CountShown("Find"), 0);
}

class ViewerZoomTest : public ViewerFixture
{
protected:
    float ImageScale()
    {
        return Locked([this] { return Image()->Scale(); });
    }
    bool HasScale(float scale)
    {
        return WaitFor([=, this] { return std::abs(ImageScale() - scale) < 0.001f; });
    }
};

TEST_F(ViewerZoomTest, KeysMakeTheImageLargerAndSmaller)
{
    WriteImage("a.png", 400, 300);
    OpenImage("a.png");
    Scale(0.5f);

    Key('+');
    EXPECT_TRUE(HasScale(0.625f)) << ImageScale();
    EXPECT_FALSE(Item("50%")->IsMarked());
    Key('-');
    EXPECT_TRUE(HasScale(0.5f)) << ImageScale();
    EXPECT_TRUE(Item("50%")->IsMarked());
    Key('0');
    EXPECT_TRUE(HasScale(1)) << ImageScale();
    EXPECT_TRUE(Item("100%")->IsMarked());
}

TEST_F(ViewerZoomTest, TheWheelWithCtrlZoomsWhereThePointerIs)
{
    WriteImage("a.png", 1000, 1000);
    OpenImage("a.png");
    Scale(1);
    kits::testing::ResizeWindow(fWindow, 400, 400);
    ASSERT_TRUE(
        WaitFor([this] { return Locked([this] { return fWindow->Frame().Width(); }) == 400; }));
    TImageView* image = Image();
    Locked([&] {
        image->ScrollBar(B_VERTICAL)->SetValue(200);
        return 0;
    });

    kits::testing::TurnWheel(image, BPoint(100, 300), -1, 0, B_COMMAND_KEY);

    EXPECT_TRUE(HasScale(1.25f)) << ImageScale();
    // What was 300 from the image's top is 375 from it, and where it was in the window.
    EXPECT_TRUE(WaitFor([&] { return Value(image, B_VERTICAL) == 275; }))
        << Value(image, B_VERTICAL);
    EXPECT_EQ(Value(image, B_HORIZONTAL), 25);
}

TEST_F(ViewerZoomTest, TheWheelAloneScrolls)
{
    WriteImage("a.png", 1000, 1000);
    OpenImage("a.png");
    Scale(1);
    kits::testing::ResizeWindow(fWindow, 400, 400);
    TImageView* image = Image();
    ASSERT_TRUE(WaitFor([&] { return Range(image, B_VERTICAL) > 300; }));

    kits::testing::TurnWheel(image, BPoint(100, 100), 1);

    EXPECT_TRUE(WaitFor([&] { return Value(image, B_VERTICAL) > 0; }));
    EXPECT_EQ(ImageScale(), 1);
}

TEST_F(ViewerZoomTest, HasLimits)
{
    WriteImage("a.png", 16, 16);
    OpenImage("a.png");
    for (int i = 0; i < 40; i++) {
        Key('+');
    }
    EXPECT_TRUE(HasScale(64)) << ImageScale();
    for (int i = 0; i < 60; i++) {
        Key('-');
    }
    EXPECT_TRUE(HasScale(0.5f)) << ImageScale();
}

TEST_F(ViewerZoomTest, StretchedImageIsNotZoomed)
{
    WriteImage("a.png", 400, 300);
    OpenImage("a.png");
    Scale(0.5f);
    Send(kStretchToFit);

    Key('+');

    ASSERT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_EQ(ImageScale(), 0.5f);
}

} // namespace
