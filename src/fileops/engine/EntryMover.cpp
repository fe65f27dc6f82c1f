#include "fileops/engine/EntryMover.h"

#include "fileops/engine/LinkKeeper.h"
#include "fileops/engine/OperationContext.h"

#include <Directory.h>
#include <Entry.h>
#include <Errors.h>

namespace norvane {

status_t EntryMover::Move(const CopyStep& step)
{
    struct stat record;
    status_t status = step.source.folder.GetStatFor(step.name, &record);
    if (status == B_OK && !S_ISREG(record.st_mode)) {
        status = KeepLinks(step, record);
    }
    if (status == B_OK) {
        BEntry entry(&step.source.folder, step.name);
        status = entry.MoveTo(&step.target.folder, step.targetName, false);
    }
    if (status == B_OK) {
        Note(step, record);
    }
    return status;
}

/// Nothing is touched when it shows before that the entry cannot be moved.
status_t EntryMover::KeepLinks(const CopyStep& step, const struct stat& record)
{
    struct stat existing;
    if (step.target.folder.GetStatFor(step.targetName, &existing) == B_OK) {
        return B_FILE_EXISTS;
    }
    LinkKeeper keeper(fContext);
    if (S_ISLNK(record.st_mode)) {
        return keeper.Keep(step.source.folder, step.name);
    }
    if (!S_ISDIR(record.st_mode)) {
        return B_OK;
    }
    return record.st_dev == step.target.node.device
               ? keeper.KeepBelow(step.source.folder, step.name)
               : status_t(B_CROSS_DEVICE_LINK);
}

void EntryMover::Note(const CopyStep& step, const struct stat& record)
{
    struct stat moved;
    const bool isSeen = step.target.folder.GetStatFor(step.targetName, &moved) == B_OK;
    const node_ref node = NodeOf(isSeen ? moved : record);
    fContext.made.Add(node);
    if (!step.target.hasStableNodes) {
        fContext.made.AddName(step.target.path, step.targetName);
    }
    fContext.journal.Note(fItem, {Change::Kind::kMoved, step.target.node, step.targetName, node});
}

} // namespace norvane
