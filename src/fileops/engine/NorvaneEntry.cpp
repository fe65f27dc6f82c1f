#include "fileops/engine/NorvaneEntry.h"

#include "fileops/engine/EntrySize.h"
#include "fileops/engine/ItemCopier.h"
#include "fileops/engine/OperationContext.h"
#include "fileops/engine/OperationUI.h"
#include "fileops/engine/ProblemList.h"
#include "fileops/engine/TreeDeleter.h"

#include <Directory.h>
#include <Errors.h>
#include <FindDirectory.h>
#include <Path.h>

namespace norvane {

namespace {

/// What keeps an entry from being moved into the Trash, but not from being copied there.
bool IsReasonToCopy(status_t status)
{
    return status == B_CROSS_DEVICE_LINK || status == B_BUSY || status == B_ENTRY_NOT_FOUND ||
           status == B_NO_INIT;
}

} // namespace

NorvaneEntry::NorvaneEntry(const entry_ref* ref) : BEntry(ref) {}

NorvaneEntry::~NorvaneEntry() = default;

double NorvaneEntry::CopySize()
{
    return static_cast<double>(MeasureEntry(*this, MeasureScope::kAllVolumes));
}

bool NorvaneEntry::CopyTo(const char* destDir, OperationUI& ui)
{
    BDirectory folder(destDir);
    entry_ref ref;
    ItemCopy copy;
    node_ref node;
    status_t status = GetRef(&ref);
    if (status == B_OK) {
        status = folder.InitCheck() == B_OK ? folder.GetNodeRef(&node) : folder.InitCheck();
    }
    if (status != B_OK) {
        ui.NoteProblem(Name(), ReasonFor(status));
    } else {
        OperationContext context(ui);
        context.journal.AddItem(ref);
        ItemCopier(context).Copy(ref, CopyPlace{folder, destDir, node}, Name(), CopyPurpose(),
                                 &copy);
        context.smallFiles.Drain();
    }
    fResult = copy.result;
    return fResult.isDone;
}

std::string TrashName(const std::string& name, int64 attempt)
{
    if (attempt == 0) {
        return name;
    }
    return name + " copy" + (attempt == 1 ? "" : std::to_string(attempt));
}

bool NorvaneEntry::TrashIt()
{
    BPath path;
    BDirectory trash;
    fTrashStatus = find_directory(B_TRASH_DIRECTORY, &path);
    if (fTrashStatus == B_OK) {
        fTrashStatus = trash.SetTo(path.Path());
    }
    return fTrashStatus == B_OK && TrashIt(trash);
}

bool NorvaneEntry::TrashIt(BDirectory& trash)
{
    // Whether it lies on another volume is for the system to say.
    fTrashStatus = MoveIntoTrash(trash);
    return !IsReasonToCopy(fTrashStatus);
}

status_t NorvaneEntry::MoveIntoTrash(BDirectory& trash)
{
    const std::string name = Name();
    status_t status = B_FILE_EXISTS;
    for (int64 attempt = 0; status == B_FILE_EXISTS; attempt++) {
        status = MoveTo(&trash, TrashName(name, attempt).c_str());
    }
    return status;
}

void NorvaneEntry::DeleteEntry()
{
    DeleteTree(*this, nullptr, nullptr);
}

bool NorvaneEntry::DeleteEntry(OperationUI& ui, const char* shownName)
{
    return DeleteTree(*this, &ui, shownName);
}

} // namespace norvane
