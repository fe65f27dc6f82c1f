#pragma once

#include <SupportDefs.h>

#include <optional>
#include <vector>

class QWindow;

namespace kits {

/// What is asked of the X server directly, over the toolkit's own connection; nothing anywhere
/// else. Thread: the server's.
namespace x11 {

/// Asks for repeats without releases between them. False where the answer is no, or there is no X.
bool UseDetectableRepeats();
/// Has the X server tell, each time the window gets the focus, which keys are down then.
void TellKeysAtFocus(QWindow* window);
/// From now on what it tells is heard, and the rest below.
void HearKeyboard();
/// The scan codes of the keys that were down when a window got the focus last. A key pressed since
/// is not among them, though the focus may have been noticed only now.
std::vector<int32> KeysAtFocus();
/// Whether the key is known to have been up before the press of that time, by every release that
/// came, also one that reached no window of ours. False, too, where the X server sends releases
/// between repeats. Units: the system's time of events, in milliseconds.
bool IsFirstPress(int32 code, uint32 time);
/// When another program last took the pointer or the keyboard: a window manager does that to move a
/// window, and shows nothing else of it. Units: as above.
uint32 LastTaken();
/// The X window that gets the keys now; nothing where there is no X.
std::optional<uint32> FocusedWindow();
/// Rings the keyboard's bell.
void Beep();
/// The grey that the X server fills growing windows with until they are painted.
void SetBackground(QWindow* window, uint8 grey);

} // namespace x11

} // namespace kits
