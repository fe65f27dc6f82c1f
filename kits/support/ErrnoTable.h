#pragma once

#include <SupportDefs.h>

namespace kits {

/// The platform's code for a value of errno, and the only place where one becomes the other; B_OK
/// for 0, B_ERROR for one that has none.
[[nodiscard]] status_t StatusFromErrno(int error);

} // namespace kits
