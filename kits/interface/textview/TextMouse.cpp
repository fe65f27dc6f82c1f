#include "TextViewState.h"

#include <AppDefs.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <Window.h>

#include <algorithm>

// Selecting with the mouse.

namespace kits {

namespace {

constexpr bigtime_t kScrollInterval = 50'000;

int32 FieldOf(const BMessage* message, const char* name, int32 otherwise)
{
    return message != nullptr ? message->GetInt32(name, otherwise) : otherwise;
}

TextViewState::Grain GrainOf(int32 clicks)
{
    switch ((clicks - 1) % 3) {
    case 1:
        return TextViewState::Grain::kWord;
    case 2:
        return TextViewState::Grain::kLine;
    default:
        return TextViewState::Grain::kCharacter;
    }
}

} // namespace

void TextViewState::Press(BPoint where)
{
    const BMessage* press = view.Window() != nullptr ? view.Window()->CurrentMessage() : nullptr;
    const int32 button = FieldOf(press, "button", B_PRIMARY_MOUSE_BUTTON);
    if (!isSelectable && !isEditable) {
        return;
    }
    EndPreview();
    if (!view.IsFocus()) {
        view.MakeFocus(true);
    }
    const int32 offset = geometry.OffsetAt(where);
    if (button == B_TERTIARY_MOUSE_BUTTON && isEditable) {
        MoveTo(offset, Reach::kCaret);
        PasteSelection();
        return;
    }
    if (button != B_PRIMARY_MOUSE_BUTTON) {
        return;
    }
    const bool isExtending = (FieldOf(press, "modifiers", 0) & int32(B_SHIFT_KEY)) != 0;
    undo.EndRun();
    isDragging = true;
    dragPoint = where;
    view.SetMouseEventMask(B_POINTER_EVENTS, B_NO_POINTER_HISTORY);
    if (isExtending) {
        dragGrain = Grain::kCharacter;
        dragFrom = anchor;
        dragTo = anchor;
        SetSelection(anchor, offset);
        return;
    }
    dragGrain = GrainOf(FieldOf(press, "clicks", 1));
    GetGrain(offset, dragGrain, &dragFrom, &dragTo);
    SetSelection(dragFrom, dragTo);
}

void TextViewState::DragTo(BPoint where)
{
    if (!isDragging) {
        return;
    }
    dragPoint = where;
    int32 from = 0;
    int32 to = 0;
    GetGrain(geometry.OffsetAt(where), dragGrain, &from, &to);
    if (from < dragFrom) {
        SetSelection(dragTo, from);
    } else {
        SetSelection(dragFrom, std::max(to, dragTo));
    }
    if (view.Bounds().Contains(where)) {
        dragTicker.reset();
    } else if (dragTicker == nullptr) {
        dragTicker = std::make_unique<Ticker>(BMessenger(&view), 0, kScrollInterval);
    }
}

void TextViewState::DragTick()
{
    if (!isDragging || dragTicker == nullptr) {
        dragTicker.reset();
        return;
    }
    const BPoint before = view.Bounds().LeftTop();
    ScrollTo(caret);
    // The pointer stays where it is on the screen, while the text moves under it.
    dragPoint += view.Bounds().LeftTop() - before;
    DragTo(dragPoint);
    if (dragTicker != nullptr) {
        dragTicker->NextTick();
    }
}

void TextViewState::ShapePointer()
{
    const bool isText = isEditable || isSelectable;
    view.SetViewCursor(isText ? B_CURSOR_I_BEAM : B_CURSOR_SYSTEM_DEFAULT);
}

void TextViewState::Release()
{
    if (!isDragging) {
        return;
    }
    isDragging = false;
    dragTicker.reset();
    OfferSelection();
}

} // namespace kits
