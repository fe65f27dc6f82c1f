#pragma once

#include <Rect.h>
#include <View.h>

namespace norvane {

/// The page "Advanced" of the preferences window, which has nothing to choose.
class AdvancedOptionsView : public BView
{
public:
    explicit AdvancedOptionsView(BRect frame);
};

} // namespace norvane
