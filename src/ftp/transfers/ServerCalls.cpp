#include "ftp/transfers/ServerCalls.h"

#include "fileops/engine/OperationUI.h"

#include <Autolock.h>

#include <algorithm>

namespace norvane {

namespace {

constexpr unsigned int kTimeoutMs = 60'000;
constexpr bigtime_t kGlance = 20'000;
// A server that does not let a call end in this time is left.
constexpr bigtime_t kPatienceAfterStop = 80'000;

} // namespace

ServerCalls::ServerCalls(OperationUI& ui) : fUI(ui), fClient(kTimeoutMs, &Moved, this) {}

ServerCalls::~ServerCalls()
{
    if (fThread > 0) {
        {
            BAutolock lock(fLock);
            fIsOver = true;
        }
        fHasCall.Signal();
        wait_for_thread(fThread, nullptr);
    }
}

int ServerCalls::Do(const Call& call, const Progress& progress)
{
    if (fUI.IsStopped()) {
        return kFtpCancelled;
    }
    if (!HasThread()) {
        const int result = call(fClient);
        TellProgress(progress);
        return result;
    }
    {
        BAutolock lock(fLock);
        fHasMoved = false;
        fCall = &call;
    }
    fHasCall.Signal();
    bigtime_t stopTime = 0;
    int result = 0;
    while (!AwaitEnd(&result)) {
        TellProgress(progress);
        fUI.EntriesVisited(0);
        if (!fUI.IsStopped()) {
            continue;
        }
        fIsStopped = true;
        stopTime = stopTime == 0 ? system_time() : stopTime;
        // Again each time: it does nothing when it comes between two waits of the call.
        if (system_time() - stopTime < kPatienceAfterStop) {
            fClient.Cancel();
        } else {
            fClient.ShutDown();
        }
    }
    TellProgress(progress);
    return result;
}

/// Waits for a moment; true when the call has ended.
bool ServerCalls::AwaitEnd(int* result)
{
    BAutolock lock(fLock);
    if (fCall != nullptr) {
        fHasEnded.WaitUntil(fLock, system_time() + kGlance);
    }
    if (fCall == nullptr) {
        *result = fResult;
    }
    return fCall == nullptr;
}

void ServerCalls::TellProgress(const Progress& progress)
{
    int32 percent = 0;
    int64 bytes = 0;
    {
        BAutolock lock(fLock);
        if (!fHasMoved || progress == nullptr) {
            return;
        }
        fHasMoved = false;
        percent = fPercent;
        bytes = fBytes;
    }
    progress(percent, bytes);
}

// Without a thread the calls are made here, and nobody sees them go on.
bool ServerCalls::HasThread()
{
    if (fThread == 0) {
        fThread = spawn_thread(&ThreadEntry, "server calls", B_LOW_PRIORITY, this);
        const status_t status = fThread < B_OK ? fThread : resume_thread(fThread);
        if (status != B_OK) {
            fThread = status;
        }
    }
    return fThread > 0;
}

// Its own thread

int ServerCalls::Moved(int percent, int, char*, void* data)
{
    auto* calls = static_cast<ServerCalls*>(data);
    if (percent >= 0) {
        BAutolock lock(calls->fLock);
        calls->fHasMoved = true;
        calls->fPercent = std::min(percent, 100);
        calls->fBytes = calls->fClient.BytesMoved();
    }
    return calls->fIsStopped ? 0 : 1;
}

status_t ServerCalls::ThreadEntry(void* calls)
{
    static_cast<ServerCalls*>(calls)->Run();
    return B_OK;
}

void ServerCalls::Run()
{
    for (;;) {
        const Call* call = nullptr;
        {
            BAutolock lock(fLock);
            while (fCall == nullptr && !fIsOver) {
                fHasCall.Wait(fLock);
            }
            if (fIsOver) {
                return;
            }
            call = fCall;
        }
        const int result = (*call)(fClient);
        {
            BAutolock lock(fLock);
            fResult = result;
            fCall = nullptr;
        }
        fHasEnded.Signal();
    }
}

} // namespace norvane
