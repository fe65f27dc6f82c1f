#pragma once

#include <SupportDefs.h>

#include <string_view>

namespace kits {

/// The last place at or before `wanted` where a line can be cut without being harmed: behind a
/// blank when one is near, else between what a person sees as two characters.
///
/// It looks no further back than some hundred bytes: of a longer row of flags or accents it cuts
/// between two characters of UTF-8.
int32 SafeCut(std::string_view line, int32 wanted);

} // namespace kits
