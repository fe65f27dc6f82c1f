#include "fileops/engine/ItemOperations.h"

#include "fileops/engine/MoveLedger.h"
#include "fileops/engine/NorvaneEntry.h"
#include "fileops/engine/OperationUI.h"
#include "fileops/engine/ProblemList.h"

#include <Directory.h>
#include <Errors.h>
#include <FindDirectory.h>
#include <Path.h>
#include <TrashRecord.h>

namespace norvane {

namespace {

/// Takes a free name in the Trash for a copy of the item.
status_t Claim(BTrashClaim* claim, const BDirectory& trash, const NorvaneEntry& item)
{
    status_t status = B_FILE_EXISTS;
    for (int64 attempt = 0; status == B_FILE_EXISTS; attempt++) {
        status = claim->SetTo(&trash, &item, TrashName(item.Name(), attempt).c_str());
    }
    return status;
}

void RemovePart(const BDirectory& trash, const char* name)
{
    entry_ref ref;
    if (BEntry(&trash, name).GetRef(&ref) == B_OK) {
        NorvaneEntry(&ref).DeleteEntry();
    }
}

bool IsDirectlyIn(const NorvaneEntry& item, const BDirectory& folder)
{
    BDirectory parent;
    return item.GetParent(&parent) == B_OK && parent == folder;
}

bool IsMountPoint(const NorvaneEntry& item)
{
    struct stat own;
    struct stat above;
    BDirectory parent;
    return item.GetStat(&own) == B_OK && S_ISDIR(own.st_mode) && item.GetParent(&parent) == B_OK &&
           parent.GetStat(&above) == B_OK && own.st_dev != above.st_dev;
}

} // namespace

bool IsTrash(const char* path)
{
    const BDirectory folder(path);
    return folder.InitCheck() == B_OK && is_trash_folder(&folder);
}

ItemOperations::ItemOperations(const char* path, OperationUI& ui)
    : fUI(ui), fFolder(path), fTarget{fFolder, path},
      fTrashCheck(is_trash_folder(&fFolder, &fIsTrash)), fHomeTrashStatus(B_NO_INIT)
{
}

/// False when nothing may be put into the folder: it is not there, or it cannot be told whether it
/// is a Trash, where everything gets a record.
bool ItemOperations::HasTarget(const NorvaneEntry& item)
{
    const status_t opened = fFolder.InitCheck();
    const status_t status = opened == B_OK ? fTrashCheck : opened;
    if (status != B_OK) {
        fUI.NoteProblem(item.Name(), ReasonFor(status));
    }
    return status == B_OK;
}

void ItemOperations::Copy(NorvaneEntry& item)
{
    if (!HasTarget(item)) {
        return;
    }
    if (fIsTrash && !IsDirectlyIn(item, fFolder)) {
        CopyIntoTrash(item, fTarget, nullptr);
    } else {
        item.CopyTo(fTarget, fUI, CopyPurpose());
    }
}

void ItemOperations::Move(NorvaneEntry& item)
{
    if (IsDirectlyIn(item, fFolder)) {
        return;
    }
    MoveLedger ledger;
    if (!HasTarget(item)) {
        DeleteSource(item, false, ledger);
        return;
    }
    bool isWhole = false;
    if (fIsTrash) {
        isWhole = CopyIntoTrash(item, fTarget, &ledger);
    } else {
        item.CopyTo(fTarget, fUI, {.ledger = &ledger});
        isWhole = item.IsWhole();
    }
    if (!item.IsOntoItself()) {
        DeleteSource(item, isWhole, ledger);
    }
}

void ItemOperations::Trash(NorvaneEntry& item)
{
    OpenHomeTrash();
    if (fHomeTrashStatus != B_OK) {
        fUI.NoteProblem(item.Name(), ReasonFor(fHomeTrashStatus));
        return;
    }
    const bool isHandled = item.TrashIt(fHomeTrash);
    const status_t status = item.TrashStatus();
    if (isHandled || status == B_ENTRY_NOT_FOUND || status == B_NO_INIT) {
        if (status != B_OK) {
            fUI.NoteProblem(item.Name(), ReasonFor(status));
        }
        return;
    }
    if (status == B_BUSY || IsMountPoint(item)) {
        // It could be copied, but not be removed: nothing may go that is mounted.
        fUI.NoteProblem(item.Name(), "it is a mounted volume");
        return;
    }
    MoveLedger ledger;
    const bool isWhole = CopyIntoTrash(item, {fHomeTrash, fHomeTrashPath}, &ledger);
    DeleteSource(item, isWhole, ledger);
}

void ItemOperations::OpenHomeTrash()
{
    if (fHomeTrashStatus == B_OK) {
        return;
    }
    BPath path;
    fHomeTrashStatus = find_directory(B_TRASH_DIRECTORY, &path);
    if (fHomeTrashStatus == B_OK) {
        fHomeTrashPath = path.Path();
        fHomeTrashStatus = fHomeTrash.SetTo(path.Path());
    }
}

/// Says whether the item arrived whole. Part of a copy is removed when its source will be kept.
bool ItemOperations::CopyIntoTrash(NorvaneEntry& item, const CopyPlace& trash, MoveLedger* ledger)
{
    BTrashClaim claim;
    const status_t status = Claim(&claim, trash.folder, item);
    if (status != B_OK) {
        fUI.NoteProblem(item.Name(), ReasonFor(status));
        return false;
    }
    const CopyPurpose purpose{.ledger = ledger, .isAllNew = true};
    item.CopyTo(trash, fUI, purpose, claim.Name());
    const bool isDeletion = ledger != nullptr;
    if (item.IsWhole() && (!isDeletion || fUI.MayDelete())) {
        claim.Keep();
    } else if (isDeletion && item.HasMade()) {
        RemovePart(trash.folder, claim.Name());
    }
    return item.IsWhole();
}

/// Deletes what was read of the item, when all of it arrived.
void ItemOperations::DeleteSource(NorvaneEntry& item, bool isWhole, const MoveLedger& ledger)
{
    if (!fUI.MayDelete()) {
        return;
    }
    if (isWhole) {
        item.DeleteEntry(fUI, &ledger);
    } else {
        LeaveForOwnTrash(item);
    }
}

/// Takes a source that was not copied whole from its place, as the person was promised, but to
/// where it can be got back from.
void ItemOperations::LeaveForOwnTrash(NorvaneEntry& item)
{
    BPath path;
    status_t status = find_trash_for(&item, &path, true);
    BDirectory trash;
    if (status == B_OK) {
        status = trash.SetTo(path.Path());
    }
    if (status == B_OK && !IsDirectlyIn(item, trash)) {
        status = item.MoveIntoTrash(trash);
    }
    if (status != B_OK && status != B_ENTRY_NOT_FOUND) {
        fUI.NoteProblem(item.Name(), "it stays where it is");
    }
}

} // namespace norvane
