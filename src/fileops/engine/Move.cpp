#include "fileops/engine/Move.h"

#include <Errors.h>

#include <algorithm>

namespace norvane {

Move::Move(std::vector<entry_ref> items, const char* path, OperationUI& ui, bool isByRenaming)
    : Operation(ui, std::move(items)), fTarget(path), fCopier(fContext), fMoved(fContext, fTarget),
      fIsByRenaming(isByRenaming), fRenamed(CountItems(), Renaming::kNot)
{
}

void Move::Measure()
{
    if (fIsByRenaming) {
        RenameWhatCanBe();
    }
    if (std::all_of(fRenamed.begin(), fRenamed.end(),
                    [](Renaming renamed) { return renamed == Renaming::kDone; })) {
        fDesk.Measured({.items = CountItems()});
        return;
    }
    Operation::Measure();
}

void Move::RenameWhatCanBe()
{
    // All before the first goes: links may lead from one to another.
    std::vector<bool> isKnown(CountItems());
    for (size_t index = 0; index < CountItems(); index++) {
        struct stat record;
        isKnown[index] = BEntry(&Item(index)).GetStat(&record) == B_OK;
        if (isKnown[index]) {
            fContext.moving.Add(NodeOf(record));
        }
    }
    for (size_t index = 0; index < CountItems() && fDesk.MayDelete(); index++) {
        fRenamed[index] = isKnown[index] ? Rename(index) : Renaming::kNot;
        fDesk.EntriesVisited(0);
    }
}

Move::Renaming Move::Rename(size_t index)
{
    const entry_ref& item = Item(index);
    if (fCopier.IsDirectlyIn(item, fTarget.Folder())) {
        return Renaming::kNot;
    }
    const status_t status = fCopier.Move(item, fTarget.Place(), index);
    if (status == B_OK) {
        fContext.journal.End(index, ItemResult::Ending::kWhole);
        return Renaming::kDone;
    }
    return status == B_FILE_EXISTS && fTarget.HasStableNodes() ? Renaming::kMet : Renaming::kNot;
}

void Move::DoItem(size_t index)
{
    const entry_ref& item = Item(index);
    if (fRenamed[index] == Renaming::kDone || fCopier.IsDirectlyIn(item, fTarget.Folder())) {
        return;
    }
    std::unique_ptr<BTrashClaim> claim;
    bool canCopy = fTarget.IsUsableFor(item, fDesk);
    if (canCopy && fTarget.IsTrash()) {
        claim = std::make_unique<BTrashClaim>();
        canCopy = fTarget.Claim(claim.get(), item, fDesk);
        claim = canCopy ? std::move(claim) : nullptr;
    }
    const bool isIntoTrash = claim != nullptr;
    MovedItems::Item& moved =
        fMoved.Add(item, index, fCopier.HasStableNodes(item), std::move(claim));
    if (canCopy) {
        fCopier.Copy(item, fTarget.Place(), moved.targetName.c_str(),
                     {.ledger = &moved.ledger,
                      .isByRenaming = fRenamed[index] == Renaming::kMet && !isIntoTrash,
                      .isAllNew = isIntoTrash,
                      .wasFile = Measured().WasFile(index),
                      .item = index},
                     &moved.copy);
    }
    moved.isCopied = true;
    if (fMoved.AreDue()) {
        fMoved.Settle();
    }
}

} // namespace norvane
