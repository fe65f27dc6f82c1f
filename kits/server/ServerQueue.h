#pragma once

#include "kernel/Mutex.h"

#include <deque>
#include <functional>
#include <memory>

class QSocketNotifier;

namespace kits {

/// The way into the server thread: tasks, run one by one in order.
///
/// Not the toolkit's own events: their locks cannot be seen by thread checkers, and they cost more.
class ServerQueue
{
public:
    ServerQueue();
    ~ServerQueue();
    ServerQueue(const ServerQueue&) = delete;
    ServerQueue& operator=(const ServerQueue&) = delete;

    /// Returns false once the queue is closed: the task will never run. Thread: any.
    bool Add(std::function<void()> task);
    /// Starts running tasks from the event loop of the calling thread.
    void Open();
    /// Runs what is waiting and takes no more.
    void Close();

private:
    void Drain();
    void Wake() const;

    int fEvent;                                 // an eventfd: readable while tasks wait
    std::unique_ptr<QSocketNotifier> fNotifier; // server thread
    Mutex fLock;
    std::deque<std::function<void()>> fTasks GUARDED_BY(fLock);
    bool fIsClosed GUARDED_BY(fLock) = false;
};

} // namespace kits
