#include "NodeWatcher.h"

#include "NodeWatchers.h"
#include "PathLookup.h"
#include "kernel/WorkerThread.h"
#include "support/ErrnoTable.h"

#include <Message.h>
#include <OS.h>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace kits {

namespace {

constexpr uint32 kFolderMask = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_MODIFY |
                               IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
constexpr uint32 kGuardMask = IN_DELETE | IN_ONLYDIR | IN_MASK_ADD;
// While much happens, events are left to the kernel for these steps: of those about one file it
// makes one, and one turn here takes many. Taking each would cost a big copy a quarter of its
// speed.
constexpr int kBusyMilliseconds = 5;
constexpr int kBusySteps = 5;
constexpr int kMuchWaiting = 96 * 1024;
// A watcher that watches nothing stays for so long.
constexpr int kLingerMilliseconds = 5000;

/// What a task's caller waits for.
class Answer
{
public:
    void Give(status_t status)
    {
        MutexLock lock(fMutex);
        fStatus = status;
        fArrival.Broadcast();
    }

    status_t Wait()
    {
        MutexLock lock(fMutex);
        while (!fStatus.has_value()) {
            fArrival.Wait(fMutex);
        }
        return *fStatus;
    }

private:
    Mutex fMutex;
    Condition fArrival;
    std::optional<status_t> fStatus GUARDED_BY(fMutex);
};

} // namespace

NameTable& NodeWatcher::Folder::Names()
{
    if (listing != nullptr) {
        table.Fill(*listing);
        listing.reset();
    }
    return table;
}

void NodeWatcher::Folder::ForgetNames()
{
    listing.reset();
    table.Clear();
    hasNames = false;
}

NodeWatcher::NodeWatcher()
    : fInotify(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)),
      fWake(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)), fLastDrained(::time(nullptr))
{
}

// Any thread

status_t NodeWatcher::StartThread()
{
    if (fHasThread) {
        return B_OK;
    }
    if (!fInotify.IsOpen() || !fWake.IsOpen()) {
        return B_NO_MEMORY; // the limit of watching programs is reached
    }
    const status_t status =
        StartDetached("node watcher", [self = shared_from_this()] { self->Run(); });
    fHasThread = status == B_OK;
    return status;
}

void NodeWatcher::Wake()
{
    const uint64 one = 1;
    [[maybe_unused]] const ssize_t written = ::write(fWake.Get(), &one, sizeof(one));
}

std::optional<status_t> NodeWatcher::Watch(const node_ref& node, uint32 flags,
                                           const BMessenger& target,
                                           std::shared_ptr<const FolderListing>* listing)
{
    // Shared, because the caller may be gone before the thread has let go of it.
    const auto answer = std::make_shared<Answer>();
    {
        MutexLock lock(fMutex);
        if (fHasEnded) {
            return std::nullopt;
        }
        const status_t status = StartThread();
        if (status != B_OK) {
            return status;
        }
        fTasks.push_back([&, answer] { answer->Give(AddWatch(node, flags, target, listing)); });
    }
    Wake();
    return answer->Wait();
}

void NodeWatcher::StopWatching(const BMessenger& target, const node_ref* node)
{
    {
        MutexLock lock(fMutex);
        for (const NodeTargets& watched : fTargets) {
            if (node == nullptr || watched.node == *node) {
                using Extent = WatchTargets::Extent;
                watched.targets->Remove(target, node == nullptr ? Extent::kAll : Extent::kOne);
            }
        }
        if (!fHasThread || fHasEnded) {
            return;
        }
        fTasks.push_back([this] { ForgetUnwatched(); });
    }
    Wake();
}

// The watcher's thread

void NodeWatcher::ForgetUnwatched()
{
    std::vector<int> watches;
    for (const auto& [watch, folder] : fFolders) {
        watches.push_back(watch);
    }
    for (const int watch : watches) {
        ForgetIfUnwatched(watch);
    }
}

