#include "ListWindowFixture.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace {

using namespace norvane;
using kits::testing::Picture;
using kits::testing::TakePicture;

/// A row whose cells look different at every place, and at both of their ends.
class PaintedRow : public TestRow
{
public:
    using TestRow::TestRow;

    void DrawItemColumn(BView* owner, BRect frame, int32 column, bool complete) override
    {
        TestRow::DrawItemColumn(owner, frame, column, complete);
        const auto shade =
            static_cast<uint8>(40 * (column + 2) + 9 * values[std::max(column, int32{0}) % 3]);
        owner->SetHighColor(shade, static_cast<uint8>(255 - shade), 200);
        owner->FillRect(frame);
        owner->SetHighColor(0, 0, 0);
        if (column < 0) {
            return;
        }
        for (float x = 0; x <= frame.Width(); x += 7) {
            const float left = frame.left + x;
            const float top = frame.top + std::fmod(x, 11.0f);
            owner->FillRect(BRect(left, top, std::min(left + 2, frame.right), top + 2));
        }
        owner->StrokeLine(frame.LeftTop(), frame.LeftBottom());
        owner->FillRect(BRect(frame.right - 5, frame.top + 3, frame.right - 1, frame.top + 9));
        owner->SetLowColor(shade, static_cast<uint8>(255 - shade), 200);
        owner->DrawString("Wide text", BPoint(frame.left + 3, frame.bottom - 4));
    }
};

/// What is seen after a column got another width is what painting all of it would show. At several
/// scales: see the tests' list.
class ColumnWidthTest : public ListWindowFixture
{
protected:
    static constexpr int kRows = 12;

    void OpenPainted(bool isHierarchical = false)
    {
        Open(isHierarchical);
        if (isHierarchical) {
            Locked([&] { fList->AddColumn(new CLVColumn(nullptr, 20, CLV_EXPANDER)); });
        }
        AddColumn(80, CLV_SORT_KEYABLE | CLV_PUSH_PASS);
        AddColumn(70, CLV_SORT_KEYABLE);
        AddColumn(60, CLV_SORT_KEYABLE);
        Locked([&] {
            for (int i = 0; i < kRows; i++) {
                fList->rows.push_back(std::make_unique<PaintedRow>("row", i % 4, true, true));
                std::fill_n(fList->rows.back()->values, 3, i);
                fList->AddItem(fList->rows.back().get());
            }
            fList->SetSortKey(isHierarchical ? 2 : 1);
        });
        TakePicture(fWindow);
        ForgetCells();
    }

    void ForgetCells()
    {
        Locked([&] {
            for (const auto& row : fList->rows) {
                row->cells.clear();
            }
        });
    }

    /// How many cells of a column were painted since.
    int CountPainted(int32 column)
    {
        return Locked([&] {
            int count = 0;
            for (const auto& row : fList->rows) {
                for (const TestRow::Cell& cell : row->cells) {
                    count += cell.column == column ? 1 : 0;
                }
            }
            return count;
        });
    }

    void SetWidth(int32 column, float width)
    {
        Locked([&] { fList->ColumnAt(column)->SetWidth(width); });
    }

    /// Paints everything anew and compares.
    void ExpectWholePicture(const char* what)
    {
        const Picture seen = TakePicture(fWindow);
        Locked([&] {
            fList->Invalidate();
            fList->HeaderStrip()->Invalidate();
        });
        const Picture painted = TakePicture(fWindow);
        ASSERT_EQ(seen.pixels.size(), painted.pixels.size());
        int32 wrong = 0;
        int32 first = -1;
        for (size_t i = 0; i < seen.pixels.size(); i++) {
            if (!(seen.pixels[i] == painted.pixels[i])) {
                wrong++;
                first = first < 0 ? static_cast<int32>(i) : first;
            }
        }
        EXPECT_EQ(wrong, 0) << what << ", first at " << first % seen.width << ","
                            << first / seen.width;
    }
};

TEST_F(ColumnWidthTest, MovesThePixelsOfTheColumnsBehind)
{
    OpenPainted();
    SetWidth(0, 96); // by a whole number of pixels at the scales that are tested
    TakePicture(fWindow);
    EXPECT_GT(CountPainted(0), 0);
    EXPECT_EQ(CountPainted(1), 0);
    EXPECT_EQ(CountPainted(2), 0);
}

