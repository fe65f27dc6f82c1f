#pragma once

#include <Font.h>
#include <GraphicsDefs.h>
#include <Rect.h>
#include <ViewConstants.h>

#include <memory>

class BBitmap;
class BRegion;
class BString;
class BView;

namespace kits {

class ViewAccess;
struct ViewState;

/// The half of BView that draws: what a view draws with, and what it can draw. Only BView is one.
///
/// Coordinates are the view's, of pixel centres; a rectangle includes its right and bottom edge. A
/// `pattern` chooses pixel by pixel between the high and the low colour. Drawing into a view that
/// is in no window, or cannot be seen, does nothing but move the pen.
/// Thread: once the view is attached, call with its window locked.
class ViewDrawing
{
public:
    ViewDrawing(const ViewDrawing&) = delete;
    ViewDrawing& operator=(const ViewDrawing&) = delete;

    // State

    /// Saves pen, font, colours, modes and clip until PopState(); at most a thousand times.
    void PushState();
    /// Takes back what PushState() saved last; does nothing when nothing is saved.
    void PopState();
    /// Sets the colour of what is drawn; black unless changed.
    virtual void SetHighColor(rgb_color color);
    void SetHighColor(uint8 red, uint8 green, uint8 blue, uint8 alpha = 255);
    /// The colour that things are drawn in.
    rgb_color HighColor() const;
    /// Sets the colour of a pattern's other pixels; white unless changed.
    virtual void SetLowColor(rgb_color color);
    void SetLowColor(uint8 red, uint8 green, uint8 blue, uint8 alpha = 255);
    /// The colour of a pattern's other pixels.
    rgb_color LowColor() const;
    /// Sets how what is drawn meets what is there; B_OP_COPY unless changed.
    virtual void SetDrawingMode(drawing_mode mode);
    /// How what is drawn meets what is there.
    drawing_mode DrawingMode() const;
    /// Sets where B_OP_ALPHA takes opacity from: each pixel, or the high colour for all.
    void SetBlendingMode(source_alpha source, alpha_function alpha);
    /// Sets the breadth of lines. Units: view units, at least 1.
    virtual void SetPenSize(float size);
    /// The breadth of lines.
    float PenSize() const;
    /// Sets how lines end and meet; a mitred corner reaches at most `miterLimit` breadths.
    void SetLineMode(cap_mode cap, join_mode join, float miterLimit = 10);
    /// Takes over what `mask` names of a font; does nothing with null.
    virtual void SetFont(const BFont* font, uint32 mask = B_FONT_ALL);
    /// Copies the view's font into `font`.
    void GetFont(BFont* font) const;
    /// Changes the font's size alone.
    void SetFontSize(float size);
    /// Measures a line of the view's font.
    void GetFontHeight(font_height* height) const;
    /// How broad a text, or its first `length` bytes, is in the view's font; 0 for null.
    float StringWidth(const char* string) const;
    float StringWidth(const char* string, int32 length) const;
    /// Cuts a text so that it is at most `width` broad in the view's font.
    void TruncateString(BString* text, uint32 mode, float width) const;
    /// Says where drawing may happen at this moment; nowhere while the view is in no window.
    void GetClippingRegion(BRegion* region) const;
    /// Limits drawing to `region` as well; null lifts that.
    virtual void ConstrainClippingRegion(BRegion* region);

    // The pen

    /// Puts the pen to a place.
    void MovePenTo(BPoint point);
    void MovePenTo(float x, float y);
    /// Moves the pen by a distance.
    void MovePenBy(float x, float y);
    /// Where the pen is: what draws without a place begins there.
    BPoint PenLocation() const;

    // Lines

