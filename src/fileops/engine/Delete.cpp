#include "fileops/engine/Delete.h"

#include "fileops/engine/AsideName.h"
#include "fileops/engine/MadeTargets.h"
#include "fileops/engine/NorvaneEntry.h"
#include "fileops/engine/OwnNames.h"
#include "fileops/engine/ProblemList.h"
#include "fileops/engine/ReplaceTarget.h"

#include <Directory.h>
#include <Errors.h>
#include <Path.h>

namespace norvane {

/// Whether the entry is the one that was measured. Of a folder only its node counts, where there
/// are such.
bool Delete::IsItem(const NorvaneEntry& item, size_t index) const
{
    struct stat now;
    const struct stat before = Measured().RecordOf(index);
    if (item.GetStat(&now) != B_OK || (now.st_mode & S_IFMT) != (before.st_mode & S_IFMT)) {
        return false;
    }
    if (Measured().HasStableNode(index)) {
        return NodeOf(now) == NodeOf(before);
    }
    return S_ISDIR(now.st_mode) || HasSameContents(before, now);
}

void Delete::DoItem(size_t index)
{
    const bool isGone = DeleteOne(index);
    fContext.journal.End(index, isGone ? ItemResult::Ending::kWhole : ItemResult::Ending::kPartly);
    fDesk.EntriesVisited(1);
}

bool Delete::DeleteOne(size_t index)
{
    const char* name = Item(index).name;
    NorvaneEntry item(&Item(index));
    if (!fDesk.MayDelete()) {
        return false;
    }
    // Under a name that nobody else knows it is the item, and stays it, that is deleted.
    const OwnTemporaryName aside;
    if (item.Rename(aside.Name()) != B_OK) {
        return DeleteUnderItsName(item, index);
    }
    if (IsItem(item, index) ? item.DeleteEntry(fDesk, name) : LeaveOther(name)) {
        return true;
    }
    PutBack(item, name, fDesk);
    return false;
}

/// What may not be renamed may hold what may be deleted.
bool Delete::DeleteUnderItsName(NorvaneEntry& item, size_t index)
{
    const bool isOther = item.Exists() && !IsItem(item, index);
    return isOther ? LeaveOther(item.Name()) : item.DeleteEntry(fDesk);
}

bool Delete::LeaveOther(const char* name)
{
    fDesk.NoteProblem(name, "another entry took its place, and stays");
    return false;
}

Empty::Empty(const char* path, OperationUI& ui) : Empty(path, List(path), ui) {}

Empty::Empty(const char* path, Contents contents, OperationUI& ui)
    : Delete(std::move(contents.items), ui)
{
    if (contents.status != B_OK) {
        fDesk.NoteProblem(BPath(path).Leaf(), ReasonFor(contents.status));
    }
}

/// What is in the folder, as far as it can be listed.
Empty::Contents Empty::List(const char* path)
{
    Contents contents;
    BDirectory folder(path);
    entry_ref item;
    status_t status = folder.InitCheck();
    while (status == B_OK && (status = folder.GetNextRef(&item)) == B_OK) {
        contents.items.push_back(item);
    }
    contents.status = status == B_ENTRY_NOT_FOUND ? status_t(B_OK) : status;
    return contents;
}

} // namespace norvane
