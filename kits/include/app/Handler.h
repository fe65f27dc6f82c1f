#pragma once

#include <SupportDefs.h>

#include <atomic>
#include <memory>
#include <string>
#include <vector>

class BList;
class BLooper;
class BMessage;
class BMessageFilter;

namespace kits {
class HandlerAccess;
}

/// Answers messages on behalf of a looper; a message that it does not know goes on to the next
/// handler.
///
/// Thread: a handler that belongs to a looper is used with that looper locked, unless a function
/// says "any thread". A handler of no looper belongs to whoever made it. Ownership: a looper
/// borrows its handlers. One that is deleted leaves its looper by itself, and messages that still
/// wait for it are dropped.
class BHandler
{
public:
    /// Makes a handler of no looper; the name is copied.
    explicit BHandler(const char* name = nullptr);
    BHandler(const BHandler&) = delete;
    BHandler& operator=(const BHandler&) = delete;
    /// Removes the handler from its looper and deletes its filters.
    virtual ~BHandler();

    /// Handles one message. This implementation passes it to the next handler; the last one answers
    /// B_MESSAGE_NOT_UNDERSTOOD to a sender that asked for an answer.
    virtual void MessageReceived(BMessage* message);

    /// Lends the looper that the handler belongs to, null when it belongs to none.
    /// Thread: any thread; only under its lock does the answer last.
    BLooper* Looper() const { return fLooper.load(std::memory_order_acquire); }

    /// Sets the name by which a person knows the handler; null for none.
    void SetName(const char* name);
    /// Lends the name until it is set again; null when none was ever given.
    const char* Name() const;

    /// Makes `handler` the one that gets what this one does not know.
    /// Both must belong to the same looper, which is locked; null ends the chain here.
    void SetNextHandler(BHandler* handler);
    /// Lends the handler that gets what this one does not know; null at the chain's end.
    BHandler* NextHandler() const { return fNextHandler; }

    /// Appends a filter that sees the messages for this handler first. Ownership: adopts `filter`.
    virtual void AddFilter(BMessageFilter* filter);
    /// Removes `filter` and returns it to the caller; false when it was not there.
    virtual bool RemoveFilter(BMessageFilter* filter);
    /// Replaces all filters. Ownership: adopts the list and its BMessageFilters, deletes the former
    /// ones.
    virtual void SetFilterList(BList* filters);
    /// Lends the filters, null when there are none.
    BList* FilterList() const;

    /// Locks the looper that the handler belongs to, whichever that is once it is locked.
    /// Thread: any thread. False when the handler belongs to none.
    bool LockLooper();
    /// As LockLooper(), waiting at most `timeout` microseconds. Thread: any thread.
    /// Errors: B_TIMED_OUT; B_BAD_VALUE when the handler belongs to no looper.
    status_t LockLooperWithTimeout(bigtime_t timeout);
    /// Gives back one lock of that looper.
    void UnlockLooper();

private:
    friend class kits::HandlerAccess;

    const int32 fToken; // names the handler in messages; never used twice
    std::atomic<BLooper*> fLooper{nullptr};
    BHandler* fNextHandler = nullptr;
    std::unique_ptr<std::string> fName;
    std::unique_ptr<BList> fFilters;
};
