// The kernel's notices: what they mean for the names that are known, and which messages they make.

#include "FolderListing.h"
#include "NodeWatcher.h"
#include "ReadRecord.h"

#include <Message.h>
#include <OS.h>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace kits {

namespace {

// So often what waits in the kernel is taken while others are worked through.
constexpr size_t kReadAheadEvery = 256;

} // namespace

void NodeWatcher::Handle(std::vector<Event>* events)
{
    fMovedTo.clear();
    for (size_t i = 0; i < events->size(); ++i) {
        if (((*events)[i].mask & IN_MOVED_TO) != 0) {
            fMovedTo[(*events)[i].cookie] = i;
        }
    }
    for (size_t i = 0; i < events->size(); ++i) {
        HandleOne(events, i);
        if (i % kReadAheadEvery == kReadAheadEvery - 1) {
            ReadAhead();
        }
    }
}

void NodeWatcher::HandleOne(std::vector<Event>* events, size_t index)
{
    const Event event = (*events)[index];
    const LastMove before = event.watch >= 0 ? std::exchange(fLastMove, {}) : fLastMove;
    if ((event.mask & IN_Q_OVERFLOW) != 0) {
        fHasOverflown = true;
        return;
    }
    // Of a watch that was ended, or done with; the kernel still sends what was queued.
    Folder* folder = FolderOf(event.watch);
    if (folder == nullptr) {
        return;
    }
    if (event.name.empty()) {
        SelfChanged(folder, event.mask);
        return;
    }
    if ((event.mask & IN_DELETE) != 0) {
        CheckGuarded(folder, event.name);
        folder = FolderOf(event.watch);
    }
    if (folder == nullptr || !folder->hasNames) {
        return;
    }
    if ((event.mask & IN_CREATE) != 0) {
        Created(folder, event.name);
    } else if ((event.mask & IN_DELETE) != 0) {
        Removed(folder, event.name);
    } else if ((event.mask & IN_MOVED_FROM) != 0) {
        HandleMove(events, index, before);
    } else if ((event.mask & IN_MOVED_TO) != 0) {
        MovedIn(folder, event.name);
    } else if ((event.mask & (IN_MODIFY | IN_ATTRIB)) != 0) {
        Changed(folder, event.name);
    }
}

/// The other half of a rename that went out of a folder; null when it ended where nobody watches.
NodeWatcher::Event* NodeWatcher::PartnerOf(std::vector<Event>* events, size_t index)
{
    const auto found = fMovedTo.find((*events)[index].cookie);
    if (found == fMovedTo.end() || found->second < index) {
        return nullptr;
    }
    Event* partner = &(*events)[found->second];
    const Folder* to = FolderOf(partner->watch);
    return to != nullptr && to->hasNames ? partner : nullptr;
}

void NodeWatcher::HandleMove(std::vector<Event>* events, size_t index, const LastMove& before)
{
    const Event event = (*events)[index];
    Folder* from = FolderOf(event.watch);
    Event* partner = PartnerOf(events, index);
    if (partner == nullptr) {
        MovedAway(from, event.name);
        return;
    }
    const Event to = *partner;
    const bool isExchange = TakeWayBack(events, index);
    partner->watch = -1; // done with
    if (isExchange) {
        Exchanged(from, event.name, FolderOf(to.watch), to.name);
        return;
    }
    ino_t replaced = 0;
    const bool replaces = FolderOf(to.watch)->Names().Find(to.name, &replaced);
    Moved(from, event.name, FolderOf(to.watch), to.name);
    // The way back of an exchange, of which the way there was told as a rename: both are there.
    const bool isWayBack = before.fromWatch == to.watch && before.from == to.name &&
                           before.toWatch == event.watch && before.to == event.name;
    if (isWayBack && RecordOf(from, event.name).status != B_ENTRY_NOT_FOUND) {
        Created(from, event.name);
    } else if (replaces) {
        fLastMove = {event.watch, std::string(event.name), to.watch, std::string(to.name)};
    }
}

/// Whether a name that is gone by now is told to go, by the events from that place on or by newer
/// ones.
bool NodeWatcher::GoesLater(const std::vector<Event>& events, size_t index, const Event& name)
{
    const auto goes = [&](const Event& event) {
        return event.watch == name.watch && event.name == name.name &&
               (event.mask & (IN_DELETE | IN_MOVED_FROM)) != 0;
    };
    if (std::any_of(events.begin() + static_cast<ptrdiff_t>(index), events.end(), goes)) {
        return true;
    }
    // It is told by now: the kernel tells before anyone can see that it is gone.
    ReadAhead();
    std::vector<Event> ahead;
    TakeEvents(fAhead.data(), fAhead.size(), &ahead);
    return std::any_of(ahead.begin(), ahead.end(), goes);
}

