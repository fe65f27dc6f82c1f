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

/// How far to the right the footer's text reaches, in pixels of the window; 0: nowhere.
class FooterDrawingTest : public MarkDrawingTest
{
protected:
    int32 TextEnd()
    {
        EXPECT_TRUE(kits::testing::Sync(fWindow));
        const Picture picture = TakePicture(fWindow);
        const BRect footer = Locked([this] { return fPane->Footer()->Frame(); });
        const auto top = static_cast<int32>(footer.top) + 2;
        int32 end = picture.width;
        while (end > 0 && picture.Count(DirPane::kFooterText, end - 1, top, end, top + 18) == 0) {
            end--;
        }
        return end;
    }
};

TEST_F(FooterDrawingTest, TellsOfMarksAtTheRightEnd)
{
    const int32 before = TextEnd();
    EXPECT_LT(before, 300);
    TypeKey('+');
    EXPECT_TRUE(WaitFor([this] { return TextEnd() > 470; }));
    TypeKey('-');
    EXPECT_TRUE(WaitFor([this, before] { return TextEnd() == before; }));
}

TEST_F(FooterDrawingTest, SaysNothingOfThemWithoutRoom)
{
    TypeKey('+');
    EXPECT_TRUE(WaitFor([this] { return TextEnd() > 470; }));
    Locked([this] {
        fPane->ResizeTo(280, 300);
        return 0;
    });
    EXPECT_TRUE(WaitFor([this] { return TextEnd() < 280 && TextEnd() > 0; }));
    EXPECT_EQ(Locked([this] { return fPane->Footer()->Marks(); }), "3 marked, 3 Bytes");
    const int32 end = TextEnd();
    TypeKey('-');
    EXPECT_TRUE(
        Becomes([this] { return Locked([this] { return fPane->Footer()->Marks(); }); }, ""));
    EXPECT_EQ(TextEnd(), end);
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
