#pragma once

#include "panes/PaneMode.h"

#include <string>

namespace norvane {

/// What matters of a message of entries that reached a pane.
struct DroppedEntries
{
    bool hasRefs = false;
    std::string from; // the folder it comes from; empty when it does not say
};

/// What a pane does with dropped entries.
enum class DropDecision { kRefuseQuery, kPassOn, kIgnore, kRefuseRoot, kCopyHere };

DropDecision DecideDrop(const DroppedEntries& entries, PaneMode mode, const std::string& path);

} // namespace norvane