/// Two entries that exchange their names are told as two renames, there and back, one right behind
/// the other. Of what was renamed over another and back again, nothing would be left at the other
/// name. Takes the second one out.
bool NodeWatcher::TakeWayBack(std::vector<Event>* events, size_t index)
{
    if (index + 3 >= events->size()) {
        return false;
    }
    const Event& from = (*events)[index];
    const Event& to = (*events)[index + 1];
    Event& back = (*events)[index + 2];
    Event& end = (*events)[index + 3];
    const auto isHalf = [](const Event& event, uint32 half, uint32 cookie) {
        return (event.mask & half) != 0 && event.cookie == cookie;
    };
    if (!isHalf(to, IN_MOVED_TO, from.cookie) || !isHalf(back, IN_MOVED_FROM, back.cookie) ||
        !isHalf(end, IN_MOVED_TO, back.cookie) || back.watch != to.watch || back.name != to.name ||
        end.watch != from.watch || end.name != from.name) {
        return false;
    }
    Folder* target = FolderOf(to.watch);
    ino_t node = 0;
    if (!target->Names().Find(to.name, &node) ||
        (RecordOf(target, to.name).status == B_ENTRY_NOT_FOUND &&
         !GoesLater(*events, index + 4, to))) {
        return false;
    }
    back.watch = -1;
    end.watch = -1;
    return true;
}

BEntryRecord NodeWatcher::RecordOf(const Folder* folder, std::string_view name) const
{
    OpenFolder open;
    const status_t status = FolderTable::Get().Open(folder->hold, &open);
    if (status != B_OK) {
        BEntryRecord none;
        none.status = status;
        return none;
    }
    return ReadRecord(open->Get(), std::string(name).c_str());
}

void NodeWatcher::Note(Folder* folder, BEntryChange::Kind kind, std::string_view name,
                       std::string_view fromName, const BEntryRecord& record)
{
    if (folder->targets->AnyWants(B_WATCH_ENTRIES)) {
        folder->changes.Add(kind, name, fromName, record);
    }
}

/// Takes a name out of those known. The node that had it; 0 when nobody saw it, as it went before
/// it was looked at, or came after the folder was read and before the watch knew.
ino_t NodeWatcher::TakeName(Folder* folder, std::string_view name)
{
    ino_t node = 0;
    folder->Names().Remove(name, &node);
    const auto stat = fStats.find({folder->watch, node});
    if (stat != fStats.end() && stat->second.isDue && stat->second.name == name) {
        stat->second.name.clear(); // the node may have another name here
        fHasNameless = true;
    }
    return node;
}

/// Notes the node of a name: that which a look found, or the one that had it when it happened.
void NodeWatcher::SetName(Folder* folder, std::string_view name, ino_t node,
                          const BEntryRecord& record)
{
    folder->Names().Set(name, record.status == B_OK ? record.node : node);
}

/// Of nodes that are due to be told of, and lost the name that was to be told: finds another one in
/// their folder.
void NodeWatcher::NameDueStats()
{
    if (!std::exchange(fHasNameless, false)) {
        return;
    }
    for (const auto& [watch, folder] : fFolders) {
        const NameTable& names = folder->Names();
        for (size_t i = 0; folder->hasNames && i < names.Count(); ++i) {
            const auto stat = fStats.find({watch, names.NodeAt(i)});
            if (stat != fStats.end() && stat->second.isDue && stat->second.name.empty()) {
                stat->second.name = names.NameAt(i);
            }
        }
    }
    std::erase_if(fStats,
                  [](const auto& stat) { return stat.second.isDue && stat.second.name.empty(); });
}

void NodeWatcher::Created(Folder* folder, std::string_view name)
{
    const BEntryRecord record = RecordOf(folder, name);
    folder->Names().Set(name, record.node);
    Note(folder, BEntryChange::Kind::kCreated, name, {}, record);
    if (record.status != B_OK) {
        return; // gone again; its removal is not told either
    }
    if (record.links == 1) { // who has it by another name looks at nothing
        fJustCreated.insert({folder->watch, record.node});
    }
    if (folder->targets->AnyWants(B_WATCH_DIRECTORY)) {
        BMessage notice = EntryNotice(B_ENTRY_CREATED,
                                      {folder->node.device, folder->node.node, record.node, name});
        folder->targets->Send(notice, B_WATCH_DIRECTORY);
    }
}

void NodeWatcher::Removed(Folder* folder, std::string_view name)
{
    const ino_t node = TakeName(folder, name);
    Note(folder, BEntryChange::Kind::kRemoved, name);
    if (node != 0 && folder->targets->AnyWants(B_WATCH_DIRECTORY)) {
        BMessage notice =
            EntryNotice(B_ENTRY_REMOVED, {folder->node.device, folder->node.node, node, name});
        folder->targets->Send(notice, B_WATCH_DIRECTORY);
    }
}

