#pragma once

#include <SupportDefs.h>

class BHandler;
class BMessage;
class BView;
class BWindow;

// How key messages find their way: an editing view's own keys, shortcuts, menus, the default and
// the cancel button, moving the focus, the focus view. Thread: the window's.
namespace kits {

struct WindowState;

void KeyDown(BWindow& window, WindowState& state, BMessage* message, BHandler& target);
void KeyUp(BMessage* message, BHandler& target);
void ModifiersChanged(WindowState& state, BMessage* message, BHandler& target);
enum class FocusOn : uint8 { kAnything, kButtons };
/// Moves the focus to the next or previous view of the Tab order, round; false without any.
bool MoveFocus(WindowState& state, bool isForward, FocusOn what = FocusOn::kAnything);

} // namespace kits
