#include "fileops/engine/ItemFolder.h"

#include <Entry.h>
#include <Path.h>
#include <fs_info.h>

namespace norvane {

status_t ItemFolder::SetTo(const entry_ref& item)
{
    const node_ref node(item.device, item.directory);
    if (fFolder->InitCheck() == B_OK && node == fNode) {
        return B_OK;
    }
    fFolder = std::make_shared<BDirectory>(); // the one before may still be held
    const BEntry entry(&item);
    BPath path;
    BPath folderPath;
    status_t status = entry.GetParent(fFolder.get());
    if (status == B_OK) {
        status = entry.GetPath(&path);
    }
    if (status == B_OK) {
        status = path.GetParent(&folderPath);
    }
    if (status != B_OK) {
        fFolder->Unset();
        fHasStableNodes = true;
        return status;
    }
    fPath = folderPath.Path();
    fNode = node;
    fHasStableNodes = has_stable_nodes(*fFolder);
    return B_OK;
}

} // namespace norvane
