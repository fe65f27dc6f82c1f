#include "fileops/engine/ItemCopier.h"

#include "fileops/engine/EntryMover.h"
#include "fileops/engine/LiesIn.h"
#include "fileops/engine/OperationContext.h"
#include "fileops/engine/OperationUI.h"
#include "fileops/engine/ProblemList.h"
#include "fileops/engine/TreeCopier.h"

#include <Entry.h>
#include <Errors.h>

namespace norvane {

status_t FindWhetherAbove(const entry_ref& item, const BDirectory& folder, bool* isAbove)
{
    struct stat record;
    *isAbove = false;
    status_t status = BEntry(&item).GetStat(&record);
    if (status != B_OK || !S_ISDIR(record.st_mode)) {
        return status;
    }
    BEntry folderEntry;
    status = folder.GetEntry(&folderEntry);
    return status == B_OK ? LiesIn(folderEntry, NodeOf(record), isAbove) : status;
}

bool ItemCopier::HasStableNodes(const entry_ref& item)
{
    return fSource.SetTo(item) != B_OK || fSource.HasStableNodes();
}

bool ItemCopier::IsDirectlyIn(const entry_ref& item, const BDirectory& folder)
{
    return fSource.SetTo(item) == B_OK && fSource.Folder() == folder;
}

/// Whether the target is the folder that the item lies in.
bool ItemCopier::IsFolder(const CopyPlace& target)
{
    return target.hasStableNodes ? fSource.Node() == target.node
                                 : fSource.Folder() == target.folder;
}

const std::shared_ptr<const CopyWay>& ItemCopier::WayTo(const CopyPlace& target)
{
    if (fWay == nullptr || fWay->source.owner != fSource.Owner() ||
        &fWay->target.folder != &target.folder) {
        const CopyPlace source{fSource.Folder(), fSource.Path(), fSource.Node(), false, true,
                               fSource.Owner()};
        fWay = std::make_shared<const CopyWay>(CopyWay{source, target});
    }
    return fWay;
}

void ItemCopier::Copy(const entry_ref& item, const CopyPlace& target, const char* targetName,
                      const CopyPurpose& purpose, ItemCopy* copy)
{
    status_t status = fSource.SetTo(item);
    if (status == B_OK) {
        status = target.folder.InitCheck();
    }
    if (status != B_OK) {
        fContext.ui.NoteProblem(item.name, ReasonFor(status));
        return;
    }
    if (std::string_view(targetName) == item.name && IsFolder(target)) {
        copy->result.isItself = true;
        return;
    }
    TreeCopier(fContext, purpose, *copy).Copy(WayTo(target), item.name, targetName);
    if (purpose.IsMove()) {
        KeepWhatIsInside(target, item, copy);
    }
}

status_t ItemCopier::Move(const entry_ref& item, const CopyPlace& target, size_t index)
{
    bool isAbove = false;
    status_t status = fSource.SetTo(item);
    if (status == B_OK) {
        status = target.folder.InitCheck();
    }
    if (status == B_OK) {
        status = FindWhetherAbove(item, target.folder, &isAbove);
    }
    if (status != B_OK || isAbove) {
        return isAbove ? status_t(B_BAD_VALUE) : status;
    }
    const std::shared_ptr<const CopyWay> way = WayTo(target);
    return EntryMover(fContext, index).Move({way->source, item.name, way->target, item.name});
}

/// What was moved into itself is not deleted.
void ItemCopier::KeepWhatIsInside(const CopyPlace& target, const entry_ref& item, ItemCopy* copy)
{
    bool isAbove = false;
    const status_t status = FindWhetherAbove(item, target.folder, &isAbove);
    if (status != B_OK && status != B_ENTRY_NOT_FOUND) {
        fContext.ui.NoteProblem(item.name, "it stays where it is");
        isAbove = true;
    }
    copy->result.isItself |= isAbove;
}

} // namespace norvane
