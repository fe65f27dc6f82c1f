#include "fileops/engine/Measurement.h"

#include "fileops/engine/ItemFolder.h"
#include "fileops/engine/OperationHooks.h"
#include "fileops/engine/OperationUI.h"
#include "fileops/engine/PatientWork.h"

#include <Entry.h>
#include <Errors.h>

#include <atomic>
#include <utility>

namespace norvane {

struct Measurement::Found
{
    struct Item
    {
        int64 bytes = 0;
        bool isFile = false;
        bool hasStableNode = true;
    };

    std::function<std::vector<entry_ref>()> itemsOf;
    std::vector<Item> items;
    std::vector<struct stat> records; // of the items, where they are kept
    int64 bytes = 0;
    std::atomic<int64> entries{0};
    std::atomic<bool> isCancelled{false};
};

namespace {

// Of items that are no folders.
constexpr size_t kGlanceEvery = 64;

/// Counts what a walk comes upon, and ends it.
class CountingHooks : public BTreeHooks
{
public:
    /// `steering` may be null.
    CountingHooks(std::atomic<int64>& count, const std::atomic<bool>& isCancelled,
                  const BTreeHooks* steering)
        : fCount(count), fIsCancelled(isCancelled), fSteering(steering)
    {
    }

    // BTreeHooks
    bool IsStopped() const override
    {
        fCount.fetch_add(1, std::memory_order_relaxed);
        return fSteering != nullptr ? fSteering->IsStopped() : fIsCancelled.load();
    }

private:
    std::atomic<int64>& fCount;
    const std::atomic<bool>& fIsCancelled;
    const BTreeHooks* const fSteering;
};

} // namespace

Measurement::Measurement(std::function<std::vector<entry_ref>()> items, Keep keep)
    : fKeep(keep), fFound(std::make_shared<Found>())
{
    fFound->itemsOf = std::move(items);
}

Measurement::~Measurement()
{
    fFound->isCancelled = true;
}

void Measurement::Start()
{
    const auto measure = [found = fFound, keep = fKeep] {
        Measure(*found, keep, nullptr);
        return status_t(B_OK);
    };
    // The window that is opening comes first.
    fWork = std::make_unique<PatientWork>(measure, B_LOW_PRIORITY);
    if (!fWork->HasBegun()) {
        fWork.reset();
    }
}

void Measurement::Finish(OperationUI& ui)
{
    if (fWork == nullptr) {
        const OperationHooks hooks(ui);
        Measure(*fFound, fKeep, &hooks);
    } else if (fWork->Wait(ui) != B_OK) {
        fFound->isCancelled = true; // and is the thread's from now on
        fFound = std::make_shared<Found>();
    }
}

void Measurement::Measure(Found& found, Keep keep, const BTreeHooks* steering)
{
    CountingHooks hooks(found.entries, found.isCancelled, steering);
    ItemFolder folder;
    for (const entry_ref& ref : found.itemsOf()) {
        const bool isGlance = steering != nullptr && found.items.size() % kGlanceEvery == 0;
        if (found.isCancelled || (isGlance && steering->IsStopped())) {
            return;
        }
        struct stat record = {};
        Found::Item item;
        if (folder.SetTo(ref) != B_OK || folder.Folder().GetStatFor(ref.name, &record) != B_OK) {
            record = {};
        }
        item.hasStableNode = folder.HasStableNodes();
        item.isFile = S_ISREG(record.st_mode);
        if (item.isFile) {
            item.bytes = record.st_size;
        } else if (S_ISDIR(record.st_mode)) {
            BEntry(&ref).MeasureTree(&item.bytes, BEntry::kAllVolumes, &hooks);
        }
        found.bytes += item.bytes;
        found.items.push_back(item);
        if (keep == Keep::kRecords) {
            found.records.push_back(record);
        }
    }
}

int64 Measurement::TotalBytes() const
{
    return fFound->bytes;
}

int64 Measurement::CountEntries() const
{
    return fFound->entries;
}

int64 Measurement::BytesOf(size_t index) const
{
    return index < fFound->items.size() ? fFound->items[index].bytes : 0;
}

bool Measurement::WasFile(size_t index) const
{
    return index < fFound->items.size() && fFound->items[index].isFile;
}

struct stat Measurement::RecordOf(size_t index) const
{
    return index < fFound->records.size() ? fFound->records[index] : (struct stat){};
}

bool Measurement::HasStableNode(size_t index) const
{
    return index >= fFound->items.size() || fFound->items[index].hasStableNode;
}

} // namespace norvane
