#include "RowFixture.h"

#include <Font.h>
#include <View.h>
#include <Window.h>

#include <cmath>
#include <functional>

namespace {

using namespace norvane;
using kits::testing::Picture;

constexpr rgb_color kWhite = {255, 255, 255, 255};
constexpr rgb_color kBlue = {0, 0, 255, 255};
constexpr rgb_color kSelected = {194, 194, 194, 255};

class Sheet : public BView
{
public:
    explicit Sheet(std::function<void(BView*)> paint)
        : BView(BRect(0, 0, 199, 99), "sheet", B_FOLLOW_NONE, B_WILL_DRAW), fPaint(std::move(paint))
    {
        SetViewColor(kBlue);
    }
    void Draw(BRect) override { fPaint(this); }

private:
    std::function<void(BView*)> fPaint;
};

/// Cells as they look on a blue sheet.
class RowDrawingTest : public RowFixture
{
protected:
    Picture Draw(DirListItem& row, BRect cell, int32 column, bool complete = true,
                 float height = 20)
    {
        return Paint([&](BView* view) {
            row.Update(view, be_plain_font);
            row.SetHeight(height);
            row.DrawItemColumn(view, cell, column, complete);
        });
    }

    static Picture Paint(std::function<void(BView*)> paint)
    {
        auto* window = new BWindow(BRect(50, 50, 249, 149), "sheet", B_TITLED_WINDOW, 0);
        window->AddChild(new Sheet(std::move(paint)));
        window->Show();
        const Picture picture = kits::testing::TakePicture(window);
        EXPECT_TRUE(window->Lock());
        window->Quit();
        return picture;
    }

    /// Pixels of red text; smoothing may leave none that is red alone.
    static int CountReddish(const Picture& picture)
    {
        int count = 0;
        for (int y = 0; y < picture.height; y++) {
            for (int x = 0; x < picture.width; x++) {
                const rgb_color pixel = picture.At(x, y);
                count += pixel.red > 200 && pixel.green < 160 && pixel.blue < 160 ? 1 : 0;
            }
        }
        return count;
    }

    /// The first line of the picture that holds anything but the background.
    static int TopOfIcon(const Picture& picture, int columns)
    {
        for (int y = 0; y < picture.height; y++) {
            for (int x = 0; x < columns; x++) {
                const rgb_color pixel = picture.At(x, y);
                if (pixel != kWhite && pixel != kBlue) {
                    return y;
                }
            }
        }
        return -1;
    }
};

TEST_F(RowDrawingTest, ATallRowKeepsItsIconInTheMiddle)
{
    DirListItem row;
    const int usual = TopOfIcon(Draw(row, BRect(0, 0, 19, 20), 0), 20);
    const int tall = TopOfIcon(Draw(row, BRect(0, 0, 19, 31), 0, true, 31), 20);
    ASSERT_GE(usual, 2);
    EXPECT_EQ(tall - usual, 6); // half of 11, rounded up
}

// The foot of a letter is at the baseline that the middle of the row asks for, at each size.
TEST_F(RowDrawingTest, LettersStandInTheMiddleWhateverTheirSize)
{
    const auto row = Make("HHHH", false);
    for (const float size : {9.0f, 12.0f, 16.0f, 24.0f, 36.0f}) {
        float height = 0;
        float foot = 0;
        const Picture picture = Paint([&](BView* view) {
            view->SetFontSize(size);
            BFont font;
            view->GetFont(&font);
            row->Update(view, &font);
            height = row->Height();
            font_height letters;
            font.GetHeight(&letters);
            foot = std::ceil(letters.ascent) +
                   (height - std::ceil(letters.ascent) - std::ceil(letters.descent)) / 2;
            row->DrawItemColumn(view, BRect(0, 0, 199, height), 1, true);
        });
        int lowest = -1;
        for (int y = 0; y < picture.height; y++) {
            for (int x = 0; x < 20; x++) {
                const rgb_color pixel = picture.At(x, y);
                lowest = pixel.red < 90 && pixel.blue < 90 ? y : lowest;
            }
        }
        EXPECT_GE(height, 20) << size;
        EXPECT_GE(height, size) << size;
        EXPECT_NEAR(static_cast<float>(lowest) + 1, foot, 1) << size;
    }
}

TEST_F(RowDrawingTest, AMarkedRowIsRed)
{
    const auto row = Make("HHHH", false);
    EXPECT_EQ(CountReddish(Draw(*row, BRect(0, 0, 99, 20), 1)), 0);
    row->Mark(true);
    EXPECT_GT(CountReddish(Draw(*row, BRect(0, 0, 99, 20), 1)), 10);
}

TEST_F(RowDrawingTest, ASelectedRowIsGreyAlsoWhenDrawnInPart)
{
    const auto row = Make("H", false);
    EXPECT_EQ(Draw(*row, BRect(0, 0, 99, 20), 1, false).At(90, 10), kBlue);
    EXPECT_EQ(Draw(*row, BRect(0, 0, 99, 20), 1).At(90, 10), kWhite);
    row->Select();
    EXPECT_EQ(Draw(*row, BRect(0, 0, 99, 20), 1, false).At(90, 10), kSelected);
}

TEST_F(RowDrawingTest, LongTextIsCutAtTheCellsEdge)
{
    const auto row = Make(std::string(200, 'W'), false);
    const Picture picture = Draw(*row, BRect(20, 10, 59, 30), 1);
    const int all = picture.width * picture.height;
    EXPECT_EQ(picture.Count(kBlue, 0, 0, picture.width, picture.height), all - 40 * 21);
}

TEST_F(RowDrawingTest, TheAreaBehindTheLastColumnIsOnlyPainted)
{
    const auto row = Make("WWWW", false);
    const Picture picture = Draw(*row, BRect(0, 0, 99, 20), -1);
    EXPECT_EQ(picture.Count(kWhite, 0, 0, picture.width, picture.height), 100 * 21);
}

} // namespace
