// The kernel's notices: what they mean for the names that are known, and which messages they make.

#include "FolderListing.h"
#include "NodeWatcher.h"

#include <Message.h>
#include <OS.h>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace kits {

namespace {

constexpr size_t kReadBytes = size_t{64} * 1024;
// So much is gathered before it is worked through; what comes after waits in the kernel.
constexpr size_t kGatheredBytes = size_t{1024} * 1024;
// How long the second half of a rename may be behind the first.
constexpr int kPartnerMilliseconds = 5;
// So many at once, and more are about to come.
constexpr size_t kManyEvents = 32;

bool HasLoneFrom(const char* bytes, size_t size)
{
    // The halves of a rename stand together, so only the last event can have lost its partner.
    const inotify_event* last = nullptr;
    for (size_t at = 0; at < size;) {
        last = reinterpret_cast<const inotify_event*>(bytes + at);
        at += sizeof(inotify_event) + last->len;
    }
    return last != nullptr && (last->mask & IN_MOVED_FROM) != 0;
}

} // namespace

size_t NodeWatcher::ReadMore(size_t have)
{
    if (fBytes.size() < have + kReadBytes) {
        fBytes.resize(have + kReadBytes);
    }
    const ssize_t length = ::read(fInotify.Get(), fBytes.data() + have, kReadBytes);
    return length > 0 ? static_cast<size_t>(length) : 0;
}

void NodeWatcher::ReadEvents()
{
    size_t size = 0;
    const time_t started = ::time(nullptr);
    while (size < kGatheredBytes) {
        const size_t more = ReadMore(size);
        if (more == 0) {
            break;
        }
        size += more;
    }
    if (HasLoneFrom(fBytes.data(), size)) {
        struct pollfd polled = {fInotify.Get(), POLLIN, 0};
        ::poll(&polled, 1, kPartnerMilliseconds);
        size += ReadMore(size);
    }
    std::vector<Event> events;
    bool areWrites = size > 0;
    for (size_t at = 0; at < size;) {
        const auto* raw = reinterpret_cast<const inotify_event*>(fBytes.data() + at);
        const char* name = fBytes.data() + at + sizeof(inotify_event);
        events.push_back({raw->wd, raw->mask, raw->cookie,
                          raw->len > 0 ? std::string_view(name) : std::string_view()});
        at += sizeof(inotify_event) + raw->len;
        areWrites = areWrites && raw->mask == IN_MODIFY;
    }
    fIsBusy = areWrites || events.size() >= kManyEvents;
    Handle(&events);
    if (std::exchange(fHasOverflown, false)) {
        RereadAll();
    }
    fJustCreated.clear();
    fLastDrained = started;
}

void NodeWatcher::Handle(std::vector<Event>* events)
{
    for (size_t i = 0; i < events->size(); ++i) {
        HandleOne(events, i);
    }
}

void NodeWatcher::HandleOne(std::vector<Event>* events, size_t index)
{
    const Event event = (*events)[index];
    const Displaced before = event.watch >= 0 ? std::exchange(fDisplaced, {}) : fDisplaced;
    if ((event.mask & IN_Q_OVERFLOW) != 0) {
        fHasOverflown = true;
        return;
    }
    // Of a watch that was ended; the kernel still sends what was queued.
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
        const auto partner =
            std::find_if(events->begin() + static_cast<ptrdiff_t>(index) + 1, events->end(),
                         [&](const Event& e) {
                             return (e.mask & IN_MOVED_TO) != 0 && e.cookie == event.cookie;
                         });
        Folder* to = partner == events->end() ? nullptr : FolderOf(partner->watch);
        if (to != nullptr && to->hasNames) {
            partner->watch = -1; // done with
            const Displaced pair{folder->watch, std::string(event.name), to->watch,
                                 std::string(partner->name), 0};
            if (IsExchange(before, pair)) {
                CreatedByExchange(to, partner->name, before.node);
            } else {
                NoteDisplaced(pair, to);
                Moved(folder, event.name, to, partner->name);
            }
        } else {
            MovedAway(folder, event.name);
        }
    } else if ((event.mask & IN_MOVED_TO) != 0) {
        MovedIn(folder, event.name);
    } else if ((event.mask & (IN_MODIFY | IN_ATTRIB)) != 0) {
        Changed(folder, event.name);
    }
}

