#include "PaneWindowFixture.h"

#include <InterfaceDefs.h>

namespace norvane {

using kits::testing::Picture;
using kits::testing::TakePicture;
using kits::testing::TypeKey;
using kits::testing::WaitFor;

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
    }

    /// Whether the window comes to show this much of the colour of marks; the rest of it may
    /// change.
    bool Shows(const std::function<bool(int32)>& expected)
    {
        return WaitFor([&] {
            EXPECT_TRUE(kits::testing::Sync(fWindow));
            const Picture picture = TakePicture(fWindow);
            return expected(picture.Count({255, 0, 0, 255}, 0, 0, picture.width, picture.height));
        });
    }
    bool ShowsMarks()
    {
        return Shows([](int32 red) { return red > 0; });
    }
    bool ShowsNoMarks()
    {
        return Shows([](int32 red) { return red == 0; });
    }
};

TEST_F(MarkDrawingTest, OneRowsMarkComesAndGoes)
{
    ASSERT_TRUE(ShowsNoMarks());
    TypeKey(B_SPACE);
    EXPECT_TRUE(ShowsMarks());
    TypeKey(B_SPACE);
    EXPECT_TRUE(ShowsNoMarks());
}

TEST_F(MarkDrawingTest, AllMarksComeAndGo)
{
    TypeKey('+');
    EXPECT_TRUE(ShowsMarks());
    TypeKey('-');
    EXPECT_TRUE(ShowsNoMarks());
    TypeKey('*');
    EXPECT_TRUE(ShowsMarks());
}

TEST_F(MarkDrawingTest, AClickTakesAllMarksAway)
{
    TypeKey('+');
    EXPECT_TRUE(ShowsMarks());
    Click(2);
    EXPECT_TRUE(ShowsNoMarks());
}

} // namespace norvane
