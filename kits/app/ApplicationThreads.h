#pragma once

#include <SupportDefs.h>

#include "app/Guards.h"

#include <atomic>
#include <csignal>
#include <thread>

namespace kits {

/// Takes SIGINT, SIGTERM and SIGHUP and requests the program's end for each.
///
/// The signals are blocked in the thread that makes it and so in all threads made later. One that
/// was ignored when the program was started (SIGHUP under nohup) stays ignored.
class SignalThread
{
public:
    SignalThread();
    /// Gives the calling thread its former signals back.
    ~SignalThread();
    SignalThread(const SignalThread&) = delete;
    SignalThread& operator=(const SignalThread&) = delete;

private:
    void Run();

    sigset_t fAwaited;
    sigset_t fFormerMask;
    std::atomic<bool> fEnds{false};
    std::thread fThread;
};

/// The threads that an application keeps beside its own.
class ApplicationThreads
{
private:
    SignalThread fSignals; // first, so that no thread takes a signal
    Watchdog fWatchdog;
};

} // namespace kits
