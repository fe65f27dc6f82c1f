#pragma once

#include "RenameMany/RenamePreview.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace rename_many {

/// One entry gets another name in its folder.
struct Step
{
    size_t entry = 0; // its place in the selection
    uint32 folder = 0;
    std::string from;
    std::string to;

    bool operator==(const Step& other) const = default;
};

using Steps = std::vector<Step>;

/// The temporary name of an entry; a number keeps it apart from what is there already.
std::string TemporaryName(const std::string& name, int32 number);
/// What an entry of a temporary name was called before; nothing when it is no such name.
std::optional<std::string> OriginalName(std::string_view temporaryName);

/// Puts what a preview without faults says into an order in which each name is free when its turn
/// comes: who waits for a name comes behind the one that has it, and of a circle one entry has a
/// temporary name meanwhile. Errors: B_BAD_VALUE for a preview with faults; B_NAME_TOO_LONG when
/// all names of a circle are too long for a temporary one. `*steps` is empty then.
status_t MakePlan(const Preview& preview, const std::vector<FolderNames>& folders, Steps* steps);

/// What takes the steps back, in the order in which that goes.
Steps Reversed(const Steps& steps);

} // namespace rename_many
