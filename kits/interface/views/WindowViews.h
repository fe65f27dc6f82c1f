#pragma once

class BView;
class BWindow;

// What a window is told of the views in it. Thread: the window's.
namespace kits {

void ViewJoined(BWindow& window, BView& view);
/// The window forgets the view: as the focus, under the pointer, as a listener.
void ViewLeft(BWindow& window, const BView& view);
/// The view, and so those in it, cannot have the focus any more.
void ViewHidden(BWindow& window, BView& view);
/// The view's event mask or flags changed.
void ViewListens(BWindow& window, BView& view);

} // namespace kits
