#pragma once

#include "ServerQueue.h"

#include <SupportDefs.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace kits {

/// The thread that the toolkit lives on, from its application object to its end.
class ServerThread
{
public:
    ServerThread();
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
    std::mutex fLock;
    std::condition_variable fStarted;
    bool fIsUp = false; // guarded by fLock
    std::thread fThread;
};

} // namespace kits
