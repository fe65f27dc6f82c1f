#pragma once

#include "ftp/client/clsFTP.h"

#include <Condition.h>
#include <Locker.h>
#include <OS.h>
#include <SupportDefs.h>

#include <atomic>
#include <functional>

namespace norvane {

class OperationUI;

/// The calls of a client, made on a thread of their own while the operation goes on showing that it
/// is alive, and ended soon after the person asked to stop.
///
/// Thread: the operation's.
class ServerCalls
{
public:
    using Call = std::function<int(clsFTP&)>;
    /// Told how much of a file has moved, on the operation's thread.
    using Progress = std::function<void(int32 percent, int64 bytes)>;

    /// Ownership: borrows `ui` for its own life.
    explicit ServerCalls(OperationUI& ui);
    ~ServerCalls();
    ServerCalls(const ServerCalls&) = delete;
    ServerCalls& operator=(const ServerCalls&) = delete;

    /// Returns what the call returns; kFtpCancelled, perhaps without the call, once the person
    /// asked to stop. What the call captures is not touched afterwards.
    int Do(const Call& call, const Progress& progress = nullptr);

    /// Between the calls, this thread's alone.
    clsFTP& Client() { return fClient; }

private:
    static int Moved(int percent, int bytes, char* text, void* calls);
    static status_t ThreadEntry(void* calls);
    void Run();
    bool HasThread();
    bool AwaitEnd(int* result);
    void TellProgress(const Progress& progress);

    OperationUI& fUI;
    thread_id fThread = 0; // above 0 once it was needed; an error when there was none to be had
    std::atomic<bool> fIsStopped{false};

    BLocker fLock{"server calls"};
    BCondition fHasCall;
    BCondition fHasEnded;
    const Call* fCall GUARDED_BY(fLock) = nullptr; // until it has ended
    int fResult GUARDED_BY(fLock) = 0;
    bool fIsOver GUARDED_BY(fLock) = false;
    bool fHasMoved GUARDED_BY(fLock) = false;
    int32 fPercent GUARDED_BY(fLock) = 0;
    int64 fBytes GUARDED_BY(fLock) = 0;

    clsFTP fClient; // the thread's while there is a call
};

} // namespace norvane
