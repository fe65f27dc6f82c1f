#include "fileops/engine/NorvaneEntry.h"

#include "fileops/engine/EntrySize.h"
#include "fileops/engine/OperationUI.h"
#include "fileops/engine/ProblemList.h"
#include "fileops/engine/TreeCopier.h"
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
    return CopyTo(CopyPlace{folder, destDir}, ui, CopyPurpose());
}

bool NorvaneEntry::CopyTo(const CopyPlace& target, OperationUI& ui, const CopyPurpose& purpose,
                          const char* targetName)
{
    fResult = CopyResult();
    BPath ownPath;
    BPath parentPath;
    BDirectory parent;
    status_t status = GetPath(&ownPath);
    if (status == B_OK) {
        status = ownPath.GetParent(&parentPath);
    }
    if (status == B_OK) {
        status = GetParent(&parent);
    }
    if (status != B_OK) {
        ui.NoteProblem(Name(), ReasonFor(status));
        return false;
    }
    const char* newName = targetName != nullptr ? targetName : Name();
    if (target.PathOf(newName) == ownPath.Path()) {
        fResult.isItself = true;
        return false;
    }
    if (target.folder.InitCheck() != B_OK) {
        ui.NoteProblem(Name(), ReasonFor(target.folder.InitCheck()));
        return false;
    }
    const CopyPlace source{parent, parentPath.Path()};
    fResult = TreeCopier(ui, purpose).Copy({source, Name(), target, newName});
    if (purpose.IsMove()) {
        bool isAbove = false;
        status = FindWhetherAbove(target.folder, &isAbove);
        if (status != B_OK) {
            ui.NoteProblem(Name(), "it stays where it is");
        }
        fResult.isItself |= status != B_OK || isAbove;
    }
    return fResult.isDone;
}

status_t NorvaneEntry::FindWhetherAbove(const BDirectory& folder, bool* isAbove) const
{
    struct stat record;
    status_t status = GetStat(&record);
    if (status != B_OK || !S_ISDIR(record.st_mode)) {
        return status;
    }
    BEntry folderEntry;
    status = folder.GetEntry(&folderEntry);
    return status == B_OK ? LiesIn(folderEntry, node_ref(record.st_dev, record.st_ino), isAbove)
                          : status;
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

bool NorvaneEntry::DeleteEntry(OperationUI& ui, const MoveLedger* ledger)
{
    return DeleteTree(*this, &ui, ledger);
}

} // namespace norvane
