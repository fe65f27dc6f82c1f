#pragma once

#include <SupportDefs.h>

#include "app/Watchdog.h"
#include "kernel/WorkerThread.h"

#include <csignal>

namespace kits {

/// Takes SIGINT, SIGTERM and SIGHUP and requests the program's end for each.
///
/// The signals are blocked in the thread that makes it and so in all threads made later. One that
/// was ignored when the program was started (SIGHUP under nohup) stays ignored. Without a thread to
/// take them they end the program at once, as they do any other.
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

    sigset_t fFormerMask;
    int fSignals = -1; // a signalfd
    int fEnd = -1;     // an eventfd: readable when the thread is to end
    WorkerThread fThread;
};

/// The threads that an application keeps beside its own.
class ApplicationThreads
{
private:
    SignalThread fSignals; // first, so that no thread takes a signal
    Watchdog fWatchdog;
};

} // namespace kits
