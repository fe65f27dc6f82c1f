#pragma once

namespace kits {

/// Whether the volume of an open node keeps the numbers of its nodes while they exist. False for
/// file systems that store none and make them up as they are asked; true when it cannot be told.
bool HasStableNodes(int descriptor);

} // namespace kits
