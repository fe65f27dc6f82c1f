#include "fileops/ItemOperations.h"

#include "fileops/MoveLedger.h"
#include "fileops/NorvaneEntry.h"
#include "fileops/OperationUI.h"
#include "fileops/ProblemList.h"

#include <Directory.h>
#include <Errors.h>
#include <FindDirectory.h>
#include <Path.h>
#include <TrashRecord.h>

namespace norvane {

namespace {

bool Note(OperationUI& ui, const NorvaneEntry& item, status_t status)
{
    ui.NoteProblem(item.Name(), ReasonFor(status));
    return false;
}

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

/// Copies the item into the Trash at `path`; false when it did not arrive whole. Part of a copy is
/// removed when its source will be kept.
bool CopyIntoTrash(NorvaneEntry& item, const char* path, OperationUI& ui, MoveLedger* ledger)
{
    BDirectory trash(path);
    BTrashClaim claim;
    status_t status = trash.InitCheck();
    if (status == B_OK) {
        status = Claim(&claim, trash, item);
    }
    if (status != B_OK) {
        return Note(ui, item, status);
    }
    const CopyPurpose purpose{.ledger = ledger, .isAllNew = true};
    item.CopyTo(path, ui, purpose, claim.Name());
    const bool isDeletion = ledger != nullptr;
    if (item.IsWhole() && (!isDeletion || ui.MayDelete())) {
        claim.Keep();
    } else if (isDeletion && item.HasMade()) {
        RemovePart(trash, claim.Name());
    }
    return item.IsWhole();
}

/// Whether the item lies directly in the folder.
bool IsDirectlyIn(const NorvaneEntry& item, const BDirectory& folder)
{
    BDirectory parent;
    return item.GetParent(&parent) == B_OK && parent == folder;
}

/// Takes a source that was not copied whole from its place, as the person was promised, but to
/// where it can be got back from.
void LeaveForOwnTrash(NorvaneEntry& item, OperationUI& ui)
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
        ui.NoteProblem(item.Name(), "it stays where it is");
    }
}

/// Deletes what was read of the item, when all of it arrived.
void DeleteSource(NorvaneEntry& item, bool isWhole, const MoveLedger& ledger, OperationUI& ui)
{
    if (!ui.MayDelete()) {
        return;
    }
    if (isWhole) {
        item.DeleteEntry(ui, &ledger);
    } else {
        LeaveForOwnTrash(item, ui);
    }
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

void CopyItem(NorvaneEntry& item, const char* destDir, OperationUI& ui)
{
    if (IsTrash(destDir) && !IsDirectlyIn(item, BDirectory(destDir))) {
        CopyIntoTrash(item, destDir, ui, nullptr);
    } else {
        item.CopyTo(destDir, ui);
    }
}

void MoveItem(NorvaneEntry& item, const char* destDir, OperationUI& ui)
{
    MoveLedger ledger;
    if (IsDirectlyIn(item, BDirectory(destDir))) {
        return;
    }
    if (IsTrash(destDir)) {
        const bool isWhole = CopyIntoTrash(item, destDir, ui, &ledger);
        if (!item.IsOntoItself()) {
            DeleteSource(item, isWhole, ledger, ui);
        }
        return;
    }
    item.CopyTo(destDir, ui, {.ledger = &ledger});
    if (!item.IsOntoItself()) {
        DeleteSource(item, item.IsWhole(), ledger, ui);
    }
}

void TrashItem(NorvaneEntry& item, OperationUI& ui)
{
    if (item.TrashIt()) {
        if (item.TrashStatus() != B_OK) {
            Note(ui, item, item.TrashStatus());
        }
        return;
    }
    BPath path;
    const status_t status = find_directory(B_TRASH_DIRECTORY, &path);
    if (status != B_OK || item.TrashStatus() == B_ENTRY_NOT_FOUND) {
        Note(ui, item, item.TrashStatus());
        return;
    }
    if (item.TrashStatus() == B_BUSY || IsMountPoint(item)) {
        // It could be copied, but not be removed: nothing may go that is mounted.
        ui.NoteProblem(item.Name(), "it is a mounted volume");
        return;
    }
    MoveLedger ledger;
    const bool isWhole = CopyIntoTrash(item, path.Path(), ui, &ledger);
    DeleteSource(item, isWhole, ledger, ui);
}

} // namespace norvane
