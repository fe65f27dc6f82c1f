#pragma once

class BWindow;

namespace kits {

struct WindowState;

/// Hands over what the server answers input methods and assistive programs from, when it changed:
/// at most once per painted frame, and the tree of views only while somebody listens. Thread: the
/// window's.
void PublishIfChanged(BWindow& window, WindowState& state);

} // namespace kits
