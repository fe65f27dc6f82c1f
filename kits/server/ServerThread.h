#pragma once

#include "ServerQueue.h"

#include "kernel/Mutex.h"
#include "kernel/WorkerThread.h"

#include <SupportDefs.h>

namespace kits {

/// The thread that the toolkit lives on, from its application object to its end.
class ServerThread
{
public:
    ServerThread() = default;
    /// Starts the thread and waits until windows can be made; once.
    /// Errors: B_ERROR when there is no display; B_NO_MORE_THREADS.
    [[nodiscard]] status_t Start();
    /// Ends the loop and waits for the thread.
    ~ServerThread();
    ServerThread(const ServerThread&) = delete;
    ServerThread& operator=(const ServerThread&) = delete;

    bool Post(std::function<void()> task) { return fQueue.Add(std::move(task)); }
    /// Runs `task` on the server's thread and waits for its end; does nothing once that has ended.
    /// Thread: any but the server's.
    void Call(const std::function<void()>& task);
    /// Whether the caller runs on a server's thread.
    static bool IsCurrent();

private:
    void Run();

    ServerQueue fQueue;
    Mutex fLock;
    Condition fStarted;
    bool fIsUp GUARDED_BY(fLock) = false;
    WorkerThread fThread;
};

} // namespace kits
