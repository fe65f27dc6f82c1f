#include "fileops/engine/Restore.h"

#include "fileops/engine/ProblemList.h"

#include <Directory.h>
#include <Path.h>
#include <TrashRecord.h>

namespace norvane {

namespace {

std::string WhyUnknown(status_t status)
{
    return status == B_ENTRY_NOT_FOUND || status == B_MISMATCHED_VALUES || status == B_BAD_VALUE
               ? "it is not known where it was"
               : ReasonFor(status);
}

std::string WhyNotMoved(status_t status, const BPath& origin, const std::string& folder)
{
    switch (status) {
    case B_FILE_EXISTS:
        return "there is something else at " + ShownName(origin.Path());
    case B_CROSS_DEVICE_LINK:
        return "it was on another volume, in " + ShownName(folder) + "; copy it there";
    default:
        return ReasonFor(status);
    }
}

} // namespace

std::string RestoreFromTrash(const entry_ref& ref)
{
    BEntry entry(&ref);
    BPath origin;
    BPath folder;
    status_t status = entry.InitCheck();
    if (status == B_OK && !entry.Exists()) {
        status = B_ENTRY_NOT_FOUND;
    }
    if (status != B_OK) {
        return ReasonFor(status);
    }
    status = find_trash_origin(&entry, &origin);
    if (status != B_OK) {
        return WhyUnknown(status);
    }
    BDirectory target;
    if (origin.GetParent(&folder) != B_OK || target.SetTo(folder.Path()) != B_OK) {
        return "its folder is not there any more: " + ShownName(folder.Path());
    }
    status = entry.MoveTo(&target, origin.Leaf(), false);
    return status == B_OK ? std::string() : WhyNotMoved(status, origin, folder.Path());
}

} // namespace norvane
