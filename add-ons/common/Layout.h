#pragma once

#include <Rect.h>

class BView;
class BWindow;

namespace add_ons {

/// What windows of add-ons share of their looks, which are the program's. Units: view units.
constexpr float kEdge = 10;
constexpr float kGap = 8;
constexpr float kDefaultMark = 3; // around the face of a default button

/// A frame of that size in the middle of the screen, no larger than it.
BRect CentredFrame(float width, float height);
/// Gives a window a grey ground over all of it, for its contents. Lends.
BView* MakeGround(BWindow* window);

/// From edge to edge of a button's face that has room for the label, and of any button's height.
float ButtonWidth(const char* label);
float ButtonHeight();
/// The height of one line of text.
float LineHeight();

} // namespace add_ons
