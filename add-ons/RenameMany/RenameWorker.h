#pragma once

#include "RenameMany/RenamePreview.h"
#include "RenameMany/RenameRun.h"

#include <Condition.h>
#include <EntryRef.h>
#include <Locker.h>
#include <Messenger.h>
#include <OS.h>

#include <atomic>
#include <memory>
#include <optional>
#include <vector>

namespace rename_many {

/// Sent to the worker's target when there is something new to ask it for.
constexpr uint32 kRenameNews = 'RnNw';

/// Looks at the selected entries, makes previews and renames, on a thread of its own.
///
/// It keeps what the entries are called now. Of several previews that were asked for only the last
/// one is made. Thread: any, but one makes and ends it.
class RenameWorker
{
public:
    /// What has been done, or could not be.
    struct Report
    {
        enum class Kind : uint8 {
            kRenamed,
            kUndone,
            kRefused, // the last preview says why
        };

        Kind kind = Kind::kRenamed;
        Outcome outcome;
        std::shared_ptr<const Entries> entries; // as they were called before; never null
    };

    /// The entries of the refs, in their order; news go to `target`.
    RenameWorker(const std::vector<entry_ref>& refs, const BMessenger& target);
    /// As End().
    ~RenameWorker();
    RenameWorker(const RenameWorker&) = delete;
    RenameWorker& operator=(const RenameWorker&) = delete;

    /// Begins to look at the entries. Errors: those of starting a thread.
    status_t Start();
    /// Asks for a preview by these rules, after a new look at the disk if `looks`.
    void AskForPreview(const Rules& rules, bool looks);
    /// Asks to rename by these rules. The disk is looked at before: when something is wrong then,
    /// nothing is renamed, and the report says kRefused.
    void AskToRename(const Rules& rules);
    /// Asks to take back what the last renaming did.
    void AskToUndo();
    /// Stops renaming or undoing; what was done is taken back.
    void Stop() { fStops = true; }

    /// Ends it, after what is being renamed; nothing that is asked for later is done.
    void End();

    /// The newest preview; null before the first.
    std::shared_ptr<const Preview> LastPreview() const;
    /// What there is to tell, once.
    std::optional<Report> TakeReport();
    /// Whether there is nothing being done or asked for.
    bool IsIdle() const;
    /// How many renamings are done of those that go on.
    size_t CountDone() const { return fCount; }

private:
    enum class Task : uint8 { kNone, kPreview, kRename, kUndo, kEnd };

    static status_t Run(void* self);
    void Loop();
    Task NextTask();
    void Ask(Task task, const Rules* rules, bool looks);
    void Look();
    void MakeNewPreview();
    void DoRename();
    void DoUndo();
    void Publish(std::shared_ptr<const Preview> preview);
    void Finish(Report::Kind kind, Outcome outcome);
    void Tell();

    // The thread's own
    std::vector<entry_ref> fFolders; // an entry of each folder
    std::vector<FolderNames> fNames; // of the same folders
    std::shared_ptr<const Entries> fEntries;
    Rules fRules;
    Steps fDone; // what Undo takes back
    bool fHasLooked = false;

    // Anybody's
    const BMessenger fTarget;
    thread_id fThread = -1;
    std::atomic<bool> fIsOutdated = false; // a preview that is being made
    std::atomic<bool> fStops = false;
    std::atomic<size_t> fCount = 0;

    mutable BLocker fLock;
    BCondition fArrival;
    Task fTask GUARDED_BY(fLock) = Task::kNone;
    bool fLooks GUARDED_BY(fLock) = false;
    bool fIsBusy GUARDED_BY(fLock) = false;
    Rules fAskedRules GUARDED_BY(fLock);
    std::shared_ptr<const Preview> fPreview GUARDED_BY(fLock);
    std::optional<Report> fReport GUARDED_BY(fLock);
};

} // namespace rename_many
