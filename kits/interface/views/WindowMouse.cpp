#include "WindowMouse.h"

#include "ViewAccess.h"
#include "ViewState.h"
#include "WindowState.h"

#include "server/DraggedMessage.h"

#include <AppDefs.h>
#include <Message.h>
#include <View.h>

#include <algorithm>

namespace kits {

namespace {

BPoint WhereOf(const BMessage& message)
{
    BPoint where(-1, -1);
    message.FindPoint("where", &where);
    return where;
}

BPoint InView(const BView& view, BPoint where)
{
    double x = 0;
    double y = 0;
    ViewAccess::GetOrigin(view, &x, &y);
    return BPoint(static_cast<float>(static_cast<double>(where.x) - x),
                  static_cast<float>(static_cast<double>(where.y) - y));
}

// Calls `tell` for the target and for those that listen to the pointer wherever it is. Any of them
// may take others out of the window.
template<typename Tell>
void Deliver(WindowState& state, BView* target, Tell tell)
{
    std::vector<BView*> outer = std::exchange(state.delivering, {});
    if (target != nullptr) {
        state.delivering.push_back(target);
    }
    for (BView* view : state.listening) {
        if (view != target && (view->EventMask() & B_POINTER_EVENTS) != 0) {
            state.delivering.push_back(view);
        }
    }
    for (size_t i = 0; i < state.delivering.size(); ++i) {
        if (state.delivering[i] != nullptr) {
            tell(*state.delivering[i]);
        }
    }
    state.delivering = std::move(outer);
}

// What a view is told of the pointer, from whether it was and is over it.
uint32 TransitOf(bool was, bool is)
{
    if (is) {
        return was ? B_INSIDE_VIEW : B_ENTERED_VIEW;
    }
    return was ? B_EXITED_VIEW : B_OUTSIDE_VIEW;
}

void TellMoved(BView& view, BPoint where, bool isInside, const BMessage* dragged)
{
    bool& was = ViewAccess::State(view).isPointerInside;
    const uint32 transit = TransitOf(std::exchange(was, isInside), isInside);
    view.MouseMoved(InView(view, where), transit, dragged);
}

bool IsDragging(const BMessage& message)
{
    return message.HasInt32("kits:drag");
}

void EndCapture(WindowState& state)
{
    if (state.captured != nullptr) {
        ViewAccess::ClearPointerMask(*state.captured);
        state.captured = nullptr;
    }
}

} // namespace

BView* MouseTarget(const WindowState& state, const BMessage& message)
{
    if (state.captured != nullptr && message.what != B_MOUSE_WHEEL_CHANGED &&
        !IsDragging(message)) {
        return state.captured;
    }
    if (message.what == B_MOUSE_MOVED &&
        message.GetInt32("be:transit", B_INSIDE_VIEW) == B_EXITED_VIEW) {
        return nullptr;
    }
    return state.host->ViewAt(WhereOf(message));
}

void MouseDown(WindowState& state, BMessage* message, BView* target)
{
    const BPoint where = WhereOf(*message);
    if (target != nullptr) {
        message->AddPoint("be:view_where", InView(*target, where));
    }
    Deliver(state, target, [where](BView& view) { view.MouseDown(InView(view, where)); });
}

void MouseUp(WindowState& state, const BMessage& message, BView* target)
{
    const BPoint where = WhereOf(message);
    const bool isLast = message.GetInt32("buttons", 0) == 0;
    Deliver(state, target, [where](BView& view) { view.MouseUp(InView(view, where)); });
    if (isLast) {
        EndCapture(state);
        ShapePointer(state);
    }
}

void MouseMoved(WindowState& state, const BMessage& message, BView* target)
{
    const BPoint where = WhereOf(message);
    const std::shared_ptr<const BMessage> dragged =
        DraggedMessage::Find(message.GetInt32("kits:drag", 0));
    // What is dragged is over what lies below the pointer; who began it waits for the release.
    BView* captured = IsDragging(message) ? nullptr : state.captured;
    if (captured != nullptr && message.GetInt32("buttons", 0) == 0) {
        MouseUp(state, message, target); // the release itself got lost
        target = MouseTarget(state, message);
        captured = state.captured;
    }
    const bool isLeaving = message.GetInt32("be:transit", B_INSIDE_VIEW) == B_EXITED_VIEW;
    BView* under = isLeaving ? nullptr : state.host->ViewAt(where);
    BView* left = std::exchange(state.pointed, under);
    if (left != nullptr && left != under && left != captured &&
        (left->EventMask() & B_POINTER_EVENTS) == 0) {
        if (ViewAccess::State(*left).isPointerInside) {
            TellMoved(*left, where, false, dragged.get());
        }
    }
    Deliver(state, captured != nullptr ? captured : target,
            [&](BView& view) { TellMoved(view, where, state.pointed == &view, dragged.get()); });
    ShapePointer(state);
}

void ShapePointer(WindowState& state)
{
    const BView* view = state.captured != nullptr ? state.captured : state.pointed;
    const PointerShape shape =
        view != nullptr ? ViewAccess::State(*view).pointer : PointerShape::kArrow;
    if (shape != state.pointer && state.host != nullptr) {
        state.pointer = shape;
        state.host->Link().SetCursor(shape);
    }
}

BView* DropTarget(const WindowState& state, const BMessage& message)
{
    return state.host->ViewAt(message.DropPoint() - state.frame.LeftTop());
}

} // namespace kits
