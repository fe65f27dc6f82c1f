#pragma once

#include "EntryChangeList.h"
#include "FolderListing.h"
#include "FolderTable.h"
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

/// The thread that watches the folders of one volume: turns the kernel's notices into messages with
/// all their fields.
///
/// It alone looks at the volume, so that whoever waits for it waits for that volume. All data
/// belongs to it, but for the targets; others hand it tasks. It posts messages and locks no looper.
/// The thread keeps the object, and ends some seconds after the last folder was let go of: the
/// system has few inotify instances to give.
class NodeWatcher : public std::enable_shared_from_this<NodeWatcher>
{
public:
    NodeWatcher();

    /// See NodeWatchers::Watch(). None when the thread has ended: another watcher is to take it.
    [[nodiscard]] std::optional<status_t> Watch(const node_ref& node, uint32 flags,
                                                const BMessenger& target,
                                                std::shared_ptr<const FolderListing>* listing);
    /// See NodeWatchers::StopWatching().
    void StopWatching(const BMessenger& target, const node_ref* node);

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
        std::shared_ptr<WatchTargets> targets = std::make_shared<WatchTargets>();
        EntryChangeList changes; // to be sent at the turn's end
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

    /// A rename that took another entry's name, which may be half of an exchange.
    struct LastMove
    {
        int fromWatch = -1;
        std::string from;
        int toWatch = -1;
        std::string to;
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

    /// The targets of a folder, for who ends watches without waiting.
    struct NodeTargets
    {
        node_ref node;
        std::shared_ptr<WatchTargets> targets;
    };

    // A node that changes all the time is told of so often.
    static constexpr bigtime_t kStatInterval = 100'000;

    // Any thread.
    [[nodiscard]] status_t StartThread() REQUIRES(fMutex);
    void Wake();

    // The watcher's thread.
    void Run();
    void Gather();
    bool MayEnd();
    void RunTasks();
    void SendChanges();
    static void SendChanges(Folder* folder);
    void ForgetUnwatched();
    int PollTimeout() const;

    [[nodiscard]] status_t AddWatch(const node_ref& node, uint32 flags, const BMessenger& target,
                                    std::shared_ptr<const FolderListing>* listing);
    [[nodiscard]] status_t AddFolder(const FolderHold& hold, uint32 mask, Folder** added);
    [[nodiscard]] status_t AddStatWatch(const node_ref& node, const BMessenger& target);
    [[nodiscard]] status_t ReadNames(Folder* folder, FolderListing* listing) const;
    void Guard(Folder* folder);
    void Unguard(Folder* folder);
    void ForgetIfUnwatched(int watch);
    void Forget(Folder* folder);
    Folder* FolderOf(int watch) const;

    void ReadEvents();
    size_t ReadMore(size_t have);
    void Handle(std::vector<Event>* events);
    void HandleOne(std::vector<Event>* events, size_t index);
    void HandleMove(std::vector<Event>* events, size_t index, const LastMove& before);
    Event* PartnerOf(std::vector<Event>* events, size_t index);
    static void TakeEvents(const char* bytes, size_t size, std::vector<Event>* events);
    bool GoesLater(const std::vector<Event>& events, size_t index, const Event& name);
    bool TakeWayBack(std::vector<Event>* events, size_t index);
    void Created(Folder* folder, std::string_view name);
    void Removed(Folder* folder, std::string_view name);
    void Moved(Folder* from, std::string_view fromName, Folder* to, std::string_view toName);
    void TellMove(Folder* from, std::string_view fromName, Folder* to, std::string_view toName,
                  ino_t node);
    void Exchanged(Folder* from, std::string_view fromName, Folder* to, std::string_view toName);
    void MovedIn(Folder* to, std::string_view name);
    void MovedAway(Folder* from, std::string_view name);
    ino_t TakeName(Folder* folder, std::string_view name);
    static void SetName(Folder* folder, std::string_view name, ino_t node,
                        const BEntryRecord& record);
    enum class Replacement : uint8 { kFollows, kIsGone };
    void ReplaceExisting(Folder* folder, std::string_view name, ino_t byNode,
                         Replacement replacement = Replacement::kFollows);
    void Changed(Folder* folder, std::string_view name);
    void SelfChanged(Folder* folder, uint32 mask);
    void SelfGone(Folder* folder);
    void CheckGuarded(const Folder* parent, std::string_view name);
    static bool IsGone(const Folder& folder);
    void AwaitCalm();
    size_t TakeAhead();
    void ReadAhead();
    void RereadAll();
    enum class Since : uint8 { kLastEvent, kOverflow };
    void Reread(Folder* folder, const FolderListing& listing, Since since);
    void SendDueStats();
    void NameDueStats();
    void SendStat(const NodeKey& key, StatState* state, bigtime_t now);
    BEntryRecord RecordOf(const Folder* folder, std::string_view name) const;
    static void Note(Folder* folder, BEntryChange::Kind kind, std::string_view name,
                     std::string_view fromName = {}, const BEntryRecord& record = {});

    UniqueFd fInotify;
    UniqueFd fWake;
    std::unordered_map<int, std::unique_ptr<Folder>> fFolders; // by watch
    std::unordered_map<NodeKey, StatState, HashNodeKey> fStats;
    std::vector<NodeKey> fNewStats;  // of these, those that are due for the first time
    std::deque<SentStat> fSentStats; // and those that were sent, in the order of time
    // Of the events at work, by cookie: the second halves of renames.
    std::unordered_map<uint32, size_t> fMovedTo;
    // What was made within the events at work: who hears of that looks after all of them.
    std::unordered_set<NodeKey, HashNodeKey> fJustCreated;
    std::vector<char> fBytes; // the kernel's events as they were read; kept, as it costs to clear
    std::vector<char> fAhead; // events that were read while others are at work; the next ones
    bool fHasOverflown = false;
    LastMove fLastMove;        // by the event before
    bool fHasNameless = false; // of fStats, some that are due
    bool fIsBusy = false;      // the last events were many, or of contents that changed
    time_t fLastDrained = 0;   // wall clock: all changes before it have been told

    Mutex fMutex;
    std::vector<std::function<void()>> fTasks GUARDED_BY(fMutex);
    std::vector<NodeTargets> fTargets GUARDED_BY(fMutex); // of all folders that anybody watches
    bool fHasThread GUARDED_BY(fMutex) = false;
    bool fHasEnded GUARDED_BY(fMutex) = false;
};

} // namespace kits
