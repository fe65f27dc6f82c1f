#include "AlertIcons.h"

#include "interface/views/Look.h"

#include <View.h>

namespace kits {

namespace {

constexpr rgb_color kShade = {180, 180, 180, 255};
constexpr rgb_color kWhite = {255, 255, 255, 255};
constexpr rgb_color kBlue = {44, 92, 190, 255};
constexpr rgb_color kDarkBlue = {22, 50, 120, 255};
constexpr rgb_color kRed = {204, 36, 36, 255};
constexpr rgb_color kDarkRed = {120, 14, 14, 255};
constexpr rgb_color kYellow = {255, 206, 40, 255};
constexpr rgb_color kDarkYellow = {140, 100, 0, 255};
constexpr rgb_color kPaleYellow = {255, 240, 150, 255};
constexpr rgb_color kMetal = {130, 130, 138, 255};
constexpr rgb_color kInk = {40, 30, 0, 255};

// Draws in the icon's own 32 x 32 units.
class IconPainter
{
public:
    IconPainter(BView* view, BPoint origin) : fView(view), fOrigin(origin) {}

    void Disc(float left, float top, float right, float bottom, rgb_color color)
    {
        fView->SetHighColor(color);
        fView->FillEllipse(BRect(left, top, right, bottom).OffsetByCopy(fOrigin));
    }

    void Box(float left, float top, float right, float bottom, rgb_color color)
    {
        fView->SetHighColor(color);
        fView->FillRect(BRect(left, top, right, bottom).OffsetByCopy(fOrigin));
    }

    void Shape(const BPoint* corners, int32 count, rgb_color color)
    {
        BPoint moved[8];
        for (int32 i = 0; i < count; i++) {
            moved[i] = corners[i] + fOrigin;
        }
        fView->SetHighColor(color);
        fView->FillPolygon(moved, count);
    }

private:
    BView* fView;
    BPoint fOrigin;
};

void DrawInfo(IconPainter& icon)
{
    icon.Disc(2, 3, 31, 31, kShade);
    icon.Disc(1, 1, 29, 29, kDarkBlue);
    icon.Disc(2, 2, 28, 28, kBlue);
    icon.Disc(13, 6, 17, 10, kWhite);
    icon.Box(12, 13, 16, 14, kWhite);
    icon.Box(14, 13, 16, 22, kWhite);
    icon.Box(12, 22, 18, 23, kWhite);
}

void DrawIdea(IconPainter& icon)
{
    icon.Disc(6, 3, 28, 27, kShade);
    icon.Disc(4, 1, 26, 23, kDarkYellow);
    icon.Disc(5, 2, 25, 22, kYellow);
    icon.Disc(8, 4, 15, 11, kPaleYellow);
    icon.Box(11, 21, 19, 24, kDarkYellow);
    icon.Box(12, 17, 18, 23, kYellow);
    icon.Box(11, 25, 19, 26, kMetal);
    icon.Box(11, 28, 19, 29, kMetal);
    icon.Box(13, 30, 17, 31, kInk);
}

void DrawWarning(IconPainter& icon)
{
    const BPoint shade[] = {BPoint(17, 3), BPoint(32, 31), BPoint(4, 31)};
    const BPoint edge[] = {BPoint(15, 0), BPoint(30, 29), BPoint(0, 29)};
    const BPoint face[] = {BPoint(15, 3), BPoint(28, 28), BPoint(2, 28)};
    icon.Shape(shade, 3, kShade);
    icon.Shape(edge, 3, kDarkYellow);
    icon.Shape(face, 3, kYellow);
    icon.Box(14, 11, 16, 20, kInk);
    icon.Disc(13.5f, 22, 16.5f, 25, kInk);
}

void DrawStop(IconPainter& icon)
{
    const BPoint shade[] = {BPoint(11, 3),  BPoint(23, 3),  BPoint(31, 11), BPoint(31, 23),
                            BPoint(23, 31), BPoint(11, 31), BPoint(3, 23),  BPoint(3, 11)};
    const BPoint edge[] = {BPoint(9, 1),   BPoint(21, 1), BPoint(29, 9), BPoint(29, 21),
                           BPoint(21, 29), BPoint(9, 29), BPoint(1, 21), BPoint(1, 9)};
    const BPoint face[] = {BPoint(9.5f, 2.5f),   BPoint(20.5f, 2.5f),  BPoint(27.5f, 9.5f),
                           BPoint(27.5f, 20.5f), BPoint(20.5f, 27.5f), BPoint(9.5f, 27.5f),
                           BPoint(2.5f, 20.5f),  BPoint(2.5f, 9.5f)};
    icon.Shape(shade, 8, kShade);
    icon.Shape(edge, 8, kDarkRed);
    icon.Shape(face, 8, kRed);
    icon.Box(7, 13, 23, 17, kWhite);
}

} // namespace

void DrawAlertIcon(BView* view, BPoint place, alert_type type)
{
    IconPainter icon(view, place);
    switch (type) {
    case B_INFO_ALERT:
        DrawInfo(icon);
        break;
    case B_IDEA_ALERT:
        DrawIdea(icon);
        break;
    case B_WARNING_ALERT:
        DrawWarning(icon);
        break;
    case B_STOP_ALERT:
        DrawStop(icon);
        break;
    default:
        break;
    }
}

} // namespace kits
