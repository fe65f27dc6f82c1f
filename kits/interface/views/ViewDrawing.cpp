#include <ViewDrawing.h>

#include "ViewAccess.h"
#include "ViewPainter.h"
#include "ViewState.h"
#include "interface/graphics/BitmapAccess.h"
#include "interface/graphics/FontAccess.h"
#include "interface/graphics/RegionAccess.h"

#include <Bitmap.h>
#include <Region.h>

#include <cstring>

namespace kits {

// Lines and rectangles

void ViewDrawing::MovePenTo(BPoint point)
{
    fState->SetPen(point);
}

void ViewDrawing::MovePenTo(float x, float y)
{
    MovePenTo(BPoint(x, y));
}

void ViewDrawing::MovePenBy(float x, float y)
{
    fState->SetPen(fState->Pen() + BPoint(x, y));
}

BPoint ViewDrawing::PenLocation() const
{
    return fState->Pen();
}

void ViewDrawing::StrokeLine(BPoint to, ::pattern p)
{
    StrokeLine(fState->Pen(), to, p);
}

void ViewDrawing::StrokeLine(BPoint from, BPoint to, ::pattern p)
{
    CheckLock();
    if (ViewPainter painter{Self()}) {
        painter.Line(from, to, painter.BrushFor(p));
    }
    fState->SetPen(to);
}

void ViewDrawing::BeginLineArray(int32 count)
{
    fState->lines.clear();
    fState->lines.reserve(static_cast<size_t>(count > 0 ? count : 0));
}

void ViewDrawing::AddLine(BPoint from, BPoint to, rgb_color color)
{
    fState->lines.push_back({from, to, color});
}

void ViewDrawing::EndLineArray()
{
    CheckLock();
    if (ViewPainter painter{Self()}) {
        for (const ColoredLine& line : fState->lines) {
            painter.Line(line.from, line.to, painter.BrushFor(line.color));
        }
    }
    fState->lines.clear();
}

void ViewDrawing::StrokeRect(BRect rect, ::pattern p)
{
    CheckLock();
    if (ViewPainter painter{Self()}; painter && rect.IsValid()) {
        QRect sides[4];
        painter.GetFrame(rect, sides);
        for (const QRect& side : sides) {
            painter.Fill(side, p);
        }
    }
}

void ViewDrawing::FillRect(BRect rect, ::pattern p)
{
    CheckLock();
    if (ViewPainter painter{Self()}) {
        painter.Fill(painter.Pixels(rect), p);
    }
}

void ViewDrawing::FillRegion(BRegion* region, ::pattern p)
{
    CheckLock();
    if (ViewPainter painter{Self()}; painter && region != nullptr) {
        for (const QRect& rect : RegionAccess::Get(*region)) {
            painter.Fill(painter.Pixels(RectOf(rect)), p);
        }
    }
}

void ViewDrawing::InvertRect(BRect rect)
{
    CheckLock();
    if (ViewPainter painter{Self()}) {
        painter.Invert(painter.Pixels(rect));
    }
}

// Shapes

void ViewDrawing::StrokeRoundRect(BRect rect, float xRadius, float yRadius, ::pattern p)
{
    CheckLock();
    if (ViewPainter painter{Self()}) {
        painter.RoundRect(rect, xRadius, yRadius, p, false);
    }
}

void ViewDrawing::FillRoundRect(BRect rect, float xRadius, float yRadius, ::pattern p)
{
    CheckLock();
    if (ViewPainter painter{Self()}) {
        painter.RoundRect(rect, xRadius, yRadius, p, true);
    }
}

void ViewDrawing::StrokeEllipse(BRect rect, ::pattern p)
{
    CheckLock();
    if (ViewPainter painter{Self()}) {
        painter.Ellipse(rect, p, false);
    }
}

void ViewDrawing::StrokeEllipse(BPoint center, float xRadius, float yRadius, ::pattern p)
{
    const BPoint radius(xRadius, yRadius);
    StrokeEllipse(BRect(center - radius, center + radius), p);
}

void ViewDrawing::FillEllipse(BRect rect, ::pattern p)
{
    CheckLock();
    if (ViewPainter painter{Self()}) {
        painter.Ellipse(rect, p, true);
    }
}

void ViewDrawing::FillEllipse(BPoint center, float xRadius, float yRadius, ::pattern p)
{
    const BPoint radius(xRadius, yRadius);
    FillEllipse(BRect(center - radius, center + radius), p);
}

void ViewDrawing::StrokeTriangle(BPoint a, BPoint b, BPoint c, ::pattern p)
{
    const BPoint corners[] = {a, b, c};
    StrokePolygon(corners, 3, true, p);
}

void ViewDrawing::FillTriangle(BPoint a, BPoint b, BPoint c, ::pattern p)
{
    const BPoint corners[] = {a, b, c};
    FillPolygon(corners, 3, p);
}

void ViewDrawing::StrokePolygon(const BPoint* points, int32 count, bool closed, ::pattern p)
{
    CheckLock();
    if (ViewPainter painter{Self()}) {
        painter.Polygon(points, count, p, false, closed);
    }
}

void ViewDrawing::FillPolygon(const BPoint* points, int32 count, ::pattern p)
{
    CheckLock();
    if (ViewPainter painter{Self()}) {
        painter.Polygon(points, count, p, true, true);
    }
}

// Text

void ViewDrawing::DrawString(const char* string)
{
    DrawString(string, -1, fState->Pen());
}

void ViewDrawing::DrawString(const char* string, int32 length)
{
    DrawString(string, length, fState->Pen());
}

void ViewDrawing::DrawString(const char* string, BPoint location)
{
    DrawString(string, -1, location);
}

void ViewDrawing::DrawString(const char* string, int32 length, BPoint location)
{
    CheckLock();
    if (string == nullptr) {
        return;
    }
    const std::string_view text(
        string, length < 0 ? std::strlen(string) : ::strnlen(string, static_cast<size_t>(length)));
    if (ViewPainter painter{Self()}) {
        painter.Text(text, location);
    }
    fState->SetPen(location);
    fState->now.penText = text;
}

// Bitmaps

void ViewDrawing::DrawBitmap(const BBitmap* bitmap)
{
    DrawBitmap(bitmap, fState->Pen());
}

void ViewDrawing::DrawBitmap(const BBitmap* bitmap, BPoint where)
{
    if (bitmap != nullptr) {
        DrawBitmap(bitmap, bitmap->Bounds(), bitmap->Bounds().OffsetToCopy(where));
    }
}

void ViewDrawing::DrawBitmap(const BBitmap* bitmap, BRect destination)
{
    if (bitmap != nullptr) {
        DrawBitmap(bitmap, bitmap->Bounds(), destination);
    }
}

void ViewDrawing::DrawBitmap(const BBitmap* bitmap, BRect source, BRect destination)
{
    CheckLock();
    if (bitmap == nullptr || !bitmap->IsValid() || !source.IsValid()) {
        return;
    }
    if (ViewPainter painter{Self()}) {
        const BRect part = source.OffsetByCopy(-bitmap->Bounds().left, -bitmap->Bounds().top);
        const QRectF pixels(static_cast<double>(part.left), static_cast<double>(part.top),
                            static_cast<double>(part.Width() + 1),
                            static_cast<double>(part.Height() + 1));
        const BitmapPart picture =
            BitmapAccess::Picture(*bitmap, pixels, painter.Scale(), fState->now.mode != B_OP_COPY);
        painter.Picture(picture.image, picture.pixels, painter.Pixels(destination));
    }
}

void ViewDrawing::DrawBitmapAsync(const BBitmap* bitmap, BPoint where)
{
    DrawBitmap(bitmap, where);
}

void ViewDrawing::DrawBitmapAsync(const BBitmap* bitmap, BRect destination)
{
    DrawBitmap(bitmap, destination);
}

void ViewDrawing::DrawBitmapAsync(const BBitmap* bitmap, BRect source, BRect destination)
{
    DrawBitmap(bitmap, source, destination);
}

} // namespace kits
