#pragma once

#include <Rect.h>

#include <SupportDefs.h>

class BButton;
class BStringView;
class BTextControl;
class BView;

namespace add_ons {

// What windows of add-ons share of their looks. Units: view units.

constexpr float kEdge = 10;  // between the window's sides and what is in it
constexpr float kGap = 8;    // between what stands side by side
constexpr float kRowGap = 4; // and one below the other
constexpr float kFieldPadding = 6;

/// The height of one line of text, of a field, and of any button's face.
float LineHeight();
float FieldHeight();
float ButtonHeight();
/// From edge to edge of a button's face that has room for the label.
float ButtonWidth(const char* label);
/// How broad a text is.
float TextWidth(const char* text);

/// A frame of that size over the active window; less where the screen has less.
BRect FrameOverActiveWindow(float width, float height);

/// A grey view over the whole of `bounds` that follows it, for a window's contents.
BView* MakeGround(BRect bounds, const char* name);

/// Adds a button with its right edge at `right` whose messages go to the window.
BButton* AddButton(BView* ground, float right, float top, const char* name, const char* label,
                   uint32 what, uint32 resizingMode);
/// Adds a line of text.
BStringView* AddLine(BView* ground, BRect frame, const char* name, const char* text,
                     uint32 resizingMode);
/// Adds a field whose text begins `divider` behind its left edge, and which sends `what` to the
/// window at each change.
BTextControl* AddField(BView* ground, BRect frame, const char* name, const char* label,
                       const char* text, float divider, uint32 what, uint32 resizingMode);

} // namespace add_ons
