#pragma once

#include <SupportDefs.h>

class BMessage;
class BView;

// How mouse messages reach views. A view that asked for the mouse at a press gets all of it until
// the release; else it is the view under the pointer. Views with an event mask get it in addition.
// Thread: the window's.
namespace kits {

struct WindowState;

/// The view that a mouse message is for; null outside all of them.
BView* MouseTarget(const WindowState& state, const BMessage& message);
void MouseDown(WindowState& state, BMessage* message, BView* target);
void MouseUp(WindowState& state, const BMessage& message, BView* target);
void MouseMoved(WindowState& state, const BMessage& message, BView* target);
/// Gives the pointer the shape that the view with the mouse, else the one under it, asks for.
void ShapePointer(WindowState& state);
/// The view below the point where a message was dropped; null for none.
BView* DropTarget(const WindowState& state, const BMessage& message);

} // namespace kits
