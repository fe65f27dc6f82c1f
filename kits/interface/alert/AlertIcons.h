#pragma once

#include <Alert.h>

class BView;

namespace kits {

/// Draws the picture of an alert's kind, 32 units square, from `place` on; nothing for
/// B_EMPTY_ALERT.
void DrawAlertIcon(BView* view, BPoint place, alert_type type);

} // namespace kits
