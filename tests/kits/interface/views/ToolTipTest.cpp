#include "WindowFixture.h"

#include "interface/views/TipText.h"
#include "interface/views/ToolTips.h"
#include "interface/views/WindowAccess.h"
#include "interface/views/WindowState.h"

#include <AppDefs.h>
#include <Message.h>
#include <Screen.h>
#include <ToolTip.h>

#include <atomic>

using namespace kits::testing;

namespace {

/// Its left half has one tip, its right half another; below 40 it has none.
class Halves : public BView
{
public:
    Halves() : BView(BRect(0, 0, 199, 79), "halves", B_FOLLOW_NONE, B_WILL_DRAW) {}

    bool GetToolTipAt(BPoint where, BToolTip** tip) override
    {
        asked++;
        SetToolTip(where.y > 40 ? "" : where.x < 100 ? "left" : "right");
        return BView::GetToolTipAt(where, tip);
    }

    void MouseDown(BPoint) override { presses++; }

    std::atomic<int> asked{0};
    std::atomic<int> presses{0};
};

class ToolTipTest : public WindowFixture
{
protected:
    void SetUp() override
    {
        WindowFixture::SetUp();
        fHalves = new Halves;
        fWindow->AddChild(fHalves);
        Show();
        Move(199, 70); // it may rest where the test before left it
    }

    /// The text of the tip that is shown; empty for none.
    std::string Tip()
    {
        std::string text;
        Locked([&] {
            const auto* tip =
                dynamic_cast<const BTextToolTip*>(kits::ToolTips::Of(*fWindow).Shown());
            text = tip != nullptr ? tip->Text() : "";
        });
        return text;
    }
    bool Comes(const std::string& text)
    {
        return WaitFor([&] { return Tip() == text; });
    }
    /// Where the tip's window is, on the screen.
    BRect TipFrame()
    {
        BRect frame;
        Locked([&] {
            const auto& popUps = kits::WindowAccess::State(*fWindow).popUps;
            frame = popUps.empty() ? BRect() : popUps.back()->Frame();
        });
        return frame;
    }
    void Move(float x, float y)
    {
        MoveMouse(fHalves, BPoint(x, y));
        ASSERT_TRUE(Sync(fWindow));
    }

