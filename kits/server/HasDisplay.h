#pragma once

namespace kits {

/// Whether there is a display that the toolkit would open its windows on, by the platform that the
/// environment names or lets it find.
///
/// Asked before the toolkit is started, because that ends the program without one. A platform that
/// needs no display (a headless one), or that is not known here, counts as one.
bool HasDisplay();

} // namespace kits
