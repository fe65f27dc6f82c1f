#include <View.h>

#include "Access.h"
#include "BitmapAccess.h"
#include "FontAccess.h"
#include "RegionAccess.h"
#include "ViewPainter.h"
#include "ViewState.h"

#include <Bitmap.h>
#include <Region.h>

#include <cstring>

using kits::ViewPainter;

// Lines and rectangles

void BView::MovePenTo(BPoint point)
{
    fState->SetPen(point);
}

void BView::MovePenTo(float x, float y)
{
    MovePenTo(BPoint(x, y));
}

void BView::MovePenBy(float x, float y)
{
    fState->SetPen(fState->Pen() + BPoint(x, y));
}

BPoint BView::PenLocation() const
{
    return fState->Pen();
}

void BView::StrokeLine(BPoint to, ::pattern p)
{
    StrokeLine(fState->Pen(), to, p);
}

void BView::StrokeLine(BPoint from, BPoint to, ::pattern p)
{
    CheckLock();
    if (ViewPainter painter{*this}) {
        painter.Line(from, to, painter.BrushFor(p));
    }
    fState->SetPen(to);
}

void BView::BeginLineArray(int32 count)
{
    fState->lines.clear();
    fState->lines.reserve(static_cast<size_t>(count > 0 ? count : 0));
}

void BView::AddLine(BPoint from, BPoint to, rgb_color color)
{
    fState->lines.push_back({from, to, color});
}

void BView::EndLineArray()
{
    CheckLock();
    if (ViewPainter painter{*this}) {
        for (const kits::ColoredLine& line : fState->lines) {
            painter.Line(line.from, line.to, painter.BrushFor(line.color));
        }
    }
    fState->lines.clear();
}

void BView::StrokeRect(BRect rect, ::pattern p)
{
    CheckLock();
    if (ViewPainter painter{*this}; painter && rect.IsValid()) {
        QRect sides[4];
        painter.GetFrame(rect, sides);
        for (const QRect& side : sides) {
            painter.Fill(side, p);
        }
    }
}

void BView::FillRect(BRect rect, ::pattern p)
{
    CheckLock();
    if (ViewPainter painter{*this}) {
        painter.Fill(painter.Pixels(rect), p);
    }
}

void BView::FillRegion(BRegion* region, ::pattern p)
{
    CheckLock();
    if (ViewPainter painter{*this}; painter && region != nullptr) {
        for (const QRect& rect : kits::RegionAccess::Get(*region)) {
            painter.Fill(painter.Pixels(kits::RectOf(rect)), p);
        }
    }
}

void BView::InvertRect(BRect rect)
{
    CheckLock();
    if (ViewPainter painter{*this}) {
        painter.Invert(painter.Pixels(rect));
    }
}

// Shapes

void BView::StrokeRoundRect(BRect rect, float xRadius, float yRadius, ::pattern p)
{
    CheckLock();
    if (ViewPainter painter{*this}) {
        painter.RoundRect(rect, xRadius, yRadius, p, false);
    }
}

void BView::FillRoundRect(BRect rect, float xRadius, float yRadius, ::pattern p)
{
    CheckLock();
    if (ViewPainter painter{*this}) {
        painter.RoundRect(rect, xRadius, yRadius, p, true);
    }
}

void BView::StrokeEllipse(BRect rect, ::pattern p)
{
    CheckLock();
    if (ViewPainter painter{*this}) {
        painter.Ellipse(rect, p, false);
    }
}

void BView::StrokeEllipse(BPoint center, float xRadius, float yRadius, ::pattern p)
{
    const BPoint radius(xRadius, yRadius);
    StrokeEllipse(BRect(center - radius, center + radius), p);
}

void BView::FillEllipse(BRect rect, ::pattern p)
{
    CheckLock();
    if (ViewPainter painter{*this}) {
        painter.Ellipse(rect, p, true);
    }
}

void BView::FillEllipse(BPoint center, float xRadius, float yRadius, ::pattern p)
{
    const BPoint radius(xRadius, yRadius);
    FillEllipse(BRect(center - radius, center + radius), p);
}

void BView::StrokeTriangle(BPoint a, BPoint b, BPoint c, ::pattern p)
{
    const BPoint corners[] = {a, b, c};
    StrokePolygon(corners, 3, true, p);
}

void BView::FillTriangle(BPoint a, BPoint b, BPoint c, ::pattern p)
{
    const BPoint corners[] = {a, b, c};
    FillPolygon(corners, 3, p);
}

void BView::StrokePolygon(const BPoint* points, int32 count, bool closed, ::pattern p)
{
    CheckLock();
    if (ViewPainter painter{*this}) {
        painter.Polygon(points, count, p, false, closed);
    }
}

void BView::FillPolygon(const BPoint* points, int32 count, ::pattern p)
{
    CheckLock();
    if (ViewPainter painter{*this}) {
        painter.Polygon(points, count, p, true, true);
    }
}

// Text

void BView::DrawString(const char* string)
{
    DrawString(string, -1, fState->Pen());
}

void BView::DrawString(const char* string, int32 length)
{
    DrawString(string, length, fState->Pen());
}

void BView::DrawString(const char* string, BPoint location)
{
    DrawString(string, -1, location);
}

void BView::DrawString(const char* string, int32 length, BPoint location)
{
    CheckLock();
    if (string == nullptr) {
        return;
    }
    if (ViewPainter painter{*this}) {
        painter.Text(string, length, location);
    }
    fState->SetPen(location);
    fState->now.penText.assign(string, length < 0 ? std::strlen(string)
                                                  : ::strnlen(string, static_cast<size_t>(length)));
}

// Bitmaps

void BView::DrawBitmap(const BBitmap* bitmap)
{
    DrawBitmap(bitmap, fState->Pen());
}

void BView::DrawBitmap(const BBitmap* bitmap, BPoint where)
{
    if (bitmap != nullptr) {
        DrawBitmap(bitmap, bitmap->Bounds(), bitmap->Bounds().OffsetToCopy(where));
    }
}

void BView::DrawBitmap(const BBitmap* bitmap, BRect destination)
{
    if (bitmap != nullptr) {
        DrawBitmap(bitmap, bitmap->Bounds(), destination);
    }
}

void BView::DrawBitmap(const BBitmap* bitmap, BRect source, BRect destination)
{
    CheckLock();
    if (bitmap == nullptr || !bitmap->IsValid() || !source.IsValid()) {
        return;
    }
    if (ViewPainter painter{*this}) {
        double scale = 1;
        const QImage picture = kits::BitmapAccess::Picture(*bitmap, painter.Scale(),
                                                           fState->now.mode != B_OP_COPY, &scale);
        const BRect part = source.OffsetByCopy(-bitmap->Bounds().left, -bitmap->Bounds().top);
        const QRectF pixels(static_cast<double>(part.left) * scale,
                            static_cast<double>(part.top) * scale,
                            static_cast<double>(part.Width() + 1) * scale,
                            static_cast<double>(part.Height() + 1) * scale);
        painter.Picture(picture, pixels & QRectF(picture.rect()), painter.Pixels(destination));
    }
}

void BView::DrawBitmapAsync(const BBitmap* bitmap, BPoint where)
{
    DrawBitmap(bitmap, where);
}

void BView::DrawBitmapAsync(const BBitmap* bitmap, BRect destination)
{
    DrawBitmap(bitmap, destination);
}

void BView::DrawBitmapAsync(const BBitmap* bitmap, BRect source, BRect destination)
{
    DrawBitmap(bitmap, source, destination);
}
