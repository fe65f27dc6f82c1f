#include "ServerQueue.h"

#include <QSocketNotifier>

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <utility>

namespace kits {

ServerQueue::ServerQueue() : fEvent(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

ServerQueue::~ServerQueue()
{
    fNotifier.reset();
    close(fEvent);
}

bool ServerQueue::Add(std::function<void()> task)
{
    bool wasEmpty = false;
    {
        MutexLock lock(fLock);
        if (fIsClosed) {
            return false;
        }
        wasEmpty = fTasks.empty();
        fTasks.push_back(std::move(task));
    }
    if (wasEmpty) {
        Wake();
    }
    return true;
}

void ServerQueue::Wake() const
{
    const uint64_t one = 1;
    while (write(fEvent, &one, sizeof(one)) < 0 && errno == EINTR) {
    }
}

void ServerQueue::Open()
{
    fNotifier = std::make_unique<QSocketNotifier>(fEvent, QSocketNotifier::Read);
    QObject::connect(fNotifier.get(), &QSocketNotifier::activated, fNotifier.get(),
                     [this] { Drain(); });
}

void ServerQueue::Close()
{
    fNotifier.reset();
    Drain();
    {
        MutexLock lock(fLock);
        fIsClosed = true;
    }
    Drain();
}

void ServerQueue::Drain()
{
    uint64_t count = 0;
    while (read(fEvent, &count, sizeof(count)) < 0 && errno == EINTR) {
    }
    // One at a time, never the whole queue at once: a task that runs a nested loop would otherwise
    // let what comes later overtake the rest.
    for (;;) {
        std::function<void()> task;
        {
            MutexLock lock(fLock);
            if (fTasks.empty()) {
                return;
            }
            task = std::move(fTasks.front());
            fTasks.pop_front();
        }
        task();
    }
}

} // namespace kits