    /// Draws a line, from the pen's place unless told otherwise, and moves the pen to its end.
    void StrokeLine(BPoint to, ::pattern p = B_SOLID_HIGH);
    void StrokeLine(BPoint from, BPoint to, ::pattern p = B_SOLID_HIGH);
    /// Begins to gather lines, about `count` of them.
    void BeginLineArray(int32 count);
    /// Adds a line of its own colour to those gathered.
    void AddLine(BPoint from, BPoint to, rgb_color color);
    /// Draws the gathered lines in the order they were added.
    void EndLineArray();

    // Shapes. An invalid rectangle draws nothing.

    /// Draws a rectangle's outline, which lies inside it.
    void StrokeRect(BRect rect, ::pattern p = B_SOLID_HIGH);
    /// Fills a rectangle.
    void FillRect(BRect rect, ::pattern p = B_SOLID_HIGH);
    /// Fills all rectangles of a region; null draws nothing.
    void FillRegion(BRegion* region, ::pattern p = B_SOLID_HIGH);
    /// Turns each pixel of a rectangle into its opposite; twice is as before.
    void InvertRect(BRect rect);
    /// Draws the outline of a rectangle whose corners are quarters of an ellipse.
    void StrokeRoundRect(BRect rect, float xRadius, float yRadius, ::pattern p = B_SOLID_HIGH);
    /// Fills a rectangle whose corners are quarters of an ellipse.
    void FillRoundRect(BRect rect, float xRadius, float yRadius, ::pattern p = B_SOLID_HIGH);
    /// Draws the outline of the ellipse within a rectangle, or around a centre.
    void StrokeEllipse(BRect rect, ::pattern p = B_SOLID_HIGH);
    void StrokeEllipse(BPoint center, float xRadius, float yRadius, ::pattern p = B_SOLID_HIGH);
    /// Fills the ellipse within a rectangle, or around a centre.
    void FillEllipse(BRect rect, ::pattern p = B_SOLID_HIGH);
    void FillEllipse(BPoint center, float xRadius, float yRadius, ::pattern p = B_SOLID_HIGH);
    /// Draws the outline of a triangle.
    void StrokeTriangle(BPoint a, BPoint b, BPoint c, ::pattern p = B_SOLID_HIGH);
    /// Fills a triangle.
    void FillTriangle(BPoint a, BPoint b, BPoint c, ::pattern p = B_SOLID_HIGH);
    /// Draws lines from corner to corner; `closed` joins the last corner with the first.
    void StrokePolygon(const BPoint* points, int32 count, bool closed = true,
                       ::pattern p = B_SOLID_HIGH);
    /// Fills the polygon of `count` corners.
    void FillPolygon(const BPoint* points, int32 count, ::pattern p = B_SOLID_HIGH);

    // Text and pictures

    /// Draws a text, or its first `length` bytes, with its base line starting at the pen's place or
    /// at `location`, and moves the pen to its end.
    void DrawString(const char* string);
    void DrawString(const char* string, int32 length);
    void DrawString(const char* string, BPoint location);
    void DrawString(const char* string, int32 length, BPoint location);
    /// Draws a bitmap, or its part `source`, at the pen's place, with its left top at `where`, or
    /// scaled to `destination`; null draws nothing.
    void DrawBitmap(const BBitmap* bitmap);
    void DrawBitmap(const BBitmap* bitmap, BPoint where);
    void DrawBitmap(const BBitmap* bitmap, BRect destination);
    void DrawBitmap(const BBitmap* bitmap, BRect source, BRect destination);
    /// Draws like DrawBitmap(): the bitmap may be deleted at once here, too.
    void DrawBitmapAsync(const BBitmap* bitmap, BPoint where);
    void DrawBitmapAsync(const BBitmap* bitmap, BRect destination);
    void DrawBitmapAsync(const BBitmap* bitmap, BRect source, BRect destination);

private:
    friend class ViewAccess;
    friend class ::BView;

    ViewDrawing();
    virtual ~ViewDrawing();

    BView& Self();
    const BView& Self() const;
    void CheckLock() const;
    void ClipChanged();

    std::unique_ptr<ViewState> fState; // never null
};

} // namespace kits
