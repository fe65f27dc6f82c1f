#include "viewer/ViewedText.h"

#include "MessageCodes.h"
#include "viewer/ViewerKeys.h"

#include <InterfaceDefs.h>
#include <Message.h>
#include <ScrollBar.h>
#include <Window.h>

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
    if ((bytes[0] == B_FUNCTION_KEY && FunctionKey()) || ViewerKey(*this, bytes[0])) {
        return;
    }
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

/// F3 goes on with a search, with Shift backwards.
bool ViewedText::FunctionKey()
{
    const BMessage* key = Window()->CurrentMessage();
    if (key == nullptr || key->GetInt32("key", 0) != B_F3_KEY) {
        return false;
    }
    const auto held = static_cast<uint32>(key->GetInt32("modifiers", 0));
    Window()->PostMessage((held & B_SHIFT_KEY) != 0 ? kFindPrevious : kFindNext);
    return true;
}

} // namespace norvane
