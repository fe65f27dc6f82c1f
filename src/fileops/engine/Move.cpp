#include "fileops/engine/Move.h"

namespace norvane {

Move::Move(std::vector<entry_ref> items, const char* path, OperationUI& ui)
    : Operation(ui, std::move(items)), fTarget(path), fCopier(fContext), fMoved(fContext, fTarget)
{
}

void Move::DoItem(size_t index)
{
    const entry_ref& item = Item(index);
    if (fCopier.IsDirectlyIn(item, fTarget.Folder())) {
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