    Halves* fHalves = nullptr;
};

TEST_F(ToolTipTest, ComesWhenThePointerRestsAndNotBefore)
{
    const bigtime_t begin = system_time();
    Move(20, 20);
    EXPECT_EQ(Tip(), "");
    ASSERT_TRUE(Comes("left"));
    EXPECT_GE(system_time() - begin, 690'000);
}

TEST_F(ToolTipTest, AMovingPointerAsksNothing)
{
    const bigtime_t end = system_time() + 1'200'000;
    for (int step = 0; system_time() < end; step++) {
        Move(static_cast<float>(20 + step % 60), 20);
        snooze(20'000); // the movement is what is tested
    }
    EXPECT_EQ(fHalves->asked, 0);
    EXPECT_EQ(Tip(), "");
    EXPECT_TRUE(Comes("left"));
}

TEST_F(ToolTipTest, StaysOverTheSameThingAndGoesAtTheNext)
{
    Move(20, 20);
    ASSERT_TRUE(Comes("left"));
    const BRect frame = TipFrame();
    Move(60, 22);
    EXPECT_EQ(Tip(), "left");
    EXPECT_EQ(TipFrame(), frame);
    const int asked = fHalves->asked;
    BMessage again(B_MOUSE_MOVED); // windows that come and go have it told anew
    again.AddPoint("where", BPoint(60, 22));
    fWindow->PostMessage(&again);
    ASSERT_TRUE(Sync(fWindow));
    EXPECT_EQ(fHalves->asked, asked);

    const bigtime_t begin = system_time();
    Move(140, 22);
    ASSERT_TRUE(Comes("right"));
    EXPECT_LT(system_time() - begin, 600'000); // somebody is reading tips
    EXPECT_NE(TipFrame(), frame);

    Move(140, 60);
    EXPECT_EQ(Tip(), "");
}

TEST_F(ToolTipTest, WithoutATipNothingComes)
{
    Move(20, 60);
    EXPECT_TRUE(WaitFor([this] { return fHalves->asked > 0; }));
    EXPECT_EQ(Tip(), "");
    EXPECT_FALSE(TipFrame().IsValid());
}

TEST_F(ToolTipTest, GoesAtAKeyAButtonAndTheWheelUntilThePointerMoves)
{
    const std::function<void()> actions[] = {
        [] { TypeKey('x'); },
        [this] { Click(fHalves, BPoint(20, 20)); },
        [this] { TurnWheel(fHalves, BPoint(20, 20), 1); },
    };
    for (const std::function<void()>& action : actions) {
        Move(140, 20);
        Move(20, 20);
        ASSERT_TRUE(Comes("left"));
        action();
        EXPECT_TRUE(Comes(""));
        EXPECT_FALSE(WaitFor([this] { return Tip() != ""; }, 900'000));
    }
}

TEST_F(ToolTipTest, GoesWhenThePointerLeavesTheWindow)
{
    Move(20, 20);
    ASSERT_TRUE(Comes("left"));
    BMessage left(B_MOUSE_MOVED);
    left.AddPoint("where", BPoint(20, 20));
    left.AddInt32("be:transit", B_EXITED_VIEW);
    fWindow->PostMessage(&left);
    EXPECT_TRUE(Comes(""));
}

TEST_F(ToolTipTest, GoesWithItsViewAndItsWindow)
{
    Move(20, 20);
    ASSERT_TRUE(Comes("left"));
    Locked([this] { fHalves->RemoveSelf(); });
    EXPECT_EQ(Tip(), "");
    Locked([this] { fWindow->AddChild(fHalves); });
    Move(30, 20);
    ASSERT_TRUE(Comes("left"));
    Locked([this] { fWindow->Hide(); });
    EXPECT_EQ(Tip(), "");
    Locked([this] { fWindow->Show(); });
    ASSERT_TRUE(WaitForFocus(fWindow));
    Move(40, 20);
    ASSERT_TRUE(Comes("left")); // and the window quits with it
}

TEST_F(ToolTipTest, TakesNeitherTheFocusNorThePointer)
{
    Locked([this] {
        fHalves->SetToolTip("here");
        fHalves->ShowToolTip();
    });
    Move(20, 20);
    Locked([this] { fHalves->ShowToolTip(); });
    ASSERT_TRUE(TipFrame().IsValid());
    EXPECT_TRUE(WaitForFocus(fWindow));
    const BPoint inTip = TipFrame().LeftTop() + BPoint(3, 3);
    MoveMouseAt(inTip);
    ASSERT_TRUE(Sync(fWindow));
    Click(fHalves, BPoint(23, 43)); // below the tip
    EXPECT_TRUE(WaitFor([this] { return fHalves->presses == 1; }));
}

TEST_F(ToolTipTest, LiesBelowThePointerWholeOnTheScreen)
{
    Move(20, 20);
    ASSERT_TRUE(Comes("left"));
    EXPECT_EQ(TipFrame().LeftTop(), BPoint(120, 140));

    const BRect screen = BScreen(fWindow).Frame();
    Locked([&] { fWindow->MoveTo(screen.right - 50, screen.bottom - 40); });
    ASSERT_TRUE(Sync(fWindow));
    MoveMouseAt(BPoint(screen.right - 20, screen.bottom - 10));
    ASSERT_TRUE(Sync(fWindow));
    ASSERT_TRUE(WaitFor([this] { return !Tip().empty(); }));
    EXPECT_LE(TipFrame().right, screen.right);
    EXPECT_LT(TipFrame().bottom, screen.bottom - 10);
}

TEST_F(ToolTipTest, TheViewAroundIsAskedWhenTheOneBelowHasNone)
{
    Locked([this] {
        fHalves->AddChild(new BView(BRect(10, 10, 50, 50), "inner", B_FOLLOW_NONE, B_WILL_DRAW));
    });
    Move(20, 20);
    EXPECT_TRUE(Comes("left"));
}

TEST_F(ToolTipTest, ATextThatIsTheSameStaysTheSameTip)
{
    Locked([this] {
        fHalves->SetToolTip("one");
        const BToolTip* tip = fHalves->ToolTip();
        fHalves->SetToolTip("one");
        EXPECT_EQ(fHalves->ToolTip(), tip);
        fHalves->SetToolTip("two");
        EXPECT_STREQ(dynamic_cast<BTextToolTip*>(fHalves->ToolTip())->Text(), "two");
        fHalves->SetToolTip("");
        EXPECT_EQ(fHalves->ToolTip(), nullptr);
    });
}

TEST_F(ToolTipTest, LivesAsLongAsItIsReferredTo)
{
    class Told : public BTextToolTip
    {
    public:
        explicit Told(bool& isGone) : BTextToolTip("told"), fIsGone(isGone) {}
        ~Told() override { fIsGone = true; }

    private:
        bool& fIsGone;
    };
    bool isGone = false;
    auto* tip = new Told(isGone);
    Locked([&] { fHalves->SetToolTip(tip); });
    tip->ReleaseReference();
    EXPECT_FALSE(isGone);
    Locked([&] {
        fHalves->ShowToolTip();
        fHalves->SetToolTip("other");
    });
    EXPECT_FALSE(isGone); // it is shown
    Locked([&] { fHalves->HideToolTip(); });
    EXPECT_TRUE(isGone);
}

TEST_F(ToolTipTest, AChangedTextIsShownTheNextTime)
{
    const BReference<BTextToolTip> tip(new BTextToolTip("one"), true);
    Locked([&] {
        fHalves->ShowToolTip(tip.Get());
        const float width = TipFrame().Width();
        tip->SetText("one and a half");
        EXPECT_EQ(TipFrame().Width(), width);
        fHalves->ShowToolTip(tip.Get());
        EXPECT_GT(TipFrame().Width(), width);
    });
}

// Lines

TEST(TipTextTest, BreaksAtBlanksAndLineEnds)
{
    const BFont& font = *be_plain_font;
    const float width = font.StringWidth("one two");

    EXPECT_EQ(kits::TipLines(font, "one two", width), std::vector<std::string>({"one two"}));
    EXPECT_EQ(kits::TipLines(font, "one two three", width),
              std::vector<std::string>({"one two", "three"}));
    EXPECT_EQ(kits::TipLines(font, "a\n\nb", width), std::vector<std::string>({"a", "", "b"}));
    EXPECT_EQ(kits::TipLines(font, "", width), std::vector<std::string>({""}));
}

TEST(TipTextTest, BreaksWordsThatAreTooWideBetweenLetters)
{
    const BFont& font = *be_plain_font;
    std::string word;
    for (int i = 0; i < 100; i++) {
        word += "ä";
    }
    std::string joined;
    for (const std::string& line : kits::TipLines(font, word, 100)) {
        EXPECT_LE(font.StringWidth(line.c_str()), 100);
        EXPECT_EQ(line.size() % 2, 0u);
        joined += line;
    }
    EXPECT_EQ(joined, word);
    EXPECT_EQ(kits::TipLines(font, "ää", 1), std::vector<std::string>({"ä", "ä"}));
}

} // namespace
