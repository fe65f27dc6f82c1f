#pragma once

class BMessage;
class BScrollBar;

namespace kits {

/// What a view tells the scroll bar whose target it is. Thread: the window's.
class ScrollFollower
{
public:
    virtual ~ScrollFollower() = default;
    /// The view was scrolled to a place along the bar.
    virtual void TargetScrolled(double place) = 0;
    /// The wheel was turned over the view.
    virtual void WheelTurned(BMessage* message) = 0;
    /// The view is about to go away.
    virtual void TargetGone() = 0;
    virtual BScrollBar* Bar() = 0;
};

} // namespace kits
