#include "fileops/engine/MovedItems.h"

#include "fileops/engine/NorvaneEntry.h"
#include "fileops/engine/OperationContext.h"
#include "fileops/engine/OperationUI.h"
#include "fileops/engine/ProblemList.h"
#include "fileops/engine/SourceRemover.h"

#include <Directory.h>
#include <Entry.h>
#include <Errors.h>
#include <File.h>
#include <Path.h>

#include <algorithm>

namespace norvane {

namespace {

constexpr size_t kMostWaiting = 256;
constexpr bigtime_t kLongestWait = 5'000'000;

/// Whether what the entry names can be opened.
bool CanBeRead(const BEntry& entry)
{
    struct stat record;
    if (entry.GetStat(&record) != B_OK) {
        return false;
    }
    if (S_ISREG(record.st_mode)) {
        return BFile(&entry, B_READ_ONLY).InitCheck() == B_OK;
    }
    return !S_ISDIR(record.st_mode) || BDirectory(&entry).InitCheck() == B_OK;
}

} // namespace

MovedItems::MovedItems(OperationContext& context, TargetFolder& target)
    : fContext(context), fUI(context.ui), fTarget(target)
{
}

MovedItems::~MovedItems()
{
    fContext.smallFiles.Drain(); // they speak of what is here
}

MovedItems::Item& MovedItems::Add(const entry_ref& source, size_t index, bool hasStableNodes,
                                  std::unique_ptr<BTrashClaim> claim)
{
    if (fItems.empty()) {
        fFirstTime = system_time();
    }
    const std::string name = claim != nullptr ? claim->Name() : source.name;
    fItems.push_back({source, index, name, std::move(claim), MoveLedger(hasStableNodes), {}});
    return fItems.back();
}

bool MovedItems::AreDue() const
{
    return fItems.size() >= kMostWaiting ||
           (!fItems.empty() && system_time() - fFirstTime > kLongestWait);
}

/// How many from the first on are over with their copying.
size_t MovedItems::CountCopied() const
{
    const auto underWay = std::find_if(fItems.begin(), fItems.end(), [](const Item& item) {
        return !item.isCopied || item.copy.queued > 0;
    });
    return static_cast<size_t>(underWay - fItems.begin());
}

void MovedItems::Settle(bigtime_t patience)
{
    if (fIsSettling) {
        return; // what it tells waits for nobody
    }
    fIsSettling = true;
    fContext.smallFiles.Drain();
    const size_t count = CountCopied();
    const bool isAnyWhole =
        std::any_of(fItems.begin(), fItems.begin() + static_cast<std::ptrdiff_t>(count),
                    [](const Item& item) { return item.copy.result.isWhole; });
    const status_t synced =
        isAnyWhole && fUI.MayDelete() ? fTarget.Sync(fUI, patience) : status_t(B_OK);
    for (size_t done = 0; done < count && synced != B_TIMED_OUT; done++) {
        SettleOne(fItems.front(), synced);
        fItems.pop_front();
    }
    fFirstTime = system_time();
    fIsSettling = false;
}

void MovedItems::SettleOne(Item& item, status_t synced)
{
    CopyResult& result = item.copy.result;
    fContext.journal.End(item.index, ItemResult::Ending::kPartly);
    if (result.isItself) {
        return;
    }
    if (!fUI.MayDelete()) {
        KeepBoth(item);
        return;
    }
    if (result.isWhole && synced != B_OK) {
        fUI.NoteProblem(item.source.name, "its copy may not have reached the medium");
        result.isWhole = false;
    }
    if (result.isWhole) {
        DeleteSource(item);
    } else if (!result.isLeft) {
        LeaveForOwnTrash(item);
    } else if (item.claim != nullptr) {
        RemovePartInTrash(item, BEntry(&item.source), true);
    }
}

/// Nothing more is deleted: the source stays, and what was made of it.
void MovedItems::KeepBoth(Item& item)
{
    if (item.claim != nullptr) {
        RemovePartInTrash(item, BEntry(&item.source), true);
    } else if (item.copy.result.isWhole) {
        fUI.NoteProblem(item.source.name, "it was copied, and is still where it was");
    }
}

void MovedItems::DeleteSource(Item& item)
{
    if (item.claim != nullptr) {
        item.claim->Keep();
    }
    BEntry source(&item.source);
    const CopiedItem copy{fTarget.Folder(), item.targetName, fTarget.HasStableNodes()};
    if (SourceRemover(fUI, item.ledger, copy).Remove(source)) {
        fContext.journal.End(item.index, ItemResult::Ending::kWhole);
    }
}

/// Takes a source that was not copied whole from its place, as the person was promised, but to
/// where it can be got back from.
void MovedItems::LeaveForOwnTrash(Item& item)
{
    NorvaneEntry source(&item.source);
    BPath path;
    BDirectory trash;
    BDirectory parent;
    status_t status = find_trash_for(&source, &path, true);
    if (status == B_OK) {
        status = trash.SetTo(path.Path());
    }
    if (status == B_OK) {
        status = source.GetParent(&parent);
    }
    const bool isThere = status == B_OK && parent == trash;
    if (status == B_OK && !isThere) {
        status = source.MoveIntoTrash(trash);
    }
    const bool isGone = status == B_ENTRY_NOT_FOUND;
    if (status == B_OK && !isThere) {
        fContext.journal.End(item.index, ItemResult::Ending::kInOwnTrash);
        fUI.NoteProblem(item.source.name, "it is in the Trash");
    } else if (status != B_OK && !isGone) {
        fUI.NoteProblem(item.source.name, "it stays where it is");
    }
    if (item.claim != nullptr) {
        RemovePartInTrash(item, source, !isGone);
    }
}

/// Part of a copy in the Trash is of no use once its source is kept, and can be read: otherwise it
/// may be all that there is.
void MovedItems::RemovePartInTrash(Item& item, const BEntry& source, bool isKept)
{
    const CopyResult& result = item.copy.result;
    if (!result.isMade) {
        return;
    }
    if (!isKept || result.hasFailedReading || !CanBeRead(source)) {
        item.claim->Keep();
        TellOfPart(item);
        return;
    }
    if (!RemoveMadeTree(fTarget.Folder(), item.targetName.c_str(), result.target, fContext.made)) {
        item.claim->Keep();
        TellOfPart(item);
    }
}

void MovedItems::TellOfPart(const Item& item)
{
    fUI.NoteProblem(item.source.name, "what could be copied of it is in the Trash, too");
}

} // namespace norvane