TEST_F(ColumnWidthTest, ShowsTheSameAsPaintingAll)
{
    OpenPainted();
    for (const float width : {90.0f, 91.0f, 110.0f, 60.0f, 57.0f, 20.0f, 250.0f, 700.0f, 80.0f}) {
        for (const int32 column : {0, 1, 2}) {
            SetWidth(column, width);
            ExpectWholePicture(std::to_string(width).c_str());
        }
    }
}

TEST_F(ColumnWidthTest, ShowsTheSameWhereItIsScrolled)
{
    OpenPainted();
    SetWidth(2, 300);
    ScrollTo(55, 30);
    for (const float width : {40.0f, 100.0f, 30.0f, 31.0f, 33.0f, 20.0f}) {
        for (const int32 column : {0, 1}) {
            SetWidth(column, width);
            ExpectWholePicture(std::to_string(width).c_str());
        }
    }
}

TEST_F(ColumnWidthTest, ShowsTheSameAfterSeveralChangesWithoutPaintingBetween)
{
    OpenPainted();
    Locked([&] {
        fList->ColumnAt(0)->SetWidth(120);
        fList->ColumnAt(1)->SetWidth(90);
        fList->ColumnAt(0)->SetWidth(100);
        fList->ColumnAt(2)->SetWidth(20);
        fList->ColumnAt(1)->SetWidth(30);
    });
    ExpectWholePicture("several");
}

TEST_F(ColumnWidthTest, ShowsTheSameWhereAFrameIsDue)
{
    OpenPainted();
    for (const float width : {100.0f, 40.0f}) {
        Locked([&] {
            fWindow->Sync();
            snooze(40'000); // longer than a frame
            fList->Invalidate();
            fList->HeaderStrip()->Invalidate();
            fList->ColumnAt(0)->SetWidth(width);
        });
        ExpectWholePicture("due");
    }
}

TEST_F(ColumnWidthTest, ShowsTheSameWhereAPartIsInvalid)
{
    OpenPainted();
    Locked([&] {
        fList->ColumnAt(0)->SetWidth(82);
        fWindow->Sync(); // so that what follows is sooner than the next frame
        for (const int row : {2, 3, 5}) {
            fList->rows[static_cast<size_t>(row)]->values[1] += 3; // looks different now
            BRect cell = fList->ItemFrame(row);
            cell.left = fList->ColumnAt(1)->Begin();
            cell.right = fList->ColumnAt(1)->End();
            fList->Invalidate(cell);
        }
        fList->ColumnAt(0)->SetWidth(110);
    });
    ExpectWholePicture("invalid");
}

TEST_F(ColumnWidthTest, ShowsTheSameBesideAViewThatCoversAPart)
{
    OpenPainted();
    Locked([&] {
        auto* inside = new BView(BRect(100, 20, 140, 60), "inside", B_FOLLOW_NONE, 0);
        inside->SetViewColor(255, 0, 0);
        fList->AddChild(inside);
        auto* above = new BView(BRect(150, 90, 190, 130), "above", B_FOLLOW_NONE, 0);
        above->SetViewColor(0, 255, 0);
        fWindow->AddChild(above);
    });
    TakePicture(fWindow);
    for (const float width : {100.0f, 62.0f, 141.0f, 30.0f}) {
        SetWidth(0, width);
        ExpectWholePicture(std::to_string(width).c_str());
    }
}

TEST_F(ColumnWidthTest, ShowsTheSameInAnOutline)
{
    OpenPainted(true);
    for (const float width : {90.0f, 110.0f, 60.0f, 24.0f, 20.0f, 150.0f, 152.0f}) {
        for (const int32 column : {1, 2, 3}) {
            SetWidth(column, width);
            ExpectWholePicture((std::to_string(width) + " " + std::to_string(column)).c_str());
        }
    }
}

TEST_F(ColumnWidthTest, ShowsTheSameWhileAnEdgeIsDragged)
{
    OpenPainted();
    Press(BPoint(80, 8));
    for (const float x : {83.0f, 90.0f, 60.0f, 10.0f, 130.0f}) {
        Move(BPoint(x, 8));
        ExpectWholePicture(std::to_string(x).c_str());
    }
    Release(BPoint(130, 8));
    ExpectWholePicture("released");
}

} // namespace
