#pragma once

#include <Rect.h>

#include <string>

class BView;

namespace norvane {

/// What dialogs share of their looks. Units: view units.
constexpr float kDialogEdge = 10;

/// A frame of that size in the middle of `around`, moved and cut so that the screen shows it.
BRect CentredFrame(BRect around, float width, float height);

/// A grey view over the whole of `bounds` that follows it, for a dialog's contents.
BView* MakeDialogGround(BRect bounds, const char* name);

/// From edge to edge of a button's face that has room for the label, and of any button's height.
float ButtonWidth(const char* label);
float ButtonHeight();
/// The height of one line of text.
float LineHeight();

/// Asks whether something is to be lost, with the buttons "Cancel" and `button`; true for the
/// latter.
bool WarnAndAsk(const std::string& question, const char* button);

} // namespace norvane
