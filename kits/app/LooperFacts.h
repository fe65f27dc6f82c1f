#pragma once

#include <OS.h>
#include <SupportDefs.h>

#include <atomic>

class BLooper;
class BWindow;

namespace kits {

/// What is known of a looper beside its lock and its queue: who it is, which thread runs it, and of
/// what kind it is.
///
/// Thread: any thread.
class LooperFacts
{
public:
    LooperFacts(BLooper* looper, int32 token, int32 maker)
        : fToken(token), fMaker(maker), fLooper(looper)
    {
    }
    LooperFacts(const LooperFacts&) = delete;
    LooperFacts& operator=(const LooperFacts&) = delete;

    int32 Token() const { return fToken; }
    /// The looper; null once it is gone. Lasts while the lock is held.
    BLooper* Looper() const { return fLooper.load(std::memory_order_acquire); }
    bool IsAlive() const { return Looper() != nullptr; }
    /// The thread that runs the looper's loop; negative before there is one.
    thread_id Thread() const { return fThread.load(std::memory_order_acquire); }
    bool HasRun() const { return Thread() > 0; }

    // Kinds

    /// Says that the looper is a window, which is asked when the program is to quit.
    void MarkAsWindow(BWindow* window)
    {
        fWindow.store(window, std::memory_order_release);
        fIsWindow.store(true, std::memory_order_release);
    }
    bool IsWindow() const { return fIsWindow.load(std::memory_order_acquire); }
    BWindow* Window() const { return fWindow.load(std::memory_order_acquire); }

    // For the guards

    void SetLongRunning(bool isLongRunning) { fIsLongRunning = isLongRunning; }
    bool IsLongRunning() const { return fIsLongRunning; }
    /// Counts the LongWork objects of the looper's thread.
    void AddLongWorks(int32 change) { fLongWorks += change; }
    bool IsAtLongWork() const { return fIsLongRunning || fLongWorks > 0; }
    /// The token of the looper whose lock was held when this one was made; 0 for none.
    int32 Maker() const { return fMaker; }

protected:
    ~LooperFacts() = default;

    void NoteThread(thread_id thread) { fThread.store(thread, std::memory_order_release); }
    void NoteDeath()
    {
        fLooper.store(nullptr, std::memory_order_release);
        fWindow.store(nullptr, std::memory_order_release);
    }

private:
    const int32 fToken;
    const int32 fMaker;
    std::atomic<BLooper*> fLooper;
    std::atomic<BWindow*> fWindow{nullptr};
    std::atomic<bool> fIsWindow{false};
    std::atomic<thread_id> fThread{-1};
    std::atomic<bool> fIsLongRunning{false};
    std::atomic<int32> fLongWorks{0};
};

} // namespace kits
