#include "fileops/engine/Trash.h"

#include "fileops/engine/NorvaneEntry.h"
#include "fileops/engine/ProblemList.h"

#include <Errors.h>
#include <FindDirectory.h>
#include <Path.h>
#include <fs_info.h>

namespace norvane {

namespace {

bool IsMountPoint(const NorvaneEntry& item)
{
    BDirectory parent;
    bool is = false;
    return item.GetParent(&parent) == B_OK && is_mount_point(parent, item.Name(), &is) == B_OK &&
           is;
}

} // namespace

Trash::Trash(std::vector<entry_ref> items, OperationUI& ui)
    : Operation(ui, std::move(items)), fCopier(fContext)
{
}

void Trash::DoItem(size_t index)
{
    NorvaneEntry item(&Item(index));
    const char* name = Item(index).name;
    const status_t opened = OpenHomeTrash();
    if (opened != B_OK) {
        fDesk.NoteProblem(name, ReasonFor(opened));
        return;
    }
    const bool isHandled = item.TrashIt(fHomeTrash->Folder());
    const status_t status = item.TrashStatus();
    if (status == B_OK) {
        fContext.journal.End(index, ItemResult::Ending::kWhole);
    } else if (isHandled || status == B_ENTRY_NOT_FOUND || status == B_NO_INIT) {
        fDesk.NoteProblem(name, ReasonFor(status));
    } else if (status == B_BUSY || IsMountPoint(item)) {
        // It could be copied, but not be removed: nothing may go that is mounted.
        fDesk.NoteProblem(name, "it is a mounted volume");
    } else {
        CopyAndDelete(index);
    }
    fDoneBytes += Measured().BytesOf(index);
    fDesk.BytesDone(fDoneBytes); // it was moved, as a rule, and not copied
}

status_t Trash::OpenHomeTrash()
{
    if (fHomeTrash != nullptr) {
        return B_OK;
    }
    BPath path;
    const status_t status = find_directory(B_TRASH_DIRECTORY, &path);
    if (status != B_OK) {
        return status;
    }
    auto trash = std::make_unique<TargetFolder>(path.Path());
    if (trash->Folder().InitCheck() != B_OK) {
        return trash->Folder().InitCheck();
    }
    fHomeTrash = std::move(trash);
    fMoved = std::make_unique<MovedItems>(fContext, *fHomeTrash);
    return B_OK;
}

void Trash::CopyAndDelete(size_t index)
{
    const entry_ref& item = Item(index);
    auto claim = std::make_unique<BTrashClaim>();
    const bool isClaimed = fHomeTrash->Claim(claim.get(), item, fDesk);
    MovedItems::Item& moved = fMoved->Add(item, index, fCopier.HasStableNodes(item),
                                          isClaimed ? std::move(claim) : nullptr);
    if (isClaimed) {
        fCopier.Copy(item, fHomeTrash->Place(), moved.targetName.c_str(),
                     {.ledger = &moved.ledger,
                      .isAllNew = true,
                      .wasFile = Measured().WasFile(index),
                      .item = index},
                     &moved.copy);
    }
    moved.isCopied = true;
    if (fMoved->AreDue()) {
        fMoved->Settle();
    }
}

void Trash::Settle(bigtime_t patience)
{
    if (fMoved != nullptr) {
        fMoved->Settle(patience);
    }
}

} // namespace norvane
