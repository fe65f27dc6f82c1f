#pragma once

#include "PathLookup.h"

#include <EntryRef.h>

namespace kits {

/// The programs that the platform has at fixed paths, and another program stands for here.
enum class FixedProgram : uint8 {
    kNone,
    kTextEditor,  // "/boot/apps/StyledEdit"
    kFileManager, // "/boot/beos/system/Tracker"
};

/// Gives the place of a fixed program: a name in a folder that lies on no disk. False for any other
/// path, and where the machine really has such a file: that one is meant then.
bool PlaceOfFixedProgram(const char* path, Place* place);

/// Which one a ref to such a place names.
FixedProgram FixedProgramOf(const entry_ref& ref);

} // namespace kits