status_t NodeWatcher::AddWatch(const node_ref& node, uint32 flags, const BMessenger& target,
                               std::shared_ptr<const FolderListing>* listing)
{
    const FolderHold hold = FolderTable::Get().Find(node.device, node.node);
    if (!hold) {
        return AddStatWatch(node, target);
    }
    Folder* folder = nullptr;
    status_t status = AddFolder(hold, kFolderMask, &folder);
    // Names are read after the watch is there, so none is missed in between.
    const auto read = std::make_shared<FolderListing>();
    const bool isToRead = listing != nullptr || (folder != nullptr && !folder->hasNames);
    if (status == B_OK && isToRead) {
        status = ReadNames(folder, read.get());
    }
    if (status != B_OK) {
        if (folder != nullptr) {
            ForgetIfUnwatched(folder->watch);
        }
        return status;
    }
    if (folder->hasNames && isToRead) {
        // Others watch it too: what a listing found is from now on what is known, for all of them.
        Reread(folder, *read, Since::kLastEvent);
    } else if (isToRead) {
        folder->listing = read;
        folder->hasNames = true;
    }
    if (listing != nullptr) {
        *listing = read;
    }
    folder->targets->Add(target, flags);
    if (folder->guard < 0) {
        Guard(folder);
    }
    return B_OK;
}

status_t NodeWatcher::AddFolder(const FolderHold& hold, uint32 mask, Folder** added)
{
    OpenFolder open;
    const status_t status = FolderTable::Get().Open(hold, &open);
    if (status != B_OK) {
        return status;
    }
    const std::string path = "/proc/self/fd/" + std::to_string(open->Get());
    const int watch = ::inotify_add_watch(fInotify.Get(), path.c_str(), mask);
    if (watch < 0) {
        // No space means the limit of watches here, not the disk.
        return errno == ENOSPC ? status_t(B_NO_MEMORY) : StatusFromErrno(errno);
    }
    std::unique_ptr<Folder>& folder = fFolders[watch];
    if (folder == nullptr) {
        folder = std::make_unique<Folder>();
        folder->watch = watch;
        folder->hold = hold;
        folder->node = node_ref(FolderTable::Get().DeviceOf(hold), FolderTable::Get().NodeOf(hold));
        MutexLock lock(fMutex);
        fTargets.push_back({folder->node, folder->targets});
    }
    *added = folder.get();
    return B_OK;
}

status_t NodeWatcher::AddStatWatch(const node_ref& node, const BMessenger& target)
{
    for (const auto& [watch, folder] : fFolders) {
        if (folder->node.device != node.device ||
            (folder->targets->FlagsOf(target) & B_WATCH_DIRECTORY) == 0) {
            continue;
        }
        if ((folder->targets->FlagsOf(target) & B_WATCH_STAT) != 0) {
            return B_OK; // all files of the folder are watched already
        }
        for (size_t i = 0; i < folder->Names().Count(); ++i) {
            if (folder->Names().NodeAt(i) == node.node) {
                folder->targets->Add(target, B_WATCH_STAT);
                return B_OK;
            }
        }
    }
    return B_ENTRY_NOT_FOUND;
}

status_t NodeWatcher::ReadNames(Folder* folder, FolderListing* listing) const
{
    OpenFolder known;
    const status_t status = FolderTable::Get().Open(folder->hold, &known);
    if (status != B_OK) {
        return status;
    }
    const UniqueFd open(sys::OpenAt(known->Get(), ".", O_RDONLY | O_DIRECTORY));
    return open.IsOpen() ? listing->Read(open.Get()) : status_t(open.Get());
}

void NodeWatcher::Guard(Folder* folder)
{
    OpenFolder open;
    Place place;
    if (FolderTable::Get().Open(folder->hold, &open) != B_OK ||
        PlaceOfFolder(open->Get(), &place) != B_OK) {
        return;
    }
    folder->leaf = place.name;
    folder->parent = FolderTable::Get().NodeOf(place.folder);
    if (FolderTable::Get().DeviceOf(place.folder) != folder->node.device) {
        return; // a volume's top folder, which stays while it is mounted
    }
    Folder* parent = nullptr;
    // A parent that may not be read, or one watch too many: the folder's end is then told when its
    // last descriptor is closed.
    if (place.name != "." && AddFolder(place.folder, kGuardMask, &parent) == B_OK &&
        parent != folder) {
        folder->guard = parent->watch;
        ++parent->guarded;
    }
}

