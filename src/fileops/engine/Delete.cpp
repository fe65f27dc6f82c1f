#include "fileops/engine/Delete.h"

#include "fileops/engine/NorvaneEntry.h"
#include "fileops/engine/ProblemList.h"

#include <Directory.h>
#include <Errors.h>
#include <Path.h>

namespace norvane {

OperationSize Delete::MeasureItems()
{
    OperationSize size = Operation::MeasureItems();
    size.entries = fDesk.CountVisited() + static_cast<int64>(CountItems());
    return size;
}

void Delete::DoItem(size_t index)
{
    if (NorvaneEntry(&Item(index)).DeleteEntry(fDesk)) {
        fContext.journal.End(index, ItemResult::Ending::kWhole);
    } else {
        fContext.journal.End(index, ItemResult::Ending::kPartly);
    }
    fDesk.EntriesVisited(1);
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
