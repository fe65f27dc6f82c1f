#include "fileops/engine/LinkCopier.h"

#include "fileops/engine/LiesIn.h"
#include "fileops/engine/MoveLedger.h"
#include "fileops/engine/OperationContext.h"
#include "fileops/engine/OperationUI.h"
#include "fileops/engine/ProblemList.h"

#include <Directory.h>
#include <Entry.h>
#include <Errors.h>
#include <Path.h>
#include <SymLink.h>

namespace norvane {

namespace {

status_t OwnText(const CopyStep& step, std::string* text)
{
    char own[B_PATH_NAME_LENGTH * 4];
    const ssize_t length = BSymLink(&step.source.folder, step.name).ReadLink(own, sizeof(own));
    *text = length > 0 ? own : "";
    return length > 0 ? status_t(B_OK) : static_cast<status_t>(length);
}

} // namespace

CopyResult LinkCopier::Copy(const CopyStep& step, const struct stat& record)
{
    node_ref made;
    const status_t status = Make(step, record, &made);
    if (status == B_OK) {
        fContext.made.Add(made);
        if (!step.target.isNew) {
            fContext.journal.Note(fPurpose.item,
                                  {Change::Kind::kMade, step.target.node, step.targetName, made});
        }
        return {.isDone = true, .isWhole = true, .isMade = true, .target = made};
    }
    struct stat existing;
    if (status != B_FILE_EXISTS ||
        step.target.folder.GetStatFor(step.targetName, &existing) != B_OK) {
        fContext.smallFiles.Drain(); // what is told of those before comes first
        fContext.ui.Tell(step.name, ItemAlert::kBrokenLink);
        return {.isDone = true};
    }
    if (NodeOf(existing) == NodeOf(record)) {
        return {.isDone = true, .isItself = true};
    }
    fContext.smallFiles.Drain(); // then all that was made is known
    fContext.ui.NoteProblem(step.name, fContext.made.Has(NodeOf(existing))
                                           ? "another item of this operation has its name"
                                           : ReasonFor(status));
    return {.isDone = true};
}

status_t LinkCopier::Make(const CopyStep& step, const struct stat& record, node_ref* made)
{
    std::string text;
    BSymLink link;
    struct stat madeRecord;
    status_t status = TextFor(step, &text);
    if (status == B_OK) {
        status = step.target.folder.CreateSymLink(step.targetName, text.c_str(), &link);
    }
    if (status == B_OK) {
        status = link.GetStat(&madeRecord);
    }
    if (status != B_OK) {
        return status;
    }
    *made = NodeOf(madeRecord);
    if (fPurpose.TakesAllAlong()) {
        const BNode source(&step.source.folder, step.name);
        fContext.access.FinishMoved(&link, source, record);
    }
    if (fPurpose.IsMove()) {
        fPurpose.ledger->Add(step.place, record, *made);
    }
    return B_OK;
}

status_t LinkCopier::TextFor(const CopyStep& step, std::string* text) const
{
    if (fPurpose.keepsAll) {
        return OwnText(step, text);
    }
    const BEntry pointedTo(&step.source.folder, step.name, true);
    if (pointedTo.InitCheck() != B_OK) {
        return pointedTo.InitCheck();
    }
    if (!pointedTo.Exists()) {
        return B_ENTRY_NOT_FOUND;
    }
    bool movesAlong = false;
    if (fPurpose.IsMove()) {
        const status_t status = LiesIn(pointedTo, fTop, &movesAlong);
        if (status != B_OK) {
            return status;
        }
    }
    if (movesAlong) {
        // What it points to moves along, so that its own text goes on leading there.
        return OwnText(step, text);
    }
    BPath path;
    const status_t status = pointedTo.GetPath(&path);
    if (status == B_OK) {
        *text = path.Path();
    }
    return status;
}

} // namespace norvane
