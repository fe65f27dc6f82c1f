#pragma once

#include "GioObjects.h"

namespace kits {

/// What programs are started with: this program's own environment, but for the variables that speak
/// of its own start, and a notice to the desktop when the program's desktop file says that it
/// answers such notices.
Object<GAppLaunchContext> MakeLaunchContext();

} // namespace kits
