#pragma once

class BView;

namespace norvane {

/// Tells the window of a plain key that means the same in all that a viewer shows; false when it
/// is none.
bool ViewerKey(BView& view, char key);

} // namespace norvane
