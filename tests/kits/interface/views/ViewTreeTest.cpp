#include "WindowFixture.h"

#include <Message.h>

using kits::testing::Sync;
using kits::testing::TakePicture;

namespace {

using Notes = std::vector<std::string>;

class ViewTreeTest : public WindowFixture
{
};

TEST_F(ViewTreeTest, AttachesFromTheTopAndTellsAllFromTheBottom)
{
    auto* outer = new NotingView(BRect(0, 0, 9, 9), "outer");
    auto* inner = new NotingView(BRect(0, 0, 9, 9), "inner");
    outer->notes = &fNotes;
    inner->notes = &fNotes;
    outer->AddChild(inner);

    fWindow->AddChild(outer);
    EXPECT_EQ(TakeNotes(), (Notes{"outer attached", "inner attached", "inner all attached",
                                  "outer all attached"}));

    outer->RemoveSelf();
    EXPECT_EQ(TakeNotes(), (Notes{"outer detached", "inner detached", "inner all detached",
                                  "outer all detached"}));
    EXPECT_EQ(inner->Window(), nullptr);
    EXPECT_EQ(inner->Looper(), nullptr);
    delete outer;
}

TEST_F(ViewTreeTest, ChildAddedByAHookIsToldOnce)
{
    class Growing : public NotingView
    {
    public:
        using NotingView::NotingView;
        void AttachedToWindow() override
        {
            NotingView::AttachedToWindow();
            auto* child = new NotingView(BRect(0, 0, 1, 1), "child");
            child->notes = notes;
            AddChild(child);
        }
    };
    auto* view = new Growing(BRect(0, 0, 9, 9), "view");
    view->notes = &fNotes;

    fWindow->AddChild(view);

    EXPECT_EQ(TakeNotes(), (Notes{"view attached", "child attached", "child all attached",
                                  "view all attached"}));
}

TEST_F(ViewTreeTest, KnowsItsNeighbours)
{
    NotingView* first = Add(BRect(0, 0, 9, 9), "first");
    NotingView* third = Add(BRect(20, 0, 29, 9), "third");
    auto* second = new NotingView(BRect(10, 0, 19, 9), "second");

    fWindow->AddChild(second, third);

    EXPECT_EQ(fWindow->CountChildren(), 3);
    EXPECT_EQ(fWindow->ChildAt(1), second);
    EXPECT_EQ(fWindow->ChildAt(3), nullptr);
    EXPECT_EQ(second->NextSibling(), third);
    EXPECT_EQ(second->PreviousSibling(), first);
    EXPECT_EQ(third->NextSibling(), nullptr);
    EXPECT_EQ(first->Parent(), nullptr);
    EXPECT_EQ(fWindow->FindView("second"), second);
    EXPECT_EQ(fWindow->FindView("nobody"), nullptr);
}

TEST_F(ViewTreeTest, MessagesClimbToParentAndWindow)
{
    NotingView* outer = Add(BRect(0, 0, 99, 99), "outer");
    NotingView* inner = Add(BRect(0, 0, 9, 9), "inner", outer);

    EXPECT_EQ(inner->NextHandler(), outer);
    EXPECT_EQ(outer->NextHandler(), fWindow);
    EXPECT_EQ(inner->Looper(), fWindow);
}

TEST_F(ViewTreeTest, ConvertsThroughFramesAndScrolling)
{
    NotingView* outer = Add(BRect(10, 20, 99, 99), "outer");
    NotingView* inner = Add(BRect(5, 5, 24, 24), "inner", outer);
    outer->ScrollTo(3, 4);

    EXPECT_EQ(inner->ConvertToParent(BPoint(1, 1)), BPoint(6, 6));
    EXPECT_EQ(outer->ConvertToParent(BPoint(3, 4)), BPoint(10, 20));
    EXPECT_EQ(inner->ConvertToScreen(BPoint(0, 0)), BPoint(100 + 10 - 3 + 5, 100 + 20 - 4 + 5));
    EXPECT_EQ(inner->ConvertFromScreen(inner->ConvertToScreen(BRect(1, 2, 3, 4))),
              BRect(1, 2, 3, 4));
}

struct FollowCase
{
    const char* name;
    uint32 mode;
    BRect expected; // of (10, 10, 29, 29) in a parent that grew from 100 x 100 by 20 and 10
};

class FollowTest : public WindowFixture, public ::testing::WithParamInterface<FollowCase>
{
};

TEST_P(FollowTest, FollowsItsParentsSides)
{
    NotingView* parent = Add(BRect(0, 0, 99, 99), "parent");
    NotingView* child = Add(BRect(10, 10, 29, 29), "child", parent, GetParam().mode);

    parent->ResizeTo(119, 109);

    EXPECT_EQ(child->Frame(), GetParam().expected);
    parent->ResizeTo(99, 99);
    EXPECT_EQ(child->Frame(), BRect(10, 10, 29, 29));
}

INSTANTIATE_TEST_SUITE_P(
    Modes, FollowTest,
    ::testing::Values(
        FollowCase{"None", B_FOLLOW_NONE, BRect(10, 10, 29, 29)},
        FollowCase{"LeftTop", B_FOLLOW_LEFT | B_FOLLOW_TOP, BRect(10, 10, 29, 29)},
        FollowCase{"RightTop", B_FOLLOW_RIGHT | B_FOLLOW_TOP, BRect(30, 10, 49, 29)},
        FollowCase{"LeftBottom", B_FOLLOW_LEFT | B_FOLLOW_BOTTOM, BRect(10, 20, 29, 39)},
        FollowCase{"All", B_FOLLOW_ALL_SIDES, BRect(10, 10, 49, 39)},
        FollowCase{"Across", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP, BRect(10, 10, 49, 29)},
        FollowCase{"Centre", B_FOLLOW_H_CENTER | B_FOLLOW_V_CENTER, BRect(20, 15, 39, 34)}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(ViewTreeTest, CentredViewDoesNotDrift)
{
    NotingView* parent = Add(BRect(0, 0, 99, 99), "parent");
    NotingView* child = Add(BRect(40, 10, 59, 29), "child", parent, B_FOLLOW_H_CENTER);

    for (int i = 1; i <= 51; ++i) {
        parent->ResizeTo(static_cast<float>(99 + i), 99);
    }
    parent->ResizeTo(99, 99);

    EXPECT_EQ(child->Frame(), BRect(40, 10, 59, 29));
}

TEST_F(ViewTreeTest, DrawsOnlyWhatIsInvalid)
{
    NotingView* left = Add(BRect(0, 0, 49, 99), "left");
    NotingView* right = Add(BRect(50, 0, 99, 99), "right");
    Show();
    TakePicture(fWindow);

    Locked([&] {
        left->drawn.clear();
        right->drawn.clear();
        left->Invalidate(BRect(10, 10, 19, 14));
        left->Invalidate(BRect(10, 15, 19, 19));
    });
    TakePicture(fWindow);

    Locked([&] {
        ASSERT_EQ(left->drawn.size(), 1u);
        EXPECT_EQ(left->drawn[0], BRect(10, 10, 19, 19));
        EXPECT_TRUE(right->drawn.empty());
    });
}

TEST_F(ViewTreeTest, HiddenViewsAreNotDrawnAndGiveTheFocusAway)
{
    NotingView* view = Add(BRect(0, 0, 49, 99), "view");
    NotingView* child = Add(BRect(0, 0, 9, 9), "child", view);
    Show();
    Locked([&] {
        child->MakeFocus(true);
        view->Hide();
        view->Hide();
        view->drawn.clear();
        view->Invalidate();
    });
    TakePicture(fWindow);

    Locked([&] {
        EXPECT_TRUE(view->drawn.empty());
        EXPECT_TRUE(child->IsHidden());
        EXPECT_EQ(fWindow->CurrentFocus(), nullptr);
        view->Show();
        EXPECT_TRUE(view->IsHidden());
        view->Show();
        EXPECT_FALSE(child->IsHidden());
    });
    TakePicture(fWindow);
    Locked([&] { EXPECT_FALSE(view->drawn.empty()); });
}

TEST_F(ViewTreeTest, GrowingDrawsTheNewPartOrAll)
{
    NotingView* part = Add(BRect(0, 0, 49, 49), "part");
    NotingView* whole = Add(BRect(100, 0, 149, 49), "whole", nullptr, B_FOLLOW_NONE,
                            B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE);
    Show();
    TakePicture(fWindow);

    Locked([&] {
        part->drawn.clear();
        whole->drawn.clear();
        part->ResizeTo(49, 59);
        whole->ResizeTo(49, 59);
    });
    TakePicture(fWindow);

    Locked([&] {
        ASSERT_EQ(part->drawn.size(), 1u);
        EXPECT_EQ(part->drawn[0], BRect(0, 50, 49, 59));
        ASSERT_EQ(whole->drawn.size(), 1u);
        EXPECT_EQ(whole->drawn[0], BRect(0, 0, 49, 59));
    });
}

TEST_F(ViewTreeTest, PaintsAtMostOneFrameInItsTime)
{
    NotingView* view = Add(BRect(0, 0, 49, 49), "view");
    Show();
    TakePicture(fWindow);

    Locked([&] {
        view->drawn.clear();
        const bigtime_t start = system_time();
        while (system_time() < start + 100'000) {
            view->Invalidate();
            fWindow->UpdateIfNeeded();
        }
        EXPECT_GE(view->drawn.size(), 1u);
        EXPECT_LE(view->drawn.size(), 7u);
        view->Invalidate();
        view->drawn.clear();
        fWindow->Sync();
        EXPECT_EQ(view->drawn.size(), 1u);
    });
}

TEST_F(ViewTreeTest, LastStateIsPaintedByTheLoop)
{
    NotingView* view = Add(BRect(0, 0, 49, 49), "view");
    Show();
    TakePicture(fWindow);

    Locked([&] {
        fWindow->Sync();
        view->drawn.clear();
        view->Invalidate();
    });
    // Nothing is posted: the looper has to wake up by itself once a frame's time is over.
    fWindow->PostMessage('none');

    EXPECT_TRUE(kits::testing::WaitFor([&] {
        bool isPainted = false;
        Locked([&] { isPainted = !view->drawn.empty(); });
        return isPainted;
    }));
}

} // namespace
