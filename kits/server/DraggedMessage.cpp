#include "DraggedMessage.h"

#include "kernel/Mutex.h"

#include <Message.h>

#include <utility>

namespace kits {

namespace {

struct Current
{
    Mutex lock;
    std::shared_ptr<const BMessage> message GUARDED_BY(lock);
    int32 number GUARDED_BY(lock) = 0;
};

Current& Dragged()
{
    static Current* const current = new Current; // never destroyed: windows may ask to the end
    return *current;
}

} // namespace

std::shared_ptr<const BMessage> DraggedMessage::Find(int32 number)
{
    Current& current = Dragged();
    const MutexLock lock(current.lock);
    return number == current.number ? current.message : nullptr;
}

int32 DraggedMessage::Set(std::shared_ptr<const BMessage> message)
{
    Current& current = Dragged();
    const MutexLock lock(current.lock);
    current.message.swap(message); // the one before goes after the lock
    return ++current.number;
}

void DraggedMessage::End()
{
    Current& current = Dragged();
    std::shared_ptr<const BMessage> ended;
    const MutexLock lock(current.lock);
    if (current.message != nullptr) {
        ended = std::make_shared<BMessage>(current.message->what);
        current.message.swap(ended); // with all its fields it could be large
    }
}

} // namespace kits
