#pragma once

#include <Entry.h>
#include <Messenger.h>
#include <Node.h>

#include <atomic>
#include <memory>
#include <thread>

namespace norvane {

/// Measures what a folder occupies on a thread of its own and tells its owner by a message.
///
/// One at a time: starting another, or Cancel(), ends the one before. The answer is kFolderMeasured
/// with "device", "node" and "name" of the row and "bytes" (int64).
class FolderMeasure
{
public:
    FolderMeasure() = default;
    ~FolderMeasure();
    FolderMeasure(const FolderMeasure&) = delete;
    FolderMeasure& operator=(const FolderMeasure&) = delete;

    void Start(const entry_ref& folder, const node_ref& node, const BMessenger& owner);
    /// Waits for the thread, which looks at its flag at every entry.
    void Cancel();

private:
    std::thread fThread;
    std::shared_ptr<std::atomic<bool>> fIsCancelled;
};

} // namespace norvane
