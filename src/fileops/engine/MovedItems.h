#pragma once

#include "fileops/engine/CopyPlace.h"
#include "fileops/engine/MoveLedger.h"
#include "fileops/engine/TargetFolder.h"

#include <EntryRef.h>
#include <OS.h>
#include <SupportDefs.h>
#include <TrashRecord.h>

#include <deque>
#include <memory>
#include <string>

class BEntry;

namespace norvane {

class OperationUI;
struct OperationContext;

/// Items that were copied so that their sources may go: the sources wait here until the copies lie
/// on the medium, many together, since that takes long.
///
/// Thread: the operation's.
class MovedItems
{
public:
    struct Item
    {
        entry_ref source;
        size_t index; // in the journal
        std::string targetName;
        std::unique_ptr<BTrashClaim> claim; // of a copy in a Trash; else null
        MoveLedger ledger;
        ItemCopy copy;
        bool isCopied = false; // but for small files
    };

    /// Ownership: borrows both for its own life.
    MovedItems(OperationContext& context, TargetFolder& target);
    ~MovedItems();

    /// An item that is about to be copied. Ownership: lent until it was settled, which happens only
    /// after isCopied was set.
    /// `hasStableNodes`: of the volume that it lies on.
    Item& Add(const entry_ref& source, size_t index, bool hasStableNodes,
              std::unique_ptr<BTrashClaim> claim);

    /// Whether so many wait, or for so long, that it is time.
    bool AreDue() const;
    /// Brings the copies to the medium, and deletes the sources of those that arrived whole. What
    /// did not leaves its place for the Trash of its volume, or stays. When that takes the medium
    /// longer than `patience` microseconds, all go on waiting.
    void Settle(bigtime_t patience = B_INFINITE_TIMEOUT);

private:
    size_t CountCopied() const;
    void SettleOne(Item& item, status_t synced);
    void KeepBoth(Item& item);
    void DeleteSource(Item& item);
    void LeaveForOwnTrash(Item& item);
    void RemovePartInTrash(Item& item, const BEntry& source, bool isKept);
    void TellOfPart(const Item& item);

    OperationContext& fContext;
    OperationUI& fUI;
    TargetFolder& fTarget;
    std::deque<Item> fItems; // in the order of their copying
    bigtime_t fFirstTime = 0;
    bool fIsSettling = false;
};

} // namespace norvane
