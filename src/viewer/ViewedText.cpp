#include "viewer/ViewedText.h"

#include <InterfaceDefs.h>
#include <ScrollBar.h>

namespace norvane {

ViewedText::ViewedText(BRect frame)
    : BTextView(frame, "textView", frame.OffsetToCopy(0, 0), B_FOLLOW_ALL_SIDES,
                B_WILL_DRAW | B_NAVIGABLE)
{
    MakeEditable(false);
    SetWordWrap(false);
    SetDoesUndo(false);
}

void ViewedText::KeyDown(const char* bytes, int32 byteCount)
{
    BScrollBar* bar = ScrollBar(B_HORIZONTAL);
    const bool isSideways = bytes[0] == B_LEFT_ARROW || bytes[0] == B_RIGHT_ARROW;
    if (!isSideways || bar == nullptr) {
        BTextView::KeyDown(bytes, byteCount);
        return;
    }
    float step = 0;
    float page = 0;
    bar->GetSteps(&step, &page);
    bar->SetValue(bar->Value() + (bytes[0] == B_LEFT_ARROW ? -step : step));
}

} // namespace norvane
