#pragma once

#include "kernel/Mutex.h"

#include <Messenger.h>
#include <NodeMonitorCodes.h>

#include <string>
#include <string_view>
#include <vector>

namespace kits {

/// Who watches something, and what of it.
struct WatchTarget
{
    BMessenger messenger;
    uint32 flags = 0;
    int32 entryWatches = 0; // how often B_WATCH_ENTRIES was begun
};

/// The watchers of one thing. Those that are gone are forgotten when a notice does not reach them.
///
/// Thread: any; once Remove() returned nothing is sent to that one. Held while a message is posted,
/// which waits for nobody.
class WatchTargets
{
public:
    void Add(const BMessenger& messenger, uint32 flags);
    /// One of several B_WATCH_ENTRIES, or all there is.
    enum class Extent : uint8 { kOne, kAll };
    void Remove(const BMessenger& messenger, Extent extent = Extent::kAll);
    uint32 FlagsOf(const BMessenger& messenger) const;
    bool AnyWants(uint32 flags) const;
    bool IsEmpty() const;

    /// Sends a copy to every target that has one of `flags`; `other`, which may be null, sends it
    /// to its own that do: to these not.
    void Send(BMessage& message, uint32 flags, const WatchTargets* other = nullptr);

private:
    mutable Mutex fMutex;
    std::vector<WatchTarget> fTargets GUARDED_BY(fMutex);
};

/// What a notice speaks of.
struct NoticeEntry
{
    dev_t device = 0;
    ino_t directory = 0;
    ino_t node = 0;
    std::string_view name;
};

BMessage EntryNotice(int32 opcode, const NoticeEntry& entry);
/// `from` and `to`: folders, 0 when not known.
BMessage MoveNotice(const NoticeEntry& entry, ino_t from, ino_t to, std::string_view fromName);
BMessage DeviceNotice(int32 opcode, dev_t device);

} // namespace kits
