#pragma once

class BEntry;

namespace norvane {

class OperationUI;

/// Removes an entry, a folder with all that can be removed in it; no link is followed and no
/// mounted volume entered: that and the folders above it stay.
///
/// `ui` (may be null) is told of what stays and asked whether to stop; the entry itself is told of
/// as `shownName`, by its own name when that is null. Says whether nothing of it is left. Thread:
/// the operation's.
bool DeleteTree(BEntry& entry, OperationUI* ui, const char* shownName);

} // namespace norvane
