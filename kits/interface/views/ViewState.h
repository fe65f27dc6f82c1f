#pragma once

#include "server/WindowShape.h"

#include <Font.h>
#include <GraphicsDefs.h>
#include <Region.h>
#include <ViewConstants.h>

#include <optional>
#include <string>
#include <vector>

namespace kits {

/// What PushState() saves.
struct DrawState
{
    rgb_color high = {0, 0, 0, 255};
    rgb_color low = {255, 255, 255, 255};
    drawing_mode mode = B_OP_COPY;
    source_alpha sourceAlpha = B_PIXEL_ALPHA;
    alpha_function alphaFunction = B_ALPHA_OVERLAY;
    float penSize = 1;
    cap_mode cap = B_BUTT_CAP;
    join_mode join = B_MITER_JOIN;
    float miterLimit = 10;
    BPoint pen;
    std::string penText; // drawn from `pen` on, in `font`: the pen is at its end
    BFont font;
    std::optional<BRegion> clip; // view units
};

struct ColoredLine
{
    BPoint from;
    BPoint to;
    rgb_color color;
};

/// What a view draws with.
struct ViewState
{
    /// Where the pen is. Text is measured only here: few callers ask, and it costs as much as
    /// drawing.
    BPoint Pen()
    {
        if (!now.penText.empty()) {
            now.pen.x += now.font.StringWidth(now.penText.c_str());
            now.penText.clear();
        }
        return now.pen;
    }
    void SetPen(BPoint pen)
    {
        now.pen = pen;
        now.penText.clear();
    }

    DrawState now;
    std::vector<DrawState> saved;
    std::vector<ColoredLine> lines;              // between BeginLineArray() and EndLineArray()
    bool isTold = false;                         // AttachedToWindow() was called
    bool isAllTold = false;                      // AllAttached() was called
    bool isPulsed = false;                       // counted among those that want Pulse()
    bool isPointerInside = false;                // as last told to a view that follows the pointer
    PointerShape pointer = PointerShape::kArrow; // over the view
};

} // namespace kits
