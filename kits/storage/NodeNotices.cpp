#include "NodeNotices.h"

#include <AppDefs.h>
#include <Message.h>

#include <algorithm>

namespace kits {

void WatchTargets::Add(const BMessenger& messenger, uint32 flags)
{
    const int32 entryWatches = (flags & B_WATCH_ENTRIES) != 0 ? 1 : 0;
    MutexLock lock(fMutex);
    for (WatchTarget& target : fTargets) {
        if (target.messenger == messenger) {
            target.flags |= flags;
            target.entryWatches += entryWatches;
            return;
        }
    }
    fTargets.push_back({messenger, flags, entryWatches});
}

void WatchTargets::Remove(const BMessenger& messenger, Extent extent)
{
    MutexLock lock(fMutex);
    std::erase_if(fTargets, [&](WatchTarget& target) {
        if (target.messenger != messenger) {
            return false;
        }
        target.entryWatches -= extent == Extent::kOne ? 1 : target.entryWatches;
        return target.entryWatches <= 0;
    });
}

uint32 WatchTargets::FlagsOf(const BMessenger& messenger) const
{
    MutexLock lock(fMutex);
    for (const WatchTarget& target : fTargets) {
        if (target.messenger == messenger) {
            return target.flags;
        }
    }
    return 0;
}

bool WatchTargets::AnyWants(uint32 flags) const
{
    MutexLock lock(fMutex);
    return std::any_of(fTargets.begin(), fTargets.end(),
                       [flags](const WatchTarget& target) { return (target.flags & flags) != 0; });
}

bool WatchTargets::IsEmpty() const
{
    MutexLock lock(fMutex);
    return fTargets.empty();
}

void WatchTargets::Send(BMessage& message, uint32 flags, const WatchTargets* other)
{
    MutexLock lock(fMutex);
    std::erase_if(fTargets, [&](const WatchTarget& target) {
        return (target.flags & flags) != 0 &&
               (other == nullptr || (other->FlagsOf(target.messenger) & flags) == 0) &&
               target.messenger.SendMessage(&message) != B_OK;
    });
}

BMessage EntryNotice(int32 opcode, const NoticeEntry& entry)
{
    BMessage message(B_NODE_MONITOR);
    message.AddInt32("opcode", opcode);
    message.AddInt32("device", static_cast<int32>(entry.device));
    message.AddInt64("directory", static_cast<int64>(entry.directory));
    message.AddInt64("node", static_cast<int64>(entry.node));
    message.AddString("name", std::string(entry.name).c_str());
    return message;
}

BMessage MoveNotice(const NoticeEntry& entry, ino_t from, ino_t to, std::string_view fromName)
{
    BMessage message(B_NODE_MONITOR);
    message.AddInt32("opcode", B_ENTRY_MOVED);
    message.AddInt32("device", static_cast<int32>(entry.device));
    message.AddInt64("from directory", static_cast<int64>(from));
    message.AddInt64("to directory", static_cast<int64>(to));
    message.AddInt64("node", static_cast<int64>(entry.node));
    message.AddString("name", std::string(entry.name).c_str());
    if (!fromName.empty()) {
        message.AddString("from name", std::string(fromName).c_str());
    }
    return message;
}

BMessage DeviceNotice(int32 opcode, dev_t device)
{
    BMessage message(B_NODE_MONITOR);
    message.AddInt32("opcode", opcode);
    message.AddInt32("device", static_cast<int32>(device));
    if (opcode == B_DEVICE_MOUNTED) {
        message.AddInt32("new device", static_cast<int32>(device));
    }
    return message;
}

} // namespace kits
