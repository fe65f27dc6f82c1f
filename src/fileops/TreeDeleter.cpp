#include "fileops/TreeDeleter.h"

#include "fileops/MoveLedger.h"
#include "fileops/OperationUI.h"
#include "fileops/ProblemList.h"

#include <Directory.h>
#include <Entry.h>
#include <Errors.h>

namespace norvane {

bool TreeDeleter::Delete(BEntry& entry)
{
    BDirectory folder;
    const status_t status = entry.GetParent(&folder);
    return status == B_OK ? DeleteChild(folder, entry.Name()) : Gone(status, entry.Name());
}

bool TreeDeleter::DeleteChild(const BDirectory& folder, const char* name)
{
    struct stat record = {};
    if (IsStopped() || !MayGo(folder, name, &record)) {
        return false;
    }
    BEntry entry(&folder, name);
    status_t status = entry.InitCheck() == B_OK ? entry.Remove() : entry.InitCheck();
    if (status == B_DIRECTORY_NOT_EMPTY) {
        if (!Empty(folder, name, record)) {
            return false;
        }
        status = entry.Remove();
    }
    return Gone(status, name);
}

bool TreeDeleter::MayGo(const BDirectory& folder, const char* name, struct stat* record)
{
    if (fLedger == nullptr) {
        return true;
    }
    const status_t status = folder.GetStatFor(name, record);
    if (status != B_OK) {
        return Gone(status, name);
    }
    return fLedger->Holds(fPath + name, *record) ||
           Stays(name, "it was added or changed meanwhile, and stays");
}

bool TreeDeleter::Empty(const BDirectory& parent, const char* name, const struct stat& record)
{
    BDirectory folder;
    struct stat opened;
    status_t status = folder.SetToChild(parent, name);
    if (status == B_OK) {
        status = folder.GetStat(&opened);
    }
    if (status != B_OK) {
        return Gone(status, name);
    }
    if (fLedger != nullptr && (opened.st_dev != record.st_dev || opened.st_ino != record.st_ino)) {
        return Stays(name, "another folder took its place");
    }
    const size_t length = fPath.size();
    fPath += std::string(name) + "/";
    bool isEmpty = true;
    const char* child = nullptr;
    while ((status = folder.GetNextName(&child)) == B_OK) {
        isEmpty &= DeleteChild(folder, child);
    }
    fPath.resize(length);
    return (status == B_ENTRY_NOT_FOUND || Gone(status, name)) && isEmpty;
}

bool TreeDeleter::Gone(status_t status, const char* name)
{
    if (status == B_OK || status == B_ENTRY_NOT_FOUND) {
        if (fUI != nullptr && status == B_OK) {
            fUI->EntriesRemoved(1);
        }
        return true;
    }
    return Stays(name, status == B_DIRECTORY_NOT_EMPTY ? "something was added to it meanwhile"
                                                       : ReasonFor(status));
}

bool TreeDeleter::Stays(const char* name, const char* reason)
{
    if (fUI != nullptr) {
        fUI->NoteProblem(name, reason);
    }
    return false;
}

bool TreeDeleter::IsStopped() const
{
    return fUI != nullptr && !fUI->MayDelete();
}

} // namespace norvane
