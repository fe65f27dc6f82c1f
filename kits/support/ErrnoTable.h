#pragma once

#include <SupportDefs.h>

namespace kits {

/// The platform's code for a value of errno; B_OK for 0, B_ERROR for one that has none.
status_t StatusFromErrno(int error);

/// A sentence fragment for a person, in English, such as "No space left on device". Never null.
const char* StatusText(status_t status);

} // namespace kits
