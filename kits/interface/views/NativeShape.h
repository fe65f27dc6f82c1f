#pragma once

#include <Rect.h>

#include "server/WindowShape.h"

class BWindow;

namespace kits {

struct WindowState;

// The names of windows with the server, which others may ask for though the window may be gone.
// Thread: any.
void RememberToken(const BWindow* window, int32 token);
void ForgetToken(const BWindow* window);
/// The token of the window whose thread is calling; 0 for other threads.
int32 TokenOfThisThread();

// What windows do with their native window. Thread: the window's.
BRect WholeFrame(BRect frame);
WindowShape ShapeOf(const WindowState& state);
void SendShape(WindowState& state);
/// Give the window another place, or another size, and tell the screen.
void ChangePlace(BWindow& window, BPoint leftTop);
void ChangeSize(BWindow& window, float width, float height);
/// The frame at its place, with a size that the window's limits allow.
BRect WithinLimits(const WindowState& state, BRect frame);
void HideNative(WindowState& state);
/// Calls Pulse() of the views that want it.
void Pulse(WindowState& state);

} // namespace kits
