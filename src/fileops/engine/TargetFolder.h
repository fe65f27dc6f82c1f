#pragma once

#include "fileops/engine/CopyPlace.h"

#include <Directory.h>
#include <EntryRef.h>
#include <SupportDefs.h>
#include <TrashRecord.h>

#include <memory>

namespace norvane {

class OperationUI;

/// The folder that items are copied or moved into, open as long as the operation runs.
///
/// Thread: the operation's.
class TargetFolder
{
public:
    explicit TargetFolder(const char* path);

    BDirectory& Folder() { return *fFolder; }
    const CopyPlace& Place() const { return fPlace; }
    /// Whether it is the folder of a Trash, where everything gets a record.
    bool IsTrash() const { return fIsTrash; }
    /// Whether its volume keeps node numbers.
    bool HasStableNodes() const { return fHasStableNodes; }

    /// False, and told, when nothing may be put into it: it is not there, or it cannot be told
    /// whether it is a Trash.
    bool IsUsableFor(const entry_ref& item, OperationUI& ui) const;
    /// Takes a free name in this Trash for a copy of the item; false, and told, when there is none
    /// to be had.
    bool Claim(BTrashClaim* claim, const entry_ref& item, OperationUI& ui);
    /// Brings all that was written on its volume to the medium. Errors: also of what could not be
    /// written since this object was made; B_CANCELED when the person asked to stop; B_TIMED_OUT
    /// after `patience` microseconds.
    [[nodiscard]] status_t Sync(OperationUI& ui, bigtime_t patience);

private:
    const std::shared_ptr<BDirectory> fFolder; // never null
    CopyPlace fPlace;
    bool fIsTrash = false;
    bool fHasStableNodes = true;
    status_t fStatus;
};

} // namespace norvane