std::optional<struct stat> NodeWatcher::StatOf(const Folder* folder, std::string_view name) const
{
    OpenFolder open;
    struct stat st;
    if (FolderTable::Get().Open(folder->hold, &open) != B_OK ||
        sys::StatAt(open->Get(), std::string(name).c_str(), &st) != B_OK) {
        return std::nullopt;
    }
    return st;
}

void NodeWatcher::Created(Folder* folder, std::string_view name)
{
    const auto st = StatOf(folder, name);
    if (!st) {
        return; // gone again; its removal is not told either
    }
    folder->Names().Set(name, st->st_ino);
    if (st->st_nlink == 1) { // who has it by another name looks at nothing
        fJustCreated.insert({folder->watch, st->st_ino});
    }
    BMessage notice =
        EntryNotice(B_ENTRY_CREATED, {st->st_dev, folder->node.node, st->st_ino, name});
    folder->targets.Send(notice, B_WATCH_DIRECTORY);
}

void NodeWatcher::Removed(Folder* folder, std::string_view name)
{
    ino_t node = 0;
    if (!folder->Names().Remove(name, &node)) {
        return;
    }
    fStats.erase({folder->watch, node});
    BMessage notice =
        EntryNotice(B_ENTRY_REMOVED, {folder->node.device, folder->node.node, node, name});
    folder->targets.Send(notice, B_WATCH_DIRECTORY);
}

void NodeWatcher::ReplaceExisting(Folder* folder, std::string_view name, ino_t byNode)
{
    ino_t old = 0;
    if (!folder->Names().Find(name, &old) || old == byNode) {
        return;
    }
    folder->Names().Remove(name, &old);
    fStats.erase({folder->watch, old});
    BMessage notice =
        EntryNotice(B_ENTRY_REMOVED, {folder->node.device, folder->node.node, old, name});
    notice.AddBool("replaced", true);
    folder->targets.Send(notice, B_WATCH_DIRECTORY);
}

void NodeWatcher::Moved(Folder* from, std::string_view fromName, Folder* to,
                        std::string_view toName)
{
    ino_t node = 0;
    const bool wasKnown = from->Names().Remove(fromName, &node);
    const auto st = StatOf(to, toName);
    if (!wasKnown) {
        if (!st) {
            return;
        }
        node = st->st_ino;
    }
    fStats.erase({from->watch, node});
    ino_t replaced = 0;
    const bool replaces = to->Names().Find(toName, &replaced);
    ReplaceExisting(to, toName, node);
    to->Names().Set(toName, node);
    const NoticeEntry entry{to->node.device, to->node.node, node, toName};
    // An entry that was renamed before anyone heard of it is a new one, unless it takes a listed
    // one's place.
    if (from == to && !wasKnown && !replaces) {
        BMessage created = EntryNotice(B_ENTRY_CREATED, entry);
        to->targets.Send(created, B_WATCH_DIRECTORY);
        return;
    }
    BMessage notice = MoveNotice(entry, from->node.node, to->node.node, fromName);
    to->targets.Send(notice, B_WATCH_DIRECTORY);
    if (from != to) {
        // Who watches both folders hears of it once.
        WatchTargets others;
        for (const WatchTarget& target : from->targets.Targets()) {
            if ((to->targets.FlagsOf(target.messenger) & B_WATCH_DIRECTORY) == 0) {
                others.Add(target.messenger, target.flags);
            }
        }
        others.Send(notice, B_WATCH_DIRECTORY);
    }
}

/// Two entries that exchange their names are told as two renames, there and back. Of what was
/// renamed over another and back again, nothing would be left at the other name.
bool NodeWatcher::IsExchange(const Displaced& before, const Displaced& now) const
{
    return before.node != 0 && before.fromWatch == now.toWatch && before.toWatch == now.fromWatch &&
           before.from == now.to && before.to == now.from &&
           StatOf(FolderOf(now.fromWatch), now.from);
}

void NodeWatcher::NoteDisplaced(const Displaced& pair, Folder* to)
{
    ino_t node = 0;
    if (to->Names().Find(pair.to, &node)) {
        fDisplaced = pair;
        fDisplaced.node = node;
    }
}

