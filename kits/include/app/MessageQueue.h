#pragma once

#include <Condition.h>
#include <Locker.h>
#include <SupportDefs.h>

#include <list>
#include <memory>
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
    bool Lock() ACQUIRE(fLocker);
    /// Gives back one lock.
    void Unlock() RELEASE(fLocker);

private:
    friend class kits::LooperCore;
    using Messages = std::list<std::unique_ptr<BMessage>>;

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

    void NoteArrival(Messages::iterator added) REQUIRES(fLocker);
    void FindFoldable() REQUIRES(fLocker);
    void TakeFirst(Messages& one) REQUIRES(fLocker);

    mutable BLocker fLocker; // nests, because whoever walks the queue holds it around other calls
    BCondition fArrival;
    Messages fMessages GUARDED_BY(fLocker);
    // The mouse move that a newer one may replace; else end().
    Messages::iterator fFoldable GUARDED_BY(fLocker);
    bool fIsReceiverWaiting GUARDED_BY(fLocker) = false;
    bool fWasWoken GUARDED_BY(fLocker) = false;
    bool fIsClosed GUARDED_BY(fLocker) = false;
};
