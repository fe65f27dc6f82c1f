#pragma once

#include "fileops/engine/CopyPlace.h"

#include <Directory.h>
#include <SupportDefs.h>

#include <string>

namespace norvane {

class MoveLedger;
class NorvaneEntry;
class OperationUI;

/// What an operation does with its items, one after the other.
///
/// Nothing of a source is deleted unless it was copied whole; one that was not leaves its place all
/// the same, for the Trash of its own volume. Thread: the operation's.
class ItemOperations
{
public:
    /// Items are copied and moved into the folder at `path`. Ownership: borrows `ui` for its own
    /// life.
    ItemOperations(const char* path, OperationUI& ui);

    /// Copies the item; into a Trash under a free name, with a record of where it comes from.
    void Copy(NorvaneEntry& item);
    /// Copies the item and deletes what was read of it; onto or into itself it is copied as far as
    /// that goes, and nothing is deleted.
    void Move(NorvaneEntry& item);
    /// Brings the item into the home Trash: moved, or from another volume copied and deleted.
    void Trash(NorvaneEntry& item);

private:
    bool HasTarget(const NorvaneEntry& item);
    bool CopyIntoTrash(NorvaneEntry& item, const CopyPlace& trash, MoveLedger* ledger);
    void DeleteSource(NorvaneEntry& item, bool isWhole, const MoveLedger& ledger);
    void LeaveForOwnTrash(NorvaneEntry& item);
    void OpenHomeTrash();

    OperationUI& fUI;
    BDirectory fFolder;
    const CopyPlace fTarget; // that folder
    bool fIsTrash = false;
    const status_t fTrashCheck; // whether it is known that the folder is a Trash, or is none
    // Looked up when the first item goes there.
    std::string fHomeTrashPath;
    BDirectory fHomeTrash;
    status_t fHomeTrashStatus;
};

/// Whether `path` is the folder of a Trash, where deletions are for good.
bool IsTrash(const char* path);

} // namespace norvane
