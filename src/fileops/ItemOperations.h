#pragma once

namespace norvane {

class NorvaneEntry;
class OperationUI;

// What an operation does with one item. Nothing of a source is deleted unless it was copied whole;
// one that was not leaves its place all the same, for the Trash of its own volume.
// Thread: the operation's.

/// Copies the item into the folder at `destDir`; into a Trash under a free name, with a record of
/// where it comes from.
void CopyItem(NorvaneEntry& item, const char* destDir, OperationUI& ui);
/// Copies the item into the folder at `destDir` and deletes what was read of it; onto or into
/// itself it is copied as far as that goes, and nothing is deleted.
void MoveItem(NorvaneEntry& item, const char* destDir, OperationUI& ui);
/// Brings the item into the home Trash: moved, or from another volume copied and deleted.
void TrashItem(NorvaneEntry& item, OperationUI& ui);

/// Whether `path` is the folder of a Trash, where deletions are for good.
bool IsTrash(const char* path);

} // namespace norvane