void NodeWatcher::CreatedByExchange(Folder* folder, std::string_view name, ino_t node)
{
    folder->Names().Set(name, node);
    BMessage notice =
        EntryNotice(B_ENTRY_CREATED, {folder->node.device, folder->node.node, node, name});
    folder->targets.Send(notice, B_WATCH_DIRECTORY);
}

void NodeWatcher::MovedIn(Folder* to, std::string_view name)
{
    const auto st = StatOf(to, name);
    if (!st) {
        // Moved on or removed at once: what was here before it is gone in any case.
        ReplaceExisting(to, name, 0);
        return;
    }
    ReplaceExisting(to, name, st->st_ino);
    to->Names().Set(name, st->st_ino);
    BMessage notice =
        MoveNotice({st->st_dev, to->node.node, st->st_ino, name}, 0, to->node.node, {});
    to->targets.Send(notice, B_WATCH_DIRECTORY);
}

void NodeWatcher::MovedAway(Folder* from, std::string_view name)
{
    ino_t node = 0;
    if (!from->Names().Remove(name, &node)) {
        return;
    }
    fStats.erase({from->watch, node});
    BMessage notice =
        MoveNotice({from->node.device, from->node.node, node, name}, from->node.node, 0, name);
    from->targets.Send(notice, B_WATCH_DIRECTORY);
}

void NodeWatcher::Changed(Folder* folder, std::string_view name)
{
    ino_t node = 0;
    if (!folder->targets.AnyWants(B_WATCH_STAT) || !folder->Names().Find(name, &node)) {
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
    if (folder != nullptr) {
        BMessage notice = EntryNotice(
            B_STAT_CHANGED, {folder->node.device, folder->node.node, key.node, state->name});
        folder->targets.Send(notice, B_WATCH_STAT);
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
        folder->targets.Send(notice, B_WATCH_NAME);
    } else if ((mask & IN_ATTRIB) != 0) {
        BMessage notice = EntryNotice(
            B_STAT_CHANGED, {folder->node.device, folder->parent, folder->node.node, folder->leaf});
        folder->targets.Send(notice, B_WATCH_STAT);
    }
    ForgetIfUnwatched(watch);
}

void NodeWatcher::SelfGone(Folder* folder)
{
    BMessage notice = EntryNotice(
        B_ENTRY_REMOVED, {folder->node.device, folder->parent, folder->node.node, folder->leaf});
    folder->targets.Send(notice, B_WATCH_NAME);
    ::inotify_rm_watch(fInotify.Get(), folder->watch);
    Forget(folder);
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
        OpenFolder open;
        struct stat st;
        // Another folder of that name may be there by now; this one is gone when nothing links it.
        if (FolderTable::Get().Open(folder->hold, &open) != B_OK ||
            sys::Stat(open->Get(), &st) != B_OK || st.st_nlink == 0) {
            gone.push_back(folder.get());
        }
    }
    for (Folder* folder : gone) {
        SelfGone(folder);
    }
}

void NodeWatcher::RereadAll()
{
    std::vector<Folder*> folders;
    for (const auto& [watch, folder] : fFolders) {
        if (folder->hasNames) {
            folders.push_back(folder.get());
        }
    }
    for (Folder* folder : folders) {
        Reread(folder);
    }
}

void NodeWatcher::Reread(Folder* folder)
{
    FolderListing listing;
    if (ReadNames(folder, &listing) != B_OK) {
        return;
    }
    NameTable names;
    names.Fill(listing);
    const NameTable before = folder->Names();
    for (size_t i = 0; i < before.Count(); ++i) {
        ino_t node = 0;
        if (!names.Find(before.NameAt(i), &node) || node != before.NodeAt(i)) {
            Removed(folder, before.NameAt(i));
        }
    }
    for (size_t i = 0; i < names.Count(); ++i) {
        const std::string_view name = names.NameAt(i);
        ino_t node = 0;
        if (!folder->Names().Find(name, &node)) {
            Created(folder, name);
        } else if (folder->targets.AnyWants(B_WATCH_STAT)) {
            // A change that was lost can only lie after what was told last.
            const auto st = StatOf(folder, name);
            if (st && st->st_ctime >= fLastDrained - 1) {
                Changed(folder, name);
            }
        }
    }
}

} // namespace kits
