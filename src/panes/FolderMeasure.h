#pragma once

#include <Entry.h>
#include <Messenger.h>
#include <Node.h>
#include <OS.h>

#include <atomic>
#include <memory>

namespace norvane {

/// Measures what a folder occupies on a thread of its own and tells its owner by a message.
///
/// One at a time: starting another, or Cancel(), ends the one before. The answer is kFolderMeasured
/// with "device", "node" and "name" of the row and "bytes" (int64).
class FolderMeasure
{
public:
    FolderMeasure() = default;
    ~FolderMeasure() { Cancel(); }
    FolderMeasure(const FolderMeasure&) = delete;
    FolderMeasure& operator=(const FolderMeasure&) = delete;

    /// Errors: B_NO_MORE_THREADS when the system has none left. Nothing is told then: to measure
    /// here would keep the window from its keys for as long as the folder is large.
    status_t Start(const entry_ref& folder, const node_ref& node, const BMessenger& owner);
    /// Nothing more is told. The thread ends by itself, at the next entry it looks at, or when the
    /// disk answers; nobody waits for it.
    void Cancel();

private:
    /// What the thread is given.
    struct Order
    {
        entry_ref folder;
        node_ref node;
        BMessenger owner;
        std::shared_ptr<std::atomic<bool>> isCancelled;
    };

    static status_t Measure(void* order);

    std::shared_ptr<std::atomic<bool>> fIsCancelled; // of the newest; null before the first
};

} // namespace norvane
