#include "fileops/engine/TargetFolder.h"

#include "fileops/engine/MadeTargets.h"
#include "fileops/engine/NorvaneEntry.h"
#include "fileops/engine/OperationUI.h"
#include "fileops/engine/PatientWork.h"
#include "fileops/engine/ProblemList.h"

#include <Entry.h>
#include <Errors.h>
#include <fs_info.h>

namespace norvane {

TargetFolder::TargetFolder(const char* path)
    : fFolder(std::make_shared<BDirectory>(path)), fPlace{*fFolder, path, {}, false, true, fFolder},
      fStatus(fFolder->InitCheck())
{
    struct stat record;
    if (fStatus == B_OK) {
        fStatus = fFolder->GetStat(&record);
    }
    if (fStatus == B_OK) {
        fPlace.node = NodeOf(record);
        fHasStableNodes = has_stable_nodes(*fFolder);
        fPlace.hasStableNodes = fHasStableNodes;
        fStatus = is_trash_folder(fFolder.get(), &fIsTrash);
    }
}

bool TargetFolder::IsUsableFor(const entry_ref& item, OperationUI& ui) const
{
    if (fStatus != B_OK) {
        ui.NoteProblem(item.name, ReasonFor(fStatus));
    }
    return fStatus == B_OK;
}

bool TargetFolder::Claim(BTrashClaim* claim, const entry_ref& item, OperationUI& ui)
{
    const BEntry original(&item);
    status_t status = B_FILE_EXISTS;
    for (int64 attempt = 0; status == B_FILE_EXISTS; attempt++) {
        status = claim->SetTo(fFolder.get(), &original, TrashName(item.name, attempt).c_str());
    }
    if (status != B_OK) {
        ui.NoteProblem(item.name, ReasonFor(status));
    }
    return status == B_OK;
}

status_t TargetFolder::Sync(OperationUI& ui, bigtime_t patience)
{
    return DoPatiently(
        ui, [folder = fFolder] { return folder->SyncVolume(); }, patience);
}

} // namespace norvane