void NodeWatcher::ReplaceExisting(Folder* folder, std::string_view name, ino_t byNode,
                                  Replacement replacement)
{
    ino_t old = 0;
    if (!folder->Names().Find(name, &old) || old == byNode) {
        return;
    }
    TakeName(folder, name);
    if (old == 0 || !folder->targets->AnyWants(B_WATCH_DIRECTORY)) {
        return;
    }
    BMessage notice =
        EntryNotice(B_ENTRY_REMOVED, {folder->node.device, folder->node.node, old, name});
    if (replacement == Replacement::kFollows) {
        notice.AddBool("replaced", true);
    }
    folder->targets->Send(notice, B_WATCH_DIRECTORY);
}

void NodeWatcher::Moved(Folder* from, std::string_view fromName, Folder* to,
                        std::string_view toName)
{
    const BEntryRecord record = RecordOf(to, toName);
    ino_t node = TakeName(from, fromName);
    const bool wasKnown = node != 0;
    node = wasKnown ? node : record.node;
    ino_t replaced = 0;
    const bool replaces = to->Names().Find(toName, &replaced) && replaced != 0;
    ReplaceExisting(to, toName, node);
    SetName(to, toName, node, record);
    if (from == to) {
        Note(to, BEntryChange::Kind::kRenamed, toName, fromName, record);
    } else {
        Note(from, BEntryChange::Kind::kRemoved, fromName);
        Note(to, BEntryChange::Kind::kMovedIn, toName, {}, record);
    }
    if (node == 0) {
        return; // nobody ever saw it
    }
    // An entry that was renamed before anyone heard of it is a new one, unless it takes a listed
    // one's place.
    if (from == to && !wasKnown && !replaces) {
        BMessage created =
            EntryNotice(B_ENTRY_CREATED, {to->node.device, to->node.node, node, toName});
        to->targets->Send(created, B_WATCH_DIRECTORY);
        return;
    }
    TellMove(from, fromName, to, toName, node);
}

void NodeWatcher::TellMove(Folder* from, std::string_view fromName, Folder* to,
                           std::string_view toName, ino_t node)
{
    if (!to->targets->AnyWants(B_WATCH_DIRECTORY) && !from->targets->AnyWants(B_WATCH_DIRECTORY)) {
        return;
    }
    BMessage notice = MoveNotice({to->node.device, to->node.node, node, toName}, from->node.node,
                                 to->node.node, fromName);
    to->targets->Send(notice, B_WATCH_DIRECTORY);
    if (from != to) {
        // Who watches both folders hears of it once.
        from->targets->Send(notice, B_WATCH_DIRECTORY, to->targets.get());
    }
}

void NodeWatcher::Exchanged(Folder* from, std::string_view fromName, Folder* to,
                            std::string_view toName)
{
    const ino_t fromNode = TakeName(from, fromName);
    ino_t toNode = 0;
    to->Names().Find(toName, &toNode);
    ReplaceExisting(to, toName, fromNode);
    const BEntryRecord there = RecordOf(to, toName);
    const BEntryRecord here = RecordOf(from, fromName);
    SetName(to, toName, fromNode, there);
    SetName(from, fromName, toNode, here);
    Note(to, BEntryChange::Kind::kExchanged, toName, {}, there);
    Note(from, BEntryChange::Kind::kExchanged, fromName, {}, here);
    TellMove(from, fromName, to, toName, fromNode);
    BMessage notice =
        EntryNotice(B_ENTRY_CREATED, {from->node.device, from->node.node, toNode, fromName});
    from->targets->Send(notice, B_WATCH_DIRECTORY);
}

void NodeWatcher::MovedIn(Folder* to, std::string_view name)
{
    const BEntryRecord record = RecordOf(to, name);
    Note(to, BEntryChange::Kind::kMovedIn, name, {}, record);
    // What was moved on or removed at once is not told; what was here before it is gone all the
    // same.
    const bool isThere = record.status == B_OK;
    ReplaceExisting(to, name, record.node, isThere ? Replacement::kFollows : Replacement::kIsGone);
    to->Names().Set(name, record.node);
    if (isThere && to->targets->AnyWants(B_WATCH_DIRECTORY)) {
        BMessage notice =
            MoveNotice({to->node.device, to->node.node, record.node, name}, 0, to->node.node, {});
        to->targets->Send(notice, B_WATCH_DIRECTORY);
    }
}

void NodeWatcher::MovedAway(Folder* from, std::string_view name)
{
    const ino_t node = TakeName(from, name);
    Note(from, BEntryChange::Kind::kRemoved, name);
    if (node != 0 && from->targets->AnyWants(B_WATCH_DIRECTORY)) {
        BMessage notice =
            MoveNotice({from->node.device, from->node.node, node, name}, from->node.node, 0, name);
        from->targets->Send(notice, B_WATCH_DIRECTORY);
    }
}

