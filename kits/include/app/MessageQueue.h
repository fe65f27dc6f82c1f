#pragma once

#include <SupportDefs.h>
#include <ThreadAnnotations.h>

#include <condition_variable>
#include <list>
#include <memory>
#include <mutex>
#include <vector>

class BMessage;

namespace kits {
class LooperCore;
}

/// The messages that wait for a looper, first in, first out.
///
/// Thread: any thread. Every call takes the queue's own lock, which is never held while a message
/// is handled; the looper's lock is not involved.
class BMessageQueue
{
public:
    /// Makes an empty queue.
    BMessageQueue();
    BMessageQueue(const BMessageQueue&) = delete;
    BMessageQueue& operator=(const BMessageQueue&) = delete;
    /// Deletes the messages that still wait.
    ~BMessageQueue();

    /// Appends a message. Once the queue's looper is gone the message is deleted at once: nobody
    /// would take it, and its sender may wait for an answer. Ownership: adopts `message`.
    void AddMessage(BMessage* message);
    /// Takes out and deletes `message` when it waits here; otherwise nothing happens.
    void RemoveMessage(BMessage* message);

    /// How many messages wait.
    int32 CountMessages() const;
    bool IsEmpty() const;
    /// Lends the message at `index` (0 is the next one), null beyond the end. Keep the queue locked
    /// for as long as the message is looked at.
    BMessage* FindMessage(int32 index) const;
    /// Lends the `index`-th message of those with that `what`.
    BMessage* FindMessage(uint32 what, int32 index) const;
    /// Takes out the next message and returns it to the caller; null when there is none. Never
    /// waits.
    BMessage* NextMessage();

    /// Holds others off between two calls; nests.
    bool Lock() ACQUIRE(fMutex);
    /// Gives back one lock.
    void Unlock() RELEASE(fMutex);

private:
    friend class kits::LooperCore;
    using Messages = std::list<std::unique_ptr<BMessage>>;

    // Nests, because whoever walks the queue holds it around other calls. No BLocker: two threads
    // meet here for every message, and this costs half.
    class CAPABILITY("mutex") Mutex
    {
    public:
        bool Lock() ACQUIRE()
        {
            fNative.lock();
            return true;
        }
        void Unlock() RELEASE() { fNative.unlock(); }
        // False when `deadline` has come.
        bool WaitFor(std::condition_variable_any& condition, bigtime_t deadline) REQUIRES(this);

    private:
        std::recursive_mutex fNative;
    };

    // These splice all that is handed over; false, and nothing is taken, when the queue is closed.
    bool Append(Messages& one);
    bool AppendFoldingMouseMove(Messages& one);
    bool Prepend(Messages& some);
    // Takes no more from now on, and deletes what waits.
    void Close();
    Messages TakeKeyMessages();
    std::unique_ptr<BMessage> Take();
    // Waits until a message is there, Wake() was called or `deadline` has passed.
    std::unique_ptr<BMessage> TakeWithin(bigtime_t deadline);
    void Wake();

    void NoteArrival(Messages::iterator added) REQUIRES(fMutex);
    void FindFoldable() REQUIRES(fMutex);
    void TakeFirst(Messages& one) REQUIRES(fMutex);

    mutable Mutex fMutex;
    std::condition_variable_any fArrival;
    Messages fMessages GUARDED_BY(fMutex);
    // The mouse move that a newer one may replace; else end().
    Messages::iterator fFoldable GUARDED_BY(fMutex);
    bool fIsReceiverWaiting GUARDED_BY(fMutex) = false;
    bool fWasWoken GUARDED_BY(fMutex) = false;
    bool fIsClosed GUARDED_BY(fMutex) = false;
};
