#include <MessageQueue.h>

#include <AppDefs.h>
#include <Autolock.h>
#include <Message.h>
#include <OS.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace {

// Input that a mouse move must not be carried over: an older move would then be told after it.
bool EndsFolding(const BMessage& message)
{
    switch (message.what) {
    case B_MOUSE_DOWN:
    case B_MOUSE_UP:
    case B_MOUSE_WHEEL_CHANGED:
    case B_KEY_DOWN:
    case B_KEY_UP:
    case B_UNMAPPED_KEY_DOWN:
    case B_UNMAPPED_KEY_UP:
    case B_MODIFIERS_CHANGED:
        return true;
    default:
        return false;
    }
}

int32 WindowOf(const BMessage& message)
{
    int32 window = 0;
    message.FindInt32("window", &window);
    return window;
}

} // namespace

bool BMessageQueue::Mutex::WaitFor(std::condition_variable_any& condition, bigtime_t deadline)
{
    // Longer than anyone waits; and the sum with the clock must not overflow.
    constexpr bigtime_t kLongestWait = 3600LL * 1000000;
    std::unique_lock<std::recursive_mutex> lock(fNative, std::adopt_lock);
    bool isInTime = true;
    if (deadline == B_INFINITE_TIMEOUT) {
        condition.wait(lock);
    } else {
        const bigtime_t left = deadline - system_time();
        isInTime = left > 0;
        if (isInTime) {
            condition.wait_for(lock, std::chrono::microseconds(std::min(left, kLongestWait)));
        }
    }
    lock.release(); // the caller's lock goes on
    return isInTime;
}

BMessageQueue::BMessageQueue() : fFoldable(fMessages.end()) {}

BMessageQueue::~BMessageQueue() = default;

void BMessageQueue::AddMessage(BMessage* message)
{
    if (message != nullptr) {
        Messages one;
        one.emplace_back(message); // allocated before the lock is taken
        Append(one);
    }
}

void BMessageQueue::RemoveMessage(BMessage* message)
{
    Messages removed; // deleted after the lock is given back
    BAutolock lock(fMutex);
    const auto found = std::find_if(fMessages.begin(), fMessages.end(),
                                    [&](const auto& waiting) { return waiting.get() == message; });
    if (found != fMessages.end()) {
        removed.splice(removed.end(), fMessages, found);
        FindFoldable();
    }
}

int32 BMessageQueue::CountMessages() const
{
    BAutolock lock(fMutex);
    return static_cast<int32>(fMessages.size());
}

bool BMessageQueue::IsEmpty() const
{
    BAutolock lock(fMutex);
    return fMessages.empty();
}

BMessage* BMessageQueue::FindMessage(int32 index) const
{
    BAutolock lock(fMutex);
    if (index < 0 || static_cast<size_t>(index) >= fMessages.size()) {
        return nullptr;
    }
    return std::next(fMessages.begin(), index)->get();
}

BMessage* BMessageQueue::FindMessage(uint32 what, int32 index) const
{
    BAutolock lock(fMutex);
    for (const auto& message : fMessages) {
        if (message->what == what && index-- == 0) {
            return message.get();
        }
    }
    return nullptr;
}

BMessage* BMessageQueue::NextMessage()
{
    return Take().release();
}

bool BMessageQueue::Lock()
{
    fMutex.Lock();
    return true;
}

void BMessageQueue::Unlock()
{
    fMutex.Unlock();
}

bool BMessageQueue::Append(Messages& one)
{
    bool wakes = false;
    {
        BAutolock lock(fMutex);
        if (fIsClosed) {
            return false;
        }
        const auto added = one.begin();
        fMessages.splice(fMessages.end(), one);
        NoteArrival(added);
        wakes = std::exchange(fIsReceiverWaiting, false);
    }
    if (wakes) {
        fArrival.notify_one(); // a receiver that is awake looks by itself
    }
    return true;
}

bool BMessageQueue::AppendFoldingMouseMove(Messages& one)
{
    BAutolock lock(fMutex);
    if (fFoldable != fMessages.end() && WindowOf(**fFoldable) == WindowOf(*one.front())) {
        fFoldable->swap(one.front()); // the older one is deleted by the caller
        return true;
    }
    return Append(one);
}

bool BMessageQueue::Prepend(Messages& some)
{
    bool wakes = false;
    {
        BAutolock lock(fMutex);
        if (fIsClosed) {
            return false;
        }
        fMessages.splice(fMessages.begin(), some);
        wakes = std::exchange(fIsReceiverWaiting, false);
    }
    if (wakes) {
        fArrival.notify_one();
    }
    return true;
}

void BMessageQueue::Close()
{
    Messages dropped; // deleted after the lock is given back: their ends tell their senders
    BAutolock lock(fMutex);
    fIsClosed = true;
    dropped.swap(fMessages);
    fFoldable = fMessages.end();
}

BMessageQueue::Messages BMessageQueue::TakeKeyMessages()
{
    Messages taken;
    BAutolock lock(fMutex);
    for (auto message = fMessages.begin(); message != fMessages.end();) {
        const auto next = std::next(message);
        if ((*message)->what == B_KEY_DOWN) {
            taken.splice(taken.end(), fMessages, message);
        }
        message = next;
    }
    FindFoldable();
    return taken;
}

std::unique_ptr<BMessage> BMessageQueue::Take()
{
    Messages one;
    {
        BAutolock lock(fMutex);
        TakeFirst(one);
    }
    return one.empty() ? nullptr : std::move(one.front());
}

std::unique_ptr<BMessage> BMessageQueue::TakeWithin(bigtime_t deadline)
{
    Messages one;
    {
        BAutolock lock(fMutex);
        do {
            fIsReceiverWaiting = fMessages.empty() && !fWasWoken;
        } while (fIsReceiverWaiting && fMutex.WaitFor(fArrival, deadline));
        fIsReceiverWaiting = false;
        fWasWoken = false;
        TakeFirst(one);
    }
    return one.empty() ? nullptr : std::move(one.front());
}

void BMessageQueue::Wake()
{
    {
        BAutolock lock(fMutex);
        fWasWoken = true;
    }
    fArrival.notify_one();
}

void BMessageQueue::NoteArrival(Messages::iterator added)
{
    if ((*added)->what == B_MOUSE_MOVED) {
        fFoldable = added;
    } else if (EndsFolding(**added)) {
        fFoldable = fMessages.end();
    }
}

void BMessageQueue::FindFoldable()
{
    fFoldable = fMessages.end();
    for (auto message = fMessages.begin(); message != fMessages.end(); ++message) {
        NoteArrival(message);
    }
}

void BMessageQueue::TakeFirst(Messages& one)
{
    if (fMessages.empty()) {
        return;
    }
    if (fFoldable == fMessages.begin()) {
        fFoldable = fMessages.end();
    }
    one.splice(one.end(), fMessages, fMessages.begin());
}
