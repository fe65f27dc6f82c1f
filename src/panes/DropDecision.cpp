#include "panes/DropDecision.h"

namespace norvane {

DropDecision DecideDrop(const DroppedEntries& entries, PaneMode mode, const std::string& path)
{
    if (mode == kQueryMode) {
        return DropDecision::kRefuseQuery;
    }
    if (!entries.hasRefs) {
        return DropDecision::kPassOn;
    }
    if (entries.from == path) {
        return DropDecision::kIgnore;
    }
    if (path == "/") {
        return DropDecision::kRefuseRoot;
    }
    return DropDecision::kCopyHere;
}

} // namespace norvane
