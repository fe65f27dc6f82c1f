#include "Look.h"

#include "WindowAccess.h"

#include "WindowState.h"

#include <Font.h>
#include <Message.h>
#include <View.h>
#include <Window.h>

#include <cmath>

namespace kits::look {

void Frame(BView* view, BRect frame, rgb_color leftTop, rgb_color rightBottom)
{
    if (!frame.IsValid()) {
        return;
    }
    view->SetHighColor(leftTop);
    view->StrokeLine(frame.LeftBottom(), frame.LeftTop());
    view->StrokeLine(frame.LeftTop(), frame.RightTop());
    view->SetHighColor(rightBottom);
    view->StrokeLine(BPoint(frame.left + 1, frame.bottom), frame.RightBottom());
    view->StrokeLine(frame.RightBottom(), BPoint(frame.right, frame.top + 1));
}

void RaisedFrame(BView* view, BRect frame)
{
    Frame(view, frame, kShine, kShadow);
}

void SunkenFrame(BView* view, BRect frame)
{
    Frame(view, frame, kShadow, kShine);
}

void Fill(BView* view, BRect area, rgb_color color)
{
    if (area.IsValid()) {
        view->SetHighColor(color);
        view->FillRect(area);
    }
}

void CenteredText(BView* view, BRect area, const char* text)
{
    font_height height;
    view->GetFontHeight(&height);
    const float width = view->StringWidth(text);
    const float left = std::floor(area.left + (area.Width() + 1 - width) / 2);
    const float lineTop =
        area.top + std::floor((area.Height() + 1 - (height.ascent + height.descent)) / 2);
    view->DrawString(text, BPoint(left, lineTop + height.ascent));
}

void ArrowHead(BView* view, BRect area, Arrow direction, int32 depth, rgb_color color)
{
    const bool isUpright = direction == Arrow::kUp || direction == Arrow::kDown;
    const float breadth = static_cast<float>(2 * depth - 1);
    const float width = isUpright ? breadth : static_cast<float>(depth);
    const float height = isUpright ? static_cast<float>(depth) : breadth;
    const float left = area.left + std::floor((area.Width() + 1 - width) / 2);
    const float top = area.top + std::floor((area.Height() + 1 - height) / 2);
    // Rows of whole units: exact at every scale, which a filled triangle is not.
    view->SetHighColor(color);
    for (int32 row = 0; row < depth; row++) {
        const bool isTipFirst = direction == Arrow::kUp || direction == Arrow::kLeft;
        const auto place = static_cast<float>(isTipFirst ? row : depth - 1 - row);
        const auto indent = static_cast<float>(depth - 1 - row);
        if (isUpright) {
            view->FillRect(
                BRect(left + indent, top + place, left + breadth - 1 - indent, top + place));
        } else {
            view->FillRect(
                BRect(left + place, top + indent, left + place, top + breadth - 1 - indent));
        }
    }
}

bool IsFreshKey(const BMessage* message)
{
    if (message == nullptr) {
        return true;
    }
    int32 repeat = 0;
    bool isEarly = false;
    message->FindInt32("be:key_repeat", &repeat);
    message->FindBool("kits:early", &isEarly);
    return repeat == 0 && !isEarly;
}

bool ShowsFocus(const BView* view)
{
    const BWindow* window = view->Window();
    return window != nullptr && view->IsFocus() &&
           (window->IsActive() || WindowAccess::State(*window).awaitsActivation);
}

bool MayAnswer(const BView* view)
{
    const BWindow* window = view->Window();
    return window != nullptr && IsFreshKey(window->CurrentMessage()) && window->TakesAnswers();
}

} // namespace kits::look
