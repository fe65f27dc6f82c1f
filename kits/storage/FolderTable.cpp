#include "FolderTable.h"

#include "FolderPath.h"
#include "OrNoMemory.h"
#include "kernel/WorkerThread.h"

#include <OS.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <sys/resource.h>
#include <vector>

namespace kits {

namespace {

constexpr size_t kUnheldLimit = 1024;
constexpr size_t kOpenLimit = 1024;
constexpr bigtime_t kIdleTime = 3'000'000;

struct rlimit gFirstLimit; // written once, before any child is started

bigtime_t Now()
{
    using namespace std::chrono;
    return duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count();
}

dev_t DeviceOfPath(const char* path)
{
    struct stat st;
    return path != nullptr && ::stat(path, &st) == 0 ? st.st_dev : 0;
}

} // namespace

void RaiseDescriptorLimit()
{
    if (::getrlimit(RLIMIT_NOFILE, &gFirstLimit) != 0) {
        return;
    }
    struct rlimit raised = gFirstLimit;
    raised.rlim_cur = raised.rlim_max;
    ::setrlimit(RLIMIT_NOFILE, &raised);
}

void RestoreDescriptorLimit()
{
    if (gFirstLimit.rlim_cur != 0) {
        ::setrlimit(RLIMIT_NOFILE, &gFirstLimit);
    }
}

FolderTable& FolderTable::Get()
{
    // Never destroyed: static refs may be let go after everything else.
    static FolderTable* table = new FolderTable;
    return *table;
}

FolderTable::FolderTable()
    : fRootDevice(DeviceOfPath("/")), fHomeDevice(DeviceOfPath(std::getenv("HOME")))
{
    RaiseDescriptorLimit();
    struct rlimit limit;
    const bool isKnown = ::getrlimit(RLIMIT_NOFILE, &limit) == 0;
    fOpenLimit = isKnown ? std::min<size_t>(kOpenLimit, limit.rlim_cur / 4) : 64;
}

FolderHold FolderTable::Hold(Folder* folder)
{
    if (folder->isUnheld) {
        folder->placeInUnheld.splice(folder->placeInUnheld.begin(), fUnheld, folder->inUnheld);
        folder->isUnheld = false;
    }
    folder->holders.fetch_add(1, std::memory_order_relaxed);
    return FolderHold(folder);
}

FolderHold FolderTable::Know(int descriptor)
{
    struct stat st;
    if (sys::Stat(descriptor, &st) != B_OK || !S_ISDIR(st.st_mode)) {
        return {};
    }
    return Know(descriptor, st);
}

FolderHold FolderTable::Know(int descriptor, const struct stat& st)
{
    const Key key{st.st_dev, st.st_ino};
    FolderHold closed; // known by these numbers, and perhaps removed since
    {
        MutexLock lock(fMutex);
        auto found = fFolders.find(key);
        if (found != fFolders.end()) {
            if (found->second->open != nullptr) { // so nobody can have got its numbers
                Touch(found->second.get());
                return Hold(found->second.get());
            }
            closed = Hold(found->second.get());
        }
    }
    FolderIdentity identity = IdentityOf(descriptor);
    const bool isOther = closed && IsOther(closed, identity, descriptor);
    // A duplicate is enough: the table never reads the folder, it only starts from it.
    auto open = std::make_shared<const UniqueFd>(sys::Duplicate(descriptor));
    auto made = std::make_unique<Folder>(); // first: the table keeps no half of one
    FolderHold hold;
    {
        MutexLock lock(fMutex);
        std::unique_ptr<Folder>& slot = fFolders[key];
        if (isOther && slot != nullptr && slot.get() == closed.Get() && slot->open == nullptr) {
            SetGone(slot.get());
        }
        if (slot == nullptr) {
            slot = std::move(made);
            slot->key = key;
            slot->tag = identity.Tag();
            slot->identity = std::move(identity);
            slot->releaseLast = &FolderTable::ReleaseLast;
        }
        if (slot->open == nullptr && open->IsOpen()) {
            SetOpen(slot.get(), std::move(open));
        }
        hold = Hold(slot.get());
    }
    AfterOpening(static_cast<const Folder*>(hold.Get()));
    return hold;
}

FolderHold FolderTable::KnowAt(int descriptor, const std::string& path)
{
    struct stat st;
    if (sys::Stat(descriptor, &st) != B_OK || !S_ISDIR(st.st_mode)) {
        return {};
    }
    const Key key{st.st_dev, st.st_ino};
    auto made = std::make_unique<Folder>(); // first: the table keeps no half of one
    made->key = key;
    made->identity = IdentityOf(descriptor);
    made->tag = made->identity.Tag();
    made->releaseLast = &FolderTable::ReleaseLast;
    made->path = path;
    {
        MutexLock lock(fMutex);
        std::unique_ptr<Folder>& slot = fFolders[key];
        if (slot == nullptr) {
            slot = std::move(made);
            return Hold(slot.get());
        }
    }
    return Know(descriptor, st); // it may be another one by now, or not
}

/// Whether the folder that is open as `descriptor` is another one than that whose numbers it has.
bool FolderTable::IsOther(const FolderHold& known, const FolderIdentity& identity, int descriptor)
{
    const Folder* folder = static_cast<const Folder*>(known.Get());
    const Sameness sameness = Compare(folder->identity, identity, descriptor);
    if (sameness != Sameness::kUnknown) {
        return sameness == Sameness::kOther;
    }
    std::string noted;
    {
        MutexLock lock(fMutex);
        noted = folder->path;
    }
    std::string path;
    return FindPath(descriptor, &path) != B_OK || path != noted;
}

void FolderTable::SetGone(Folder* folder)
{
    const auto found = fFolders.find(folder->key);
    fGone.push_back(std::move(found->second)); // the slot stays, for the other one
    folder->isGone = true;
    folder->path.clear();
}

FolderHold FolderTable::HoldGone(const Key& key, uint32 tag)
{
    const auto found = std::find_if(fGone.begin(), fGone.end(), [&](const auto& folder) {
        return folder->key == key && folder->tag == tag;
    });
    if (found != fGone.end()) {
        return Hold(found->get());
    }
    auto folder = std::make_unique<Folder>();
    folder->key = key;
    folder->tag = tag;
    folder->isGone = true;
    folder->releaseLast = &FolderTable::ReleaseLast;
    fGone.push_back(std::move(folder));
    return Hold(fGone.back().get());
}

void FolderTable::AfterOpening(const Folder* folder)
{
    [[maybe_unused]] const status_t status = OrNoMemory([this] { // the next one that is opened does
        CloseLongestUnused();
        return B_OK;
    });
    if (IsOnOtherVolume(folder)) {
        WakeSweeper();
    }
}

FolderHold FolderTable::Find(dev_t device, ino_t node)
{
    return Find(device, node, 0);
}

FolderHold FolderTable::Find(dev_t device, ino_t node, uint32 tag)
{
    const Key key{device, node};
    MutexLock lock(fMutex);
    const auto found = fFolders.find(key);
    if (found == fFolders.end()) {
        return {};
    }
    Folder* folder = found->second.get();
    const bool mayBe = tag == 0 || folder->tag == 0 || folder->tag == tag;
    return mayBe ? Hold(folder) : HoldGone(key, tag);
}

FolderHold FolderTable::FindNowhere(ino_t number)
{
    MutexLock lock(fMutex);
    return HoldGone({0, number}, 0);
}

uint32 FolderTable::TagOf(const FolderHold& hold) const
{
    const Folder* folder = static_cast<const Folder*>(hold.Get());
    return folder == nullptr ? 0 : folder->tag;
}

status_t FolderTable::Open(const FolderHold& hold, OpenFolder* open)
{
    Folder* folder = static_cast<Folder*>(hold.Get());
    if (folder == nullptr) {
        return B_NO_INIT;
    }
    std::string path;
    {
        MutexLock lock(fMutex);
        if (folder->open != nullptr) {
            Touch(folder);
            *open = folder->open;
            return B_OK;
        }
        path = folder->path;
    }
    if (path.empty()) {
        return B_ENTRY_NOT_FOUND;
    }
    UniqueFd again(OpenPath(sys::kWorkingDirectory, path, O_PATH | O_DIRECTORY | O_NOFOLLOW));
    if (!again.IsOpen()) {
        return again.Get();
    }
    struct stat st;
    const status_t status = sys::Stat(again.Get(), &st);
    if (status != B_OK) {
        return status;
    }
    // Another folder may have taken the place, and even the numbers.
    if (st.st_dev != folder->key.device || st.st_ino != folder->key.node ||
        Compare(folder->identity, IdentityOf(again.Get()), again.Get()) == Sameness::kOther) {
        return B_ENTRY_NOT_FOUND;
    }
    auto opened = std::make_shared<const UniqueFd>(std::move(again));
    {
        MutexLock lock(fMutex);
        if (folder->isGone) {
            return B_ENTRY_NOT_FOUND;
        }
        if (folder->open == nullptr) {
            SetOpen(folder, opened);
        }
        *open = folder->open;
    }
    AfterOpening(folder);
    return B_OK;
}

dev_t FolderTable::DeviceOf(const FolderHold& hold) const
{
    const Folder* folder = static_cast<const Folder*>(hold.Get());
    return folder == nullptr ? 0 : folder->key.device;
}

ino_t FolderTable::NodeOf(const FolderHold& hold) const
{
    const Folder* folder = static_cast<const Folder*>(hold.Get());
    return folder == nullptr ? 0 : folder->key.node;
}

void FolderTable::ReleaseLast(FolderCount* count)
{
    FolderTable& table = Get();
    std::unique_ptr<Folder> forgotten; // destroyed, and so closed, after the lock is free
    MutexLock lock(table.fMutex);
    Folder* folder = static_cast<Folder*>(count);
    if (folder->holders.fetch_sub(1, std::memory_order_acq_rel) != 1) {
        return; // found by someone meanwhile
    }
    if (folder->isGone) {
        const auto gone = std::find_if(table.fGone.begin(), table.fGone.end(),
                                       [folder](const auto& held) { return held.get() == folder; });
        forgotten = std::move(*gone);
        table.fGone.erase(gone);
        return;
    }
    table.fUnheld.splice(table.fUnheld.begin(), folder->placeInUnheld);
    folder->inUnheld = table.fUnheld.begin();
    folder->isUnheld = true;
    if (table.fUnheld.size() <= kUnheldLimit) {
        return;
    }
    Folder* oldest = table.fUnheld.back();
    table.fUnheld.pop_back();
    if (oldest->open != nullptr) {
        table.fOpen.erase(oldest->inOpen);
    }
    auto found = table.fFolders.find(oldest->key);
    forgotten = std::move(found->second);
    table.fFolders.erase(found);
}

void FolderTable::SetOpen(Folder* folder, OpenFolder open)
{
    folder->open = std::move(open);
    folder->lastUse = Now();
    fOpen.splice(fOpen.begin(), folder->placeInOpen);
    folder->inOpen = fOpen.begin();
}

void FolderTable::Touch(Folder* folder)
{
    folder->lastUse = Now();
    if (folder->inOpen != fOpen.begin()) {
        fOpen.splice(fOpen.begin(), fOpen, folder->inOpen);
    }
}

bool FolderTable::IsOnOtherVolume(const Folder* folder) const
{
    return folder->key.device != fRootDevice && folder->key.device != fHomeDevice;
}

void FolderTable::CloseNoted(const FolderHold& hold, bigtime_t lastUse)
{
    Folder* folder = static_cast<Folder*>(hold.Get());
    OpenFolder open;
    {
        MutexLock lock(fMutex);
        open = folder->open;
    }
    if (open == nullptr) {
        return;
    }
    std::string path;
    const status_t found = FindPath(open->Get(), &path);
    if (found == B_ENTRY_NOT_FOUND) {
        path.clear(); // removed: it can never be opened again
    }
    MutexLock lock(fMutex);
    // Whoever used it meanwhile keeps it open.
    if (folder->open != open || folder->lastUse != lastUse) {
        return;
    }
    if (found != B_OK && found != B_ENTRY_NOT_FOUND) {
        Touch(folder); // it would be lost: others first
        return;
    }
    folder->path = std::move(path);
    folder->placeInOpen.splice(folder->placeInOpen.begin(), fOpen, folder->inOpen);
    folder->open.reset();
}

status_t FolderTable::FindPath(int descriptor, std::string* path)
{
    const auto noted = [this](int folder, std::string* known) {
        struct stat st;
        if (sys::Stat(folder, &st) != B_OK) {
            return false;
        }
        MutexLock lock(fMutex);
        const auto found = fFolders.find(Key{st.st_dev, st.st_ino});
        if (found == fFolders.end() || found->second->path.empty()) {
            return false;
        }
        *known = found->second->path;
        return true;
    };
    return WholePathOf(descriptor, noted, path);
}

void FolderTable::CloseLongestUnused()
{
    FolderHold hold;
    bigtime_t lastUse = 0;
    {
        MutexLock lock(fMutex);
        if (fOpen.size() <= fOpenLimit) {
            return;
        }
        lastUse = fOpen.back()->lastUse;
        hold = Hold(fOpen.back());
    }
    CloseNoted(hold, lastUse);
}

size_t FolderTable::CloseIdle(bigtime_t idle, Volumes volumes)
{
    std::vector<std::pair<FolderHold, bigtime_t>> found;
    size_t stays = 0;
    {
        MutexLock lock(fMutex);
        const bigtime_t limit = Now() - idle;
        for (Folder* folder : fOpen) {
            if (volumes == Volumes::kOther && !IsOnOtherVolume(folder)) {
                continue;
            }
            if (folder->lastUse <= limit) {
                found.emplace_back(Hold(folder), folder->lastUse);
            } else {
                ++stays;
            }
        }
    }
    for (const auto& [hold, lastUse] : found) {
        CloseNoted(hold, lastUse);
    }
    return stays;
}

size_t FolderTable::CountOpen() const
{
    MutexLock lock(fMutex);
    return fOpen.size();
}

void FolderTable::WakeSweeper()
{
    {
        MutexLock lock(fMutex);
        if (fIsSweeping) {
            return;
        }
        fIsSweeping = true;
    }
    if (StartDetached("folder closer", [this] { Sweep(); }) != B_OK) {
        // What is idle now is closed here; the next folder that is opened tries again.
        CloseIdle(kIdleTime, Volumes::kOther);
        MutexLock lock(fMutex);
        fIsSweeping = false;
    }
}

void FolderTable::Sweep()
{
    for (;;) {
        snooze(kIdleTime / 3);
        [[maybe_unused]] const status_t status = OrNoMemory([this] { // else the next round does it
            CloseIdle(kIdleTime, Volumes::kOther);
            return B_OK;
        });
        MutexLock lock(fMutex);
        const bool isDone = std::none_of(fOpen.begin(), fOpen.end(), [this](const Folder* folder) {
            return IsOnOtherVolume(folder);
        });
        if (isDone) {
            fIsSweeping = false;
            return;
        }
    }
}

} // namespace kits
