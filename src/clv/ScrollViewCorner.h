#pragma once

#include <View.h>

namespace norvane {

/// The square between two scroll bars.
class ScrollViewCorner : public BView
{
public:
    /// A square of 14 x 14 at that place.
    ScrollViewCorner(float left, float top);

    // BView
    void Draw(BRect updateRect) override;
};

} // namespace norvane
