#include "InputRouterFixture.h"

using kits::InputRouter;
using kits::ShowRequest;

namespace {

class InputRouterMouseTest : public InputRouterFixture
{
};

} // namespace

TEST_F(InputRouterMouseTest, GivesThePressesMovesAndReleaseToOneWindow)
{
    fRouter.Shown(kB, {}, false, 0);

    EXPECT_EQ(fRouter.MousePressed(kA, B_PRIMARY_MOUSE_BUTTON).window, kA);
    EXPECT_EQ(fRouter.MouseMoved(kB), kA);
    EXPECT_EQ(fRouter.MousePressed(kB, B_SECONDARY_MOUSE_BUTTON).window, kA);
    EXPECT_EQ(fRouter.MouseReleased(kB, B_PRIMARY_MOUSE_BUTTON), kA);
    EXPECT_EQ(fRouter.MouseReleased(kB, B_SECONDARY_MOUSE_BUTTON), kA);
    EXPECT_EQ(fRouter.MouseMoved(kB), kB);
}

TEST_F(InputRouterMouseTest, DropsAReleaseWithoutAPress)
{
    EXPECT_EQ(fRouter.MouseReleased(kA, B_PRIMARY_MOUSE_BUTTON), 0);
}

TEST_F(InputRouterMouseTest, RaisesTheModalWindowWhenABlockedOneIsPressed)
{
    fRouter.Shown(kB, ModalOf(kA), false, 0);

    const InputRouter::MouseTarget target = fRouter.MousePressed(kA, B_PRIMARY_MOUSE_BUTTON);

    EXPECT_EQ(target.window, 0);
    EXPECT_EQ(target.raise, kB);
    EXPECT_EQ(fRouter.MouseMoved(kA), 0);
    EXPECT_EQ(fRouter.MouseReleased(kA, B_PRIMARY_MOUSE_BUTTON), 0);
    EXPECT_EQ(fRouter.WheelTurned(kA), 0);
}

TEST_F(InputRouterMouseTest, FinishesADragThatAModalWindowInterrupts)
{
    fRouter.MousePressed(kA, B_PRIMARY_MOUSE_BUTTON);
    fRouter.Shown(kB, ModalOf(kA), false, 0);

    EXPECT_EQ(fRouter.MouseMoved(kA), kA);
    EXPECT_EQ(fRouter.MouseReleased(kA, B_PRIMARY_MOUSE_BUTTON), kA);
    EXPECT_EQ(fRouter.MouseMoved(kA), 0);
}

TEST_F(InputRouterMouseTest, LetsClicksWorkOnEveryAlert)
{
    fRouter.Shown(kB, ModalOf(kA), false, 0);
    fRouter.Shown(kC, ModalOf(kA), false, 0);

    EXPECT_EQ(fRouter.MousePressed(kB, B_PRIMARY_MOUSE_BUTTON).window, kB);
}

TEST_F(InputRouterMouseTest, NamesTheButtonsOfAWindowThatLeaves)
{
    fRouter.MousePressed(kA, B_PRIMARY_MOUSE_BUTTON);
    fRouter.MousePressed(kA, B_TERTIARY_MOUSE_BUTTON);

    EXPECT_EQ(fRouter.WillLeave(kA, 0).buttons,
              uint32{B_PRIMARY_MOUSE_BUTTON | B_TERTIARY_MOUSE_BUTTON});
    EXPECT_EQ(fRouter.MouseReleased(kA, B_PRIMARY_MOUSE_BUTTON), 0);
}

TEST_F(InputRouterMouseTest, GivesEverythingToTheCapture)
{
    fRouter.Shown(kB, {}, false, 0);
    fRouter.MousePressed(kA, B_PRIMARY_MOUSE_BUTTON);
    fRouter.SetCapture(kA);

    EXPECT_EQ(fRouter.MouseMoved(kB), kA);
    EXPECT_EQ(fRouter.MouseReleased(kB, B_PRIMARY_MOUSE_BUTTON), kA);
    EXPECT_EQ(fRouter.MousePressed(kB, B_PRIMARY_MOUSE_BUTTON).window, kA);
    EXPECT_EQ(fRouter.WheelTurned(kB), kA);
    fRouter.WillLeave(kA, 0);
    EXPECT_EQ(fRouter.Capture(), 0);
}

TEST_F(InputRouterMouseTest, GivesAMenuOfAnUnblockedWindowItsInput)
{
    fRouter.Shown(kB, ModalOf(kA), false, 0);
    fRouter.Shown(kMenu, DialogOf(kB), true, 0);

    EXPECT_FALSE(fRouter.IsBlocked(kMenu));
    EXPECT_EQ(fRouter.MousePressed(kMenu, B_PRIMARY_MOUSE_BUTTON).window, kMenu);
}
