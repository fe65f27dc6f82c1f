#include "MountWatcher.h"

#include "kernel/WorkerThread.h"

#include <Message.h>
#include <NodeMonitorCodes.h>
#include <OS.h>

#include <cerrno>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <vector>

namespace kits {

namespace {

constexpr bigtime_t kPatience = 300'000;

} // namespace

MountWatcher& MountWatcher::Get()
{
    // Never destroyed: its thread runs to the end of the program.
    static auto* watcher = new MountWatcher;
    return *watcher;
}

MountWatcher::MountWatcher() : fWake(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {}

status_t MountWatcher::Watch(const BMessenger& target)
{
    if (!fWake.IsOpen()) {
        return B_NO_MEMORY;
    }
    MutexLock lock(fMutex);
    if (!fHasThread) {
        const status_t status = StartDetached("mount watcher", [this] { Run(); });
        if (status != B_OK) {
            return status;
        }
        fHasThread = true;
    }
    fTargets->Add(target, B_WATCH_MOUNT);
    const uint64 one = 1;
    [[maybe_unused]] const ssize_t written = ::write(fWake.Get(), &one, sizeof(one));
    const bigtime_t end = system_time() + kPatience;
    while (!fHasRead && fReading.WaitUntil(fMutex, end)) {
    }
    return B_OK;
}

void MountWatcher::StopWatching(const BMessenger& target)
{
    fTargets->Remove(target);
}

void MountWatcher::Run()
{
    for (;;) {
        struct pollfd polled[2] = {{fWake.Get(), POLLIN, 0},
                                   {fMounts == nullptr ? -1 : fMounts->Descriptor(), POLLPRI, 0}};
        if (::poll(polled, 2, -1) < 0 && errno != EINTR) {
            return; // cannot happen with descriptors of our own
        }
        uint64 count = 0;
        [[maybe_unused]] const ssize_t read = ::read(fWake.Get(), &count, sizeof(count));
        if (fMounts == nullptr) {
            fMounts = std::make_unique<MountTable>();
            MutexLock lock(fMutex);
            fHasRead = true;
            fReading.Broadcast();
        } else if ((polled[1].revents & (POLLPRI | POLLERR)) != 0) {
            Tell();
        }
    }
}

void MountWatcher::Tell()
{
    std::vector<dev_t> mounted;
    std::vector<dev_t> unmounted;
    fMounts->Update(&mounted, &unmounted);
    for (const dev_t device : mounted) {
        BMessage notice = DeviceNotice(B_DEVICE_MOUNTED, device);
        fTargets->Send(notice, B_WATCH_MOUNT);
    }
    for (const dev_t device : unmounted) {
        BMessage notice = DeviceNotice(B_DEVICE_UNMOUNTED, device);
        fTargets->Send(notice, B_WATCH_MOUNT);
    }
}

} // namespace kits
