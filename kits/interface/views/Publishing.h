#pragma once

#include <memory>

class BWindow;

namespace kits {

struct AccessibleNode;
struct WindowState;

/// What the window says of itself and its views at this moment.
std::shared_ptr<const AccessibleNode> DescribeWindow(BWindow& window);

/// Hands over what the server answers input methods and assistive programs from, when it changed:
/// at most once per painted frame, and the tree of views only while somebody listens. Thread: the
/// window's.
void PublishIfChanged(BWindow& window, WindowState& state);

} // namespace kits
