#pragma once

class BLooper;
class BView;
class BWindow;

// What a window is told of the views in it. Thread: the window's.
namespace kits {

/// The window takes the view as a handler, before its parent or itself.
void ViewJoined(BWindow& window, BView& view);
/// The window forgets the view: as a handler, the focus, under the pointer, as a listener.
void ViewLeft(BWindow& window, const BView& view);
/// The view, and so those in it, cannot have the focus any more.
void ViewHidden(BWindow& window, BView& view);
/// The view's event mask or flags changed.
void ViewListens(BWindow& window, BView& view);
BLooper* LooperOf(BWindow* window);
bool IsHidden(const BWindow& window);
/// Whether the calling thread holds the window's lock.
bool IsLocked(const BWindow& window);

} // namespace kits
