#include "fileops/engine/Delete.h"

#include "fileops/engine/AsideName.h"
#include "fileops/engine/MadeTargets.h"
#include "fileops/engine/NorvaneEntry.h"
#include "fileops/engine/OwnNames.h"
#include "fileops/engine/ProblemList.h"

#include <Directory.h>
#include <Errors.h>
#include <Path.h>

namespace norvane {

OperationSize Delete::MeasureItems()
{
    fNodes.resize(CountItems());
    for (size_t index = 0; index < CountItems(); index++) {
        struct stat record;
        if (BEntry(&Item(index)).GetStat(&record) == B_OK) {
            fNodes[index] = NodeOf(record);
        }
    }
    OperationSize size = Operation::MeasureItems();
    size.entries = fDesk.CountVisited() + static_cast<int64>(CountItems());
    return size;
}

void Delete::DoItem(size_t index)
{
    const bool isGone = DeleteOne(index);
    fContext.journal.End(index, isGone ? ItemResult::Ending::kWhole : ItemResult::Ending::kPartly);
    fDesk.EntriesVisited(1);
}

bool Delete::DeleteOne(size_t index)
{
    NorvaneEntry item(&Item(index));
    const node_ref known = index < fNodes.size() ? fNodes[index] : node_ref();
    if (!fDesk.MayDelete()) {
        return false;
    }
    // Under a name that nobody else knows it is the item, and stays it, that is deleted.
    const OwnTemporaryName aside;
    if (known == node_ref() || item.Rename(aside.Name()) != B_OK) {
        return item.DeleteEntry(fDesk); // what may not be renamed may hold what may be deleted
    }
    if (DeleteAside(item, known, Item(index).name)) {
        return true;
    }
    PutBack(item, Item(index).name, fDesk);
    return false;
}

bool Delete::DeleteAside(NorvaneEntry& item, const node_ref& known, const char* name)
{
    struct stat record;
    if (item.GetStat(&record) == B_OK && NodeOf(record) != known) {
        fDesk.NoteProblem(name, "another entry took its place, and stays");
        return false;
    }
    return item.DeleteEntry(fDesk, name);
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