void NodeWatcher::Unguard(Folder* folder)
{
    const int guard = std::exchange(folder->guard, -1);
    Folder* parent = FolderOf(guard);
    if (parent != nullptr) {
        --parent->guarded;
        ForgetIfUnwatched(guard);
    }
}

NodeWatcher::Folder* NodeWatcher::FolderOf(int watch) const
{
    const auto found = fFolders.find(watch);
    return found == fFolders.end() ? nullptr : found->second.get();
}

void NodeWatcher::ForgetIfUnwatched(int watch)
{
    Folder* folder = FolderOf(watch);
    if (folder == nullptr || !folder->targets->IsEmpty()) {
        return;
    }
    if (folder->guarded > 0) {
        folder->ForgetNames();
        return;
    }
    ::inotify_rm_watch(fInotify.Get(), watch);
    Forget(folder);
}

void NodeWatcher::Forget(Folder* folder)
{
    SendChanges(folder);
    Unguard(folder);
    const int watch = folder->watch;
    std::erase_if(fStats, [watch](const auto& stat) { return stat.first.watch == watch; });
    {
        MutexLock lock(fMutex);
        std::erase_if(fTargets, [folder](const NodeTargets& watched) {
            return watched.targets == folder->targets;
        });
    }
    for (const auto& [other, below] : fFolders) {
        if (below->guard == watch) {
            below->guard = -1;
        }
    }
    fFolders.erase(watch);
}

void NodeWatcher::Run()
{
    for (;;) {
        if (fIsBusy) {
            Gather();
        }
        struct pollfd polled[2] = {{fInotify.Get(), POLLIN, 0}, {fWake.Get(), POLLIN, 0}};
        const int ready = ::poll(polled, 2, fAhead.empty() ? PollTimeout() : 0);
        if (ready < 0 && errno != EINTR) {
            return; // cannot happen with descriptors of our own
        }
        if (ready == 0 && fFolders.empty() && MayEnd()) {
            NodeWatchers::Get().Forget(this);
            return;
        }
        // What has happened is told before a task that was given after it is run.
        ReadEvents();
        RunTasks();
        SendDueStats();
        SendChanges();
    }
}

/// Lets a storm go on for a moment, so that much of it is told at once.
void NodeWatcher::Gather()
{
    struct pollfd wake = {fWake.Get(), POLLIN, 0};
    for (int step = 0; step < kBusySteps && ::poll(&wake, 1, kBusyMilliseconds) == 0; ++step) {
        int waiting = 0; // bytes
        if (::ioctl(fInotify.Get(), FIONREAD, &waiting) == 0 && waiting > kMuchWaiting) {
            ReadAhead(); // before the kernel's queue is full
        }
    }
}

bool NodeWatcher::MayEnd()
{
    MutexLock lock(fMutex);
    fHasEnded = fTasks.empty();
    return fHasEnded;
}

int NodeWatcher::PollTimeout() const
{
    if (fSentStats.empty()) {
        return fFolders.empty() ? kLingerMilliseconds : -1;
    }
    // To send what is due then, or to forget those that are quiet.
    const bigtime_t left = fSentStats.front().time + kStatInterval - system_time();
    return left <= 0 ? 0 : static_cast<int>(left / 1000) + 1;
}

void NodeWatcher::RunTasks()
{
    uint64 count = 0;
    [[maybe_unused]] const ssize_t read = ::read(fWake.Get(), &count, sizeof(count));
    std::vector<std::function<void()>> tasks;
    {
        MutexLock lock(fMutex);
        tasks.swap(fTasks);
    }
    for (const auto& task : tasks) {
        task();
    }
}

void NodeWatcher::SendChanges()
{
    for (const auto& [watch, folder] : fFolders) {
        SendChanges(folder.get());
    }
}

void NodeWatcher::SendChanges(Folder* folder)
{
    if (!folder->changes.IsEmpty()) {
        BMessage notice = folder->changes.Notice(folder->node);
        folder->changes.Clear();
        folder->targets->Send(notice, B_WATCH_ENTRIES);
    }
}

} // namespace kits
