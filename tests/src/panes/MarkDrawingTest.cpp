#include "PaneWindowFixture.h"

#include <InterfaceDefs.h>

namespace norvane {

using kits::testing::TakePicture;
using kits::testing::TypeKey;

/// Marks are seen, and seen to go.
class MarkDrawingTest : public PaneWindowFixture
{
protected:
    void SetUp() override
    {
        PaneWindowFixture::SetUp();
        for (const char* name : {"shown/a", "shown/b", "shown/c"}) {
            fTree.Write(name, "1");
        }
        Open();
        Click(2);
        fUnmarked = Pixels();
    }

    std::vector<rgb_color> Pixels()
    {
        EXPECT_TRUE(kits::testing::Sync(fWindow));
        return TakePicture(fWindow).pixels;
    }

    std::vector<rgb_color> fUnmarked; // with a file selected
};

TEST_F(MarkDrawingTest, OneRowsMarkComesAndGoes)
{
    TypeKey(B_SPACE);
    EXPECT_TRUE(Pixels() != fUnmarked);
    TypeKey(B_SPACE);
    EXPECT_TRUE(Pixels() == fUnmarked);
}

TEST_F(MarkDrawingTest, AllMarksComeAndGo)
{
    TypeKey('+');
    const std::vector<rgb_color> marked = Pixels();
    EXPECT_TRUE(marked != fUnmarked);
    TypeKey('-');
    EXPECT_TRUE(Pixels() == fUnmarked);
    TypeKey('*');
    EXPECT_TRUE(Pixels() == marked);
}

TEST_F(MarkDrawingTest, AClickTakesAllMarksAway)
{
    TypeKey('+');
    Click(2);
    EXPECT_TRUE(Pixels() == fUnmarked);
}

} // namespace norvane
