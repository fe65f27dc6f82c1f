#include <EntryBatch.h>

#include "FolderListing.h"
#include "FolderTable.h"
#include "NodeWatchers.h"
#include "OrNoMemory.h"
#include "ReadRecord.h"
#include "kernel/WorkerThread.h"

#include <Directory.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <vector>

namespace {

// Entries that are asked about in one go; the two threads take turns by such blocks.
constexpr size_t kBlockItems = 256;
// Below this a second thread costs more than it brings.
constexpr size_t kHelpedFrom = 20'000;

} // namespace

class BEntryBatch::Impl
{
public:
    ~Impl() { JoinHelper(); }

    explicit Impl(std::shared_ptr<const kits::FolderListing> listing) : fListing(std::move(listing))
    {
    }

    /// Reads the names unless the listing was handed over.
    status_t Read(int folder, kits::FolderHold hold);
    bool StatNext();
    void Sort();

    size_t Count() const { return fOrder.size(); }
    size_t CountStatted() const { return fStatted.load(std::memory_order_relaxed); }
    const Item& At(size_t index) const { return fItems[fOrder[index].item]; }
    const kits::FolderHold& Folder() const { return fHold; }

private:
    struct Place
    {
        const char* name;
        uint32 item;
    };

    bool StatBlock();
    void SortNames();
    void JoinHelper();

    std::shared_ptr<const kits::FolderListing> fListing;
    std::vector<Item> fItems;  // as listed
    std::vector<Place> fOrder; // as given to the caller; the helper's while it runs
    bool fIsSorted = false;    // the same
    int fFolder = -1;
    kits::FolderHold fHold;
    std::atomic<size_t> fNextBlock{0};
    std::atomic<size_t> fStatted{0};
    kits::WorkerThread fHelper;
};

status_t BEntryBatch::Impl::Read(int folder, kits::FolderHold hold)
{
    if (fListing == nullptr) {
        const auto listing = std::make_shared<kits::FolderListing>();
        const status_t status = listing->Read(folder);
        if (status != B_OK) {
            return status;
        }
        fListing = listing;
    }
    fFolder = folder;
    fHold = std::move(hold);
    const auto& listed = fListing->Items();
    fItems.resize(listed.size());
    fOrder.resize(listed.size());
    for (size_t i = 0; i < listed.size(); ++i) {
        fItems[i].name = listed[i].name;
        fItems[i].kind = listed[i].kind;
        fOrder[i] = {listed[i].name, static_cast<uint32>(i)};
    }
    if (fItems.size() >= kHelpedFrom) {
        // Sorting needs the names alone, so that it is done beside the caller's reading.
        // Without it the caller does all, as in a small folder.
        [[maybe_unused]] const status_t started = fHelper.Start("folder reader", [this] {
            SortNames();
            while (StatBlock()) {
            }
        });
    }
    return B_OK;
}

bool BEntryBatch::Impl::StatBlock()
{
    const size_t start = fNextBlock.fetch_add(kBlockItems, std::memory_order_relaxed);
    if (start >= fItems.size()) {
        return false;
    }
    const size_t end = std::min(start + kBlockItems, fItems.size());
    for (size_t i = start; i < end; ++i) {
        static_cast<BEntryRecord&>(fItems[i]) = kits::ReadRecord(fFolder, fItems[i].name);
    }
    fStatted.fetch_add(end - start, std::memory_order_relaxed);
    return true;
}

bool BEntryBatch::Impl::StatNext()
{
    if (StatBlock()) {
        return true;
    }
    JoinHelper();
    return false;
}

void BEntryBatch::Impl::JoinHelper()
{
    if (fHelper.IsStarted()) {
        // A batch that is given up early has no use for the rest.
        fNextBlock.store(fItems.size(), std::memory_order_relaxed);
        fHelper.Join();
    }
}

void BEntryBatch::Impl::Sort()
{
    JoinHelper();
    if (!fIsSorted) {
        SortNames();
    }
}

void BEntryBatch::Impl::SortNames()
{
    fIsSorted = true;
    std::sort(fOrder.begin(), fOrder.end(),
              [](const Place& a, const Place& b) { return std::strcmp(a.name, b.name) < 0; });
}

BEntryBatch::BEntryBatch() = default;

BEntryBatch::~BEntryBatch() = default;

status_t BEntryBatch::SetTo(const BDirectory& directory)
{
    fImpl.reset();
    if (directory.InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    return Take(directory, std::make_unique<Impl>(nullptr));
}

status_t BEntryBatch::SetTo(const BDirectory& directory, uint32 watchFlags,
                            const BMessenger& target, status_t* watchStatus)
{
    fImpl.reset();
    node_ref node;
    const status_t status = directory.GetNodeRef(&node);
    if (status != B_OK) {
        return status;
    }
    std::shared_ptr<const kits::FolderListing> listing;
    *watchStatus = kits::NodeWatchers::Get().Watch(node, watchFlags, target, &listing);
    return Take(directory, std::make_unique<Impl>(std::move(listing)));
}

status_t BEntryBatch::Take(const BDirectory& directory, std::unique_ptr<Impl> read)
{
    const status_t status =
        kits::OrNoMemory([&] { return read->Read(directory.Descriptor(), directory.Folder()); });
    if (status == B_OK) {
        fImpl = std::move(read);
    }
    return status;
}

int32 BEntryBatch::CountItems() const
{
    return fImpl == nullptr ? 0 : static_cast<int32>(fImpl->Count());
}

bool BEntryBatch::StatNext()
{
    return fImpl != nullptr && fImpl->StatNext();
}

int32 BEntryBatch::CountStatted() const
{
    return fImpl == nullptr ? 0 : static_cast<int32>(fImpl->CountStatted());
}

void BEntryBatch::Sort()
{
    if (fImpl != nullptr) {
        fImpl->Sort();
    }
}

const BEntryBatch::Item& BEntryBatch::ItemAt(int32 index) const
{
    return fImpl->At(static_cast<size_t>(index));
}

status_t BEntryBatch::GetRef(int32 index, entry_ref* ref) const
{
    if (ref == nullptr) {
        return B_BAD_VALUE;
    }
    if (index < 0 || index >= CountItems()) {
        return B_BAD_INDEX;
    }
    const status_t status = ref->set_name(ItemAt(index).name);
    if (status != B_OK) {
        return status;
    }
    const kits::FolderTable& table = kits::FolderTable::Get();
    ref->device = table.DeviceOf(fImpl->Folder());
    ref->directory = table.NodeOf(fImpl->Folder());
    ref->fFolder = fImpl->Folder();
    return B_OK;
}
