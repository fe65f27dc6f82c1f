#pragma once

#include <SupportDefs.h>

#include <atomic>
#include <mutex>

namespace norvane {

/// Tells the thread that runs a client's call that it is to end. Thread: any where nothing is said.
class FtpStop
{
public:
    /// A call of the client, for as long as it lives; calls within it count as it.
    /// Thread: the client's.
    class Call
    {
    public:
        explicit Call(FtpStop& stop);
        ~Call();
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;

    private:
        FtpStop& fStop;
    };

    /// How soon a wait notices: none lasts longer without asking.
    static constexpr bigtime_t kSlice = 20'000;

    /// Ends the call that runs, if one does.
    void Cancel();
    /// Ends it, and all that come.
    void ShutDown() { fIsShutDown = true; }

    bool IsCancelled() const { return fIsCancelled || fIsShutDown; }
    bool IsShutDown() const { return fIsShutDown; }

private:
    std::mutex fMutex; // guards the depth, and that none is cancelled which has ended
    int fDepth = 0;
    std::atomic<bool> fIsCancelled = false;
    std::atomic<bool> fIsShutDown = false;
};

} // namespace norvane
