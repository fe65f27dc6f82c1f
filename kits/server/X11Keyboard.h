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
/// The scan codes of the keys that are down now.
std::vector<int32> HeldKeys();
/// The X window that gets the keys now; nothing where there is no X.
std::optional<uint32> FocusedWindow();
/// The grey that the X server fills growing windows with until they are painted.
void SetBackground(QWindow* window, uint8 grey);

} // namespace x11

} // namespace kits
