#include <MessageQueue.h>

#include <AppDefs.h>
#include <Autolock.h>
#include <Message.h>

#include <algorithm>
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
    BAutolock lock(fLocker);
    const auto found = std::find_if(fMessages.begin(), fMessages.end(),
                                    [&](const auto& waiting) { return waiting.get() == message; });
    if (found != fMessages.end()) {
        removed.splice(removed.end(), fMessages, found);
        FindFoldable();
    }
}

int32 BMessageQueue::CountMessages() const
{
    BAutolock lock(fLocker);
    return static_cast<int32>(fMessages.size());
}

bool BMessageQueue::IsEmpty() const
{
    BAutolock lock(fLocker);
    return fMessages.empty();
}

BMessage* BMessageQueue::FindMessage(int32 index) const
{
    BAutolock lock(fLocker);
    if (index < 0 || static_cast<size_t>(index) >= fMessages.size()) {
        return nullptr;
    }
    return std::next(fMessages.begin(), index)->get();
}

BMessage* BMessageQueue::FindMessage(uint32 what, int32 index) const
{
    BAutolock lock(fLocker);
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
    fLocker.Lock();
    return true;
}

void BMessageQueue::Unlock()
{
    fLocker.Unlock();
}

bool BMessageQueue::Append(Messages& one)
{
    bool wakes = false;
    {
        BAutolock lock(fLocker);
        if (fIsClosed) {
            return false;
        }
        const auto added = one.begin();
        fMessages.splice(fMessages.end(), one);
        NoteArrival(added);
        wakes = std::exchange(fIsReceiverWaiting, false);
    }
    if (wakes) {
        fArrival.Signal(); // a receiver that is awake looks by itself
    }
    return true;
}

bool BMessageQueue::AppendFoldingMouseMove(Messages& one)
{
    BAutolock lock(fLocker);
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
        BAutolock lock(fLocker);
        if (fIsClosed) {
            return false;
        }
        fMessages.splice(fMessages.begin(), some);
        wakes = std::exchange(fIsReceiverWaiting, false);
    }
    if (wakes) {
        fArrival.Signal();
    }
    return true;
}

void BMessageQueue::Close()
{
    Messages dropped; // deleted after the lock is given back: their ends tell their senders
    BAutolock lock(fLocker);
    fIsClosed = true;
    dropped.swap(fMessages);
    fFoldable = fMessages.end();
}

BMessageQueue::Messages BMessageQueue::TakeKeyMessages()
{
    Messages taken;
    BAutolock lock(fLocker);
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
        BAutolock lock(fLocker);
        TakeFirst(one);
    }
    return one.empty() ? nullptr : std::move(one.front());
}

std::unique_ptr<BMessage> BMessageQueue::TakeWithin(bigtime_t deadline)
{
    Messages one;
    {
        BAutolock lock(fLocker);
        do {
            fIsReceiverWaiting = fMessages.empty() && !fWasWoken;
        } while (fIsReceiverWaiting && fArrival.WaitUntil(fLocker, deadline));
        fIsReceiverWaiting = false;
        fWasWoken = false;
        TakeFirst(one);
    }
    return one.empty() ? nullptr : std::move(one.front());
}

void BMessageQueue::Wake()
{
    {
        BAutolock lock(fLocker);
        fWasWoken = true;
    }
    fArrival.Signal();
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
