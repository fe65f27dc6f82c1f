#include "NodeWatcher.h"

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
#include <unistd.h>

namespace kits {

namespace {

constexpr uint32 kFolderMask = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_MODIFY |
                               IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
constexpr uint32 kGuardMask = IN_DELETE | IN_ONLYDIR | IN_MASK_ADD;
// While much happens, events are left to the kernel for so long: of those about one file it makes
// one, and one turn here takes many. Taking each would cost a big copy a quarter of its speed.
constexpr int kBusyMilliseconds = 25;

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

NodeWatcher& NodeWatcher::Get()
{
    // Never destroyed: its thread runs to the end of the program.
    static NodeWatcher* watcher = new NodeWatcher;
    return *watcher;
}

NodeWatcher::NodeWatcher()
    : fInotify(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)),
      fWake(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)), fLastDrained(::time(nullptr))
{
}

status_t NodeWatcher::StartThread()
{
    MutexLock lock(fMutex);
    if (fHasThread) {
        return B_OK;
    }
    const status_t status = StartDetached("node watcher", [this] { Run(); });
    fHasThread = status == B_OK;
    return status;
}

status_t NodeWatcher::Call(const std::function<status_t()>& task)
{
    // Shared, because the caller may be gone before the thread has let go of it.
    const auto answer = std::make_shared<Answer>();
    {
        MutexLock lock(fMutex);
        if (!fHasThread) {
            return B_OK; // there is nothing to end
        }
        fTasks.push_back([answer, &task] { answer->Give(task()); });
    }
    const uint64 one = 1;
    [[maybe_unused]] const ssize_t written = ::write(fWake.Get(), &one, sizeof(one));
    return answer->Wait();
}

status_t NodeWatcher::Watch(const node_ref* node, uint32 flags, const BMessenger& target,
                            std::shared_ptr<const FolderListing>* listing)
{
    if (!target.IsValid() || (node == nullptr && (flags & B_WATCH_MOUNT) == 0)) {
        return B_BAD_VALUE;
    }
    if (!fInotify.IsOpen() || !fWake.IsOpen()) {
        return B_NO_MEMORY; // the limit of watching programs is reached
    }
    const status_t started = StartThread();
    if (started != B_OK) {
        return started;
    }
    return Call([&] {
        if ((flags & B_WATCH_MOUNT) != 0) {
            if (fMounts == nullptr) {
                fMounts = std::make_unique<MountTable>();
            }
            fMountTargets.Add(target, B_WATCH_MOUNT);
        }
        return node == nullptr || flags == B_WATCH_MOUNT ? status_t(B_OK)
                                                         : AddWatch(*node, flags, target, listing);
    });
}

void NodeWatcher::RemoveMountTarget(const BMessenger& target)
{
    fMountTargets.Remove(target);
    if (fMountTargets.IsEmpty()) {
        fMounts.reset();
    }
}

status_t NodeWatcher::StopWatchingMounts(const BMessenger& target)
{
    return Call([&] {
        RemoveMountTarget(target);
        return status_t(B_OK);
    });
}

status_t NodeWatcher::StopWatching(const BMessenger& target)
{
    return Call([&] {
        RemoveMountTarget(target);
        std::vector<Folder*> folders;
        for (const auto& [watch, folder] : fFolders) {
            folders.push_back(folder.get());
        }
        for (Folder* folder : folders) {
            // Ending one watch may end that of a guard on the way.
            const bool isThere = std::any_of(fFolders.begin(), fFolders.end(), [&](const auto& it) {
                return it.second.get() == folder;
            });
            if (isThere) {
                RemoveTarget(folder, target);
            }
        }
        return status_t(B_OK);
    });
}

status_t NodeWatcher::AddWatch(const node_ref& node, uint32 flags, const BMessenger& target,
                               std::shared_ptr<const FolderListing>* listing)
{
    const FolderHold hold = FolderTable::Get().Find(node.device, node.node);
    if (!hold) {
        return AddStatWatch(node, target);
    }
    if (flags == B_STOP_WATCHING) {
        for (const auto& [watch, folder] : fFolders) {
            if (folder->node == node) {
                RemoveTarget(folder.get(), target);
                break;
            }
        }
        return B_OK;
    }
    Folder* folder = nullptr;
    status_t status = AddFolder(hold, kFolderMask, &folder);
    // Names are read after the watch is there, so none is missed in between.
    if (status == B_OK && !folder->hasNames) {
        const auto read = std::make_shared<FolderListing>();
        status = ReadNames(folder, read.get());
        if (status == B_OK) {
            folder->listing = read;
            folder->hasNames = true;
            if (listing != nullptr) {
                *listing = read;
            }
        }
    }
    if (status != B_OK) {
        if (folder != nullptr) {
            ForgetIfUnwatched(folder->watch);
        }
        return status;
    }
    folder->targets.Add(target, flags);
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
    }
    *added = folder.get();
    return B_OK;
}

status_t NodeWatcher::AddStatWatch(const node_ref& node, const BMessenger& target)
{
    for (const auto& [watch, folder] : fFolders) {
        if (folder->node.device != node.device ||
            (folder->targets.FlagsOf(target) & B_WATCH_DIRECTORY) == 0) {
            continue;
        }
        if ((folder->targets.FlagsOf(target) & B_WATCH_STAT) != 0) {
            return B_OK; // all files of the folder are watched already
        }
        for (size_t i = 0; i < folder->Names().Count(); ++i) {
            if (folder->Names().NodeAt(i) == node.node) {
                folder->targets.Add(target, B_WATCH_STAT);
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

void NodeWatcher::RemoveTarget(Folder* folder, const BMessenger& target)
{
    folder->targets.Remove(target);
    ForgetIfUnwatched(folder->watch);
}

void NodeWatcher::ForgetIfUnwatched(int watch)
{
    Folder* folder = FolderOf(watch);
    if (folder == nullptr || !folder->targets.IsEmpty()) {
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
    Unguard(folder);
    const int watch = folder->watch;
    std::erase_if(fStats, [watch](const auto& stat) { return stat.first.watch == watch; });
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
            struct pollfd wake = {fWake.Get(), POLLIN, 0};
            ::poll(&wake, 1, kBusyMilliseconds);
        }
        struct pollfd polled[3] = {{fInotify.Get(), POLLIN, 0},
                                   {fWake.Get(), POLLIN, 0},
                                   {fMounts == nullptr ? -1 : fMounts->Descriptor(), POLLPRI, 0}};
        if (::poll(polled, 3, PollTimeout()) < 0 && errno != EINTR) {
            return; // cannot happen with descriptors of our own
        }
        // What has happened is told before a task that was given after it is run.
        ReadEvents();
        RunTasks();
        SendDueStats();
        if ((polled[2].revents & (POLLPRI | POLLERR)) != 0 && fMounts != nullptr) {
            MountsChanged();
        }
    }
}

int NodeWatcher::PollTimeout() const
{
    if (fSentStats.empty()) {
        return -1;
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

void NodeWatcher::MountsChanged()
{
    std::vector<dev_t> mounted;
    std::vector<dev_t> unmounted;
    fMounts->Update(&mounted, &unmounted);
    for (const dev_t device : mounted) {
        BMessage notice = DeviceNotice(B_DEVICE_MOUNTED, device);
        fMountTargets.Send(notice, B_WATCH_MOUNT);
    }
    for (const dev_t device : unmounted) {
        BMessage notice = DeviceNotice(B_DEVICE_UNMOUNTED, device);
        fMountTargets.Send(notice, B_WATCH_MOUNT);
    }
}

} // namespace kits
