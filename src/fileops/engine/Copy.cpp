#include "fileops/engine/Copy.h"

namespace norvane {

Copy::Copy(std::vector<entry_ref> items, const char* path, OperationUI& ui, bool keepsAll)
    : Operation(ui, std::move(items)), fTarget(path), fCopier(fContext), fKeepsAll(keepsAll)
{
}

Copy::~Copy()
{
    fContext.smallFiles.Drain(); // they speak of what is here
}

void Copy::DoItem(size_t index)
{
    const entry_ref& item = Item(index);
    if (!fTarget.IsUsableFor(item, fDesk)) {
        return;
    }
    fCopies.push_back({index, {}});
    Copied& copied = fCopies.back(); // stays until Settle(), which waits for isCopied
    ItemCopy& copy = copied.copy;
    const CopyPurpose purpose{
        .keepsAll = fKeepsAll, .wasFile = Measured().WasFile(index), .item = index};
    if (fTarget.IsTrash() && !fCopier.IsDirectlyIn(item, fTarget.Folder())) {
        BTrashClaim claim;
        if (fTarget.Claim(&claim, item, fDesk)) {
            CopyPurpose intoTrash = purpose;
            intoTrash.isAllNew = true;
            fCopier.Copy(item, fTarget.Place(), claim.Name(), intoTrash, &copy);
            fContext.smallFiles.Drain();
            if (copy.result.isWhole) {
                claim.Keep();
            }
        }
    } else {
        fCopier.Copy(item, fTarget.Place(), item.name, purpose, &copy);
    }
    copied.isCopied = true;
    Settle();
}

void Copy::Settle(bigtime_t)
{
    while (!fCopies.empty() && fCopies.front().isCopied && fCopies.front().copy.queued == 0) {
        const Copied& copied = fCopies.front();
        fContext.journal.End(copied.item, copied.copy.result.isWhole ? ItemResult::Ending::kWhole
                                                                     : ItemResult::Ending::kPartly);
        fCopies.pop_front();
    }
}

} // namespace norvane
