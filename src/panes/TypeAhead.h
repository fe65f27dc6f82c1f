#pragma once

#include "panes/RowOrder.h"

namespace norvane {

/// Whether a key's bytes are a letter or digit of any script, or ".".
bool IsTypeAheadKey(const char* bytes, int32 byteCount);

/// The next row, from the selected one on and around the end, whose name begins with the typed
/// character, without regard to case; -1 when there is none.
int32 FindByFirstCharacter(const RowSequence& rows, const char* bytes, int32 byteCount,
                           int32 selected);

} // namespace norvane
