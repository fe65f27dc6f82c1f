#pragma once

#include "app/ClipboardHooks.h"
#include "kernel/WorkerThread.h"

#include <Messenger.h>
#include <SupportDefs.h>

#include <atomic>
#include <memory>

namespace kits {

/// Sent to a text view when what it pastes has come; "paste" (int32) is ClipboardReading::Id().
constexpr uint32 kPasteArrived = '_TXP';

/// Makes a text what the middle button pastes, on desktops that have that. Any thread.
void OfferPrimary(SharedText text);

/// Asks another program for its text on a thread of its own, and tells a view when that is done.
///
/// Thread: that of the view.
class ClipboardReading
{
public:
    /// Returns null when there is no thread for it.
    static std::unique_ptr<ClipboardReading> Start(ClipboardKind kind, const BMessenger& target);
    /// Gives up what is still being read.
    ~ClipboardReading();
    ClipboardReading(const ClipboardReading&) = delete;
    ClipboardReading& operator=(const ClipboardReading&) = delete;

    int32 Id() const { return fId; }
    /// What came; called after kPasteArrived.
    ClipboardContent Take();

private:
    ClipboardReading();

    const int32 fId;
    std::atomic<bool> fIsCancelled{false};
    ClipboardContent fContent; // the thread's until it has ended
    WorkerThread fThread;      // last: it uses all of the above
};

} // namespace kits
