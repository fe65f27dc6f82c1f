#pragma once

#include <Point.h>
#include <SupportDefs.h>

#include <functional>

class BWindow;
class QWindow;

namespace kits::testing {

/// Runs `task` on the server's thread and waits for its end and for the events it made.
void OnServer(const std::function<void()>& task);

/// Stands in for the system where that has no drags, as the headless platform. Call it before the
/// first one.
void UseSyntheticDrags();

/// The native window of `window` itself, not of its menus; null while it is not shown.
/// Thread: the server's.
QWindow* NativeOf(const BWindow* window);
/// The native window of `window` or of one of its menus that lies at a point of the screen.
/// Thread: the server's.
QWindow* NativeAt(const BWindow* window, BPoint screen);
/// The frontmost native window of ours at a point of the screen. Thread: the server's.
QWindow* NativeAt(BPoint screen);

} // namespace kits::testing