void NodeWatcher::Changed(Folder* folder, std::string_view name)
{
    ino_t node = 0;
    if (!folder->targets->AnyWants(B_WATCH_STAT | B_WATCH_ENTRIES) ||
        !folder->Names().Find(name, &node) || node == 0) {
        return;
    }
    const NodeKey key{folder->watch, node};
    if (fJustCreated.count(key) > 0) {
        return;
    }
    // Gathered by node here and sent once per node, after all that was read has been worked
    // through.
    const auto [place, isNew] = fStats.try_emplace(key);
    place->second.isDue = true;
    place->second.name = name;
    if (isNew) {
        fNewStats.push_back(key);
    }
}

void NodeWatcher::SendDueStats()
{
    NameDueStats();
    const bigtime_t now = system_time();
    for (const NodeKey& key : std::exchange(fNewStats, {})) {
        const auto found = fStats.find(key);
        if (found != fStats.end() && found->second.lastSent == 0) {
            SendStat(key, &found->second, now);
        }
    }
    while (!fSentStats.empty() && now - fSentStats.front().time >= kStatInterval) {
        const SentStat sent = fSentStats.front();
        fSentStats.pop_front();
        const auto found = fStats.find(sent.key);
        if (found == fStats.end() || found->second.lastSent != sent.time) {
            continue; // gone meanwhile, or another one
        }
        if (found->second.isDue) {
            SendStat(sent.key, &found->second, now);
        } else {
            fStats.erase(found); // quiet for long enough to start anew
        }
    }
}

void NodeWatcher::SendStat(const NodeKey& key, StatState* state, bigtime_t now)
{
    state->isDue = false;
    state->lastSent = now;
    fSentStats.push_back({now, key});
    Folder* folder = FolderOf(key.watch);
    if (folder == nullptr) {
        return;
    }
    if (folder->targets->AnyWants(B_WATCH_ENTRIES)) {
        Note(folder, BEntryChange::Kind::kChanged, state->name, {}, RecordOf(folder, state->name));
    }
    if (folder->targets->AnyWants(B_WATCH_STAT)) {
        BMessage notice = EntryNotice(
            B_STAT_CHANGED, {folder->node.device, folder->node.node, key.node, state->name});
        folder->targets->Send(notice, B_WATCH_STAT);
    }
}

void NodeWatcher::SelfChanged(Folder* folder, uint32 mask)
{
    const int watch = folder->watch;
    if ((mask & (IN_DELETE_SELF | IN_UNMOUNT)) != 0) {
        SelfGone(folder);
    } else if ((mask & IN_IGNORED) != 0) {
        Forget(folder);
    } else if ((mask & IN_MOVE_SELF) != 0) {
        const ino_t from = folder->parent;
        Unguard(folder);
        Guard(folder);
        BMessage notice =
            MoveNotice({folder->node.device, folder->parent, folder->node.node, folder->leaf}, from,
                       folder->parent, {});
        folder->targets->Send(notice, B_WATCH_NAME);
    } else if ((mask & IN_ATTRIB) != 0) {
        BMessage notice = EntryNotice(
            B_STAT_CHANGED, {folder->node.device, folder->parent, folder->node.node, folder->leaf});
        folder->targets->Send(notice, B_WATCH_STAT);
    }
    ForgetIfUnwatched(watch);
}

void NodeWatcher::SelfGone(Folder* folder)
{
    SendChanges(folder); // what went before it
    BMessage notice = EntryNotice(
        B_ENTRY_REMOVED, {folder->node.device, folder->parent, folder->node.node, folder->leaf});
    folder->targets->Send(notice, B_WATCH_NAME);
    ::inotify_rm_watch(fInotify.Get(), folder->watch);
    Forget(folder);
}

/// Whether nothing links the folder any more.
bool NodeWatcher::IsGone(const Folder& folder)
{
    OpenFolder open;
    struct stat st;
    return FolderTable::Get().Open(folder.hold, &open) != B_OK ||
           sys::Stat(open->Get(), &st) != B_OK || st.st_nlink == 0;
}

void NodeWatcher::CheckGuarded(const Folder* parent, std::string_view name)
{
    if (parent->guarded == 0) {
        return;
    }
    std::vector<Folder*> gone;
    for (const auto& [watch, folder] : fFolders) {
        if (folder->guard != parent->watch || folder->leaf != name) {
            continue;
        }
        // Another folder of that name may be there by now.
        if (IsGone(*folder)) {
            gone.push_back(folder.get());
        }
    }
    for (Folder* folder : gone) {
        SelfGone(folder);
    }
}

} // namespace kits
