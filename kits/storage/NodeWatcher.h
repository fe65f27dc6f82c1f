#pragma once

#include "FolderListing.h"
#include "FolderTable.h"
#include "MountTable.h"
#include "NameTable.h"
#include "NodeNotices.h"
#include "kernel/Mutex.h"

#include <Node.h>

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace kits {

/// The one thread behind watch_node(): turns the kernel's notices into messages with all their
/// fields.
///
/// All data belongs to that thread; others hand it tasks and wait for their end, which is safe with
/// any looper locked: the thread only posts, it locks no looper. It lives as long as the program.
class NodeWatcher
{
public:
    static NodeWatcher& Get();

    /// Errors: B_NO_MORE_THREADS when there is no thread to watch; those of the kernel's limits.
    /// `listing` takes the names as they were read for the watch, for a caller who would read them
    /// next; null when the folder was watched before and they were not read again.
    [[nodiscard]] status_t Watch(const node_ref* node, uint32 flags, const BMessenger& target,
                                 std::shared_ptr<const FolderListing>* listing = nullptr);
    status_t StopWatching(const BMessenger& target);
    /// Ends the notices about mounts alone.
    status_t StopWatchingMounts(const BMessenger& target);

private:
    /// A watched folder; the kernel knows it by `watch`, and the same folder always by the same.
    struct Folder
    {
        int watch = -1;
        node_ref node;
        FolderHold hold;
        // A table is made of the listing when the first notice comes: most folders are left
        // without one.
        std::shared_ptr<const FolderListing> listing;
        NameTable table;
        WatchTargets targets;
        bool hasNames = false;
        // Where it lies itself, for notices about it.
        ino_t parent = 0;
        std::string leaf;
        // The parent's watch, which tells when this folder goes: while anyone has it open the
        // kernel does not.
        int guard = -1;
        int32 guarded = 0; // how many folders below have their guard here

        NameTable& Names();
        void ForgetNames();
    };

    /// A rename that took a known entry's name, which may be half of an exchange.
    struct Displaced
    {
        int fromWatch = -1;
        std::string from;
        int toWatch = -1;
        std::string to;
        ino_t node = 0; // of the entry that had the name; 0: there was none
    };

    struct Event
    {
        int watch;
        uint32 mask;
        uint32 cookie;
        std::string_view name;
    };

    /// A node of a watched folder.
    struct NodeKey
    {
        int watch;
        ino_t node;
        bool operator==(const NodeKey&) const = default;
    };
    struct HashNodeKey
    {
        size_t operator()(const NodeKey& key) const
        {
            return (key.node ^ (static_cast<size_t>(key.watch) << 32)) * 0x9E3779B97F4A7C15ull;
        }
    };

    /// When the last stat notice of a node went out, and whether one is due.
    struct StatState
    {
        bigtime_t lastSent = 0; // 0: there was none yet
        bool isDue = false;
        std::string name;
    };
    struct SentStat
    {
        bigtime_t time;
        NodeKey key;
    };

    // A node that changes all the time is told of so often.
    static constexpr bigtime_t kStatInterval = 100'000;

    NodeWatcher();

    // Any thread.
    [[nodiscard]] status_t StartThread();
    [[nodiscard]] status_t Call(const std::function<status_t()>& task);

    // The watcher's thread.
    void RemoveMountTarget(const BMessenger& target);
    void Run();
    void RunTasks();
    int PollTimeout() const;

    [[nodiscard]] status_t AddWatch(const node_ref& node, uint32 flags, const BMessenger& target,
                                    std::shared_ptr<const FolderListing>* listing);
    [[nodiscard]] status_t AddFolder(const FolderHold& hold, uint32 mask, Folder** added);
    [[nodiscard]] status_t AddStatWatch(const node_ref& node, const BMessenger& target);
    [[nodiscard]] status_t ReadNames(Folder* folder, FolderListing* listing) const;
    void Guard(Folder* folder);
    void Unguard(Folder* folder);
    void RemoveTarget(Folder* folder, const BMessenger& target);
    void ForgetIfUnwatched(int watch);
    void Forget(Folder* folder);
    Folder* FolderOf(int watch) const;

    void ReadEvents();
    size_t ReadMore(size_t have);
    void Handle(std::vector<Event>* events);
    void HandleOne(std::vector<Event>* events, size_t index);
    void Created(Folder* folder, std::string_view name);
    void Removed(Folder* folder, std::string_view name);
    void Moved(Folder* from, std::string_view fromName, Folder* to, std::string_view toName);
    bool IsExchange(const Displaced& before, const Displaced& now) const;
    void NoteDisplaced(const Displaced& pair, Folder* to);
    void CreatedByExchange(Folder* folder, std::string_view name, ino_t node);
    void MovedIn(Folder* to, std::string_view name);
    void MovedAway(Folder* from, std::string_view name);
    void ReplaceExisting(Folder* folder, std::string_view name, ino_t byNode);
    void Changed(Folder* folder, std::string_view name);
    void SelfChanged(Folder* folder, uint32 mask);
    void SelfGone(Folder* folder);
    void CheckGuarded(const Folder* parent, std::string_view name);
    void RereadAll();
    void Reread(Folder* folder);
    void SendDueStats();
    void SendStat(const NodeKey& key, StatState* state, bigtime_t now);
    void MountsChanged();
    std::optional<struct stat> StatOf(const Folder* folder, std::string_view name) const;

    UniqueFd fInotify;
    UniqueFd fWake;
    std::unordered_map<int, std::unique_ptr<Folder>> fFolders; // by watch
    std::unordered_map<NodeKey, StatState, HashNodeKey> fStats;
    std::vector<NodeKey> fNewStats;  // of these, those that are due for the first time
    std::deque<SentStat> fSentStats; // and those that were sent, in the order of time
    // What was made within the events at work: who hears of that looks after all of them.
    std::unordered_set<NodeKey, HashNodeKey> fJustCreated;
    WatchTargets fMountTargets;
    std::unique_ptr<MountTable> fMounts; // null while nobody asks
    std::vector<char> fBytes; // the kernel's events as they were read; kept, as it costs to clear
    bool fHasOverflown = false;
    Displaced fDisplaced;    // by the event before
    bool fIsBusy = false;    // the last events were many, or of contents that changed
    time_t fLastDrained = 0; // wall clock: all changes before it have been told

    Mutex fMutex;
    std::vector<std::function<void()>> fTasks GUARDED_BY(fMutex);
    bool fHasThread GUARDED_BY(fMutex) = false;
};

} // namespace kits
