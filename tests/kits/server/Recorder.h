#pragma once

#include <Looper.h>
#include <Message.h>

#include <testing/Driver.h>

#include <condition_variable>
#include <mutex>
#include <string>
#include <vector>

/// A looper that keeps what it is sent, and can be kept busy.
class Recorder : public BLooper
{
public:
    explicit Recorder(const char* name) : BLooper(name) { Run(); }

    /// Keeps the looper's thread in a message until Release(). Thread: the test's.
    void Occupy()
    {
        PostMessage(kOccupy);
        std::unique_lock<std::mutex> lock(fLock);
        fChanged.wait(lock, [this] { return fIsOccupied; });
    }
    void Release()
    {
        {
            std::lock_guard<std::mutex> lock(fLock);
            fIsOccupied = false;
        }
        fChanged.notify_all();
    }

    /// The messages with that code, so far.
    std::vector<BMessage> Messages(uint32 what) const
    {
        std::lock_guard<std::mutex> lock(fLock);
        std::vector<BMessage> found;
        for (const BMessage& message : fMessages) {
            if (message.what == what) {
                found.push_back(message);
            }
        }
        return found;
    }
    size_t Count(uint32 what) const { return Messages(what).size(); }
    bool WaitForCount(uint32 what, size_t count) const
    {
        return kits::testing::WaitFor([&] { return Count(what) >= count; });
    }
    /// What was typed, in order.
    std::string Typed() const
    {
        std::string typed;
        for (const BMessage& message : Messages(B_KEY_DOWN)) {
            const char* bytes = "";
            message.FindString("bytes", &bytes);
            typed += bytes;
        }
        return typed;
    }
    void Forget()
    {
        std::lock_guard<std::mutex> lock(fLock);
        fMessages.clear();
    }

    // BLooper
    void DispatchMessage(BMessage* message, BHandler* target) override
    {
        std::unique_lock<std::mutex> lock(fLock);
        if (message->what == kOccupy) {
            fIsOccupied = true;
            fChanged.notify_all();
            fChanged.wait(lock, [this] { return !fIsOccupied; });
            return;
        }
        fMessages.push_back(*message);
        lock.unlock();
        if (message->what != B_QUIT_REQUESTED) {
            BLooper::DispatchMessage(message, target);
        }
    }

private:
    static constexpr uint32 kOccupy = 'Occu';

    mutable std::mutex fLock;
    std::condition_variable fChanged;
    std::vector<BMessage> fMessages; // guarded by fLock
    bool fIsOccupied = false;        // guarded by fLock
};
