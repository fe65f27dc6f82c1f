// Taking the kernel's notices: how much at once, what is waited for, and what when too many came.

#include "FolderListing.h"
#include "NodeWatcher.h"

#include <OS.h>

#include <algorithm>
#include <ctime>
#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace kits {

namespace {

constexpr size_t kReadBytes = size_t{64} * 1024;
// So much is gathered before it is worked through; what comes after waits in the kernel.
constexpr size_t kGatheredBytes = size_t{1024} * 1024;
// So much more is taken from the kernel meanwhile, some 300,000 events: it keeps 16,384 at most,
// which others may cause in 25 ms.
constexpr size_t kMostAhead = size_t{16} * 1024 * 1024;
// How long the second half of a rename may be behind the first.
constexpr int kPartnerMilliseconds = 5;
constexpr int kWayBackMilliseconds = 1;
// So often the rest of what is half told is read, while new events keep coming.
constexpr int kMostRounds = 4;
// So many at once, and more are about to come.
constexpr size_t kManyEvents = 32;
// After the kernel's queue overflowed: it is calm when nothing comes for so long; longer is not
// waited.
constexpr int kCalmMilliseconds = 20;
constexpr bigtime_t kLongestStorm = 300'000;

/// How long to wait for what belongs to the last event: the other half of a rename, or the way back
/// of an exchange. Both stand together, so only the last event can have lost the rest.
int PatienceFor(const char* bytes, size_t size)
{
    const inotify_event* last = nullptr;
    for (size_t at = 0; at < size;) {
        last = reinterpret_cast<const inotify_event*>(bytes + at);
        at += sizeof(inotify_event) + last->len;
    }
    if (last == nullptr || (last->mask & (IN_MOVED_FROM | IN_MOVED_TO)) == 0) {
        return 0;
    }
    return (last->mask & IN_MOVED_FROM) != 0 ? kPartnerMilliseconds : kWayBackMilliseconds;
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

void NodeWatcher::TakeEvents(const char* bytes, size_t size, std::vector<Event>* events)
{
    for (size_t at = 0; at < size;) {
        const auto* raw = reinterpret_cast<const inotify_event*>(bytes + at);
        const char* name = bytes + at + sizeof(inotify_event);
        events->push_back({raw->wd, raw->mask, raw->cookie,
                           raw->len > 0 ? std::string_view(name) : std::string_view()});
        at += sizeof(inotify_event) + raw->len;
    }
}

/// Takes what waits in the kernel, whose queue is short, to be handled next.
void NodeWatcher::ReadAhead()
{
    ssize_t length = 1;
    while (length > 0 && fAhead.size() < kMostAhead) {
        const size_t have = fAhead.size();
        fAhead.resize(have + kReadBytes);
        length = ::read(fInotify.Get(), fAhead.data() + have, kReadBytes);
        fAhead.resize(have + (length > 0 ? static_cast<size_t>(length) : 0));
    }
}

/// What was read ahead comes first.
size_t NodeWatcher::TakeAhead()
{
    const size_t size = fAhead.size();
    fBytes.resize(std::max(fBytes.size(), size));
    std::copy(fAhead.begin(), fAhead.end(), fBytes.begin());
    fAhead.clear();
    return size;
}

void NodeWatcher::ReadEvents()
{
    size_t size = TakeAhead();
    const time_t started = ::time(nullptr);
    while (size < kGatheredBytes) {
        const size_t more = ReadMore(size);
        if (more == 0) {
            break;
        }
        size += more;
    }
    for (int round = 0; round < kMostRounds; ++round) {
        const int patience = PatienceFor(fBytes.data(), size);
        struct pollfd polled = {fInotify.Get(), POLLIN, 0};
        if (patience == 0 || ::poll(&polled, 1, patience) <= 0) {
            break;
        }
        size += ReadMore(size);
    }
    std::vector<Event> events;
    TakeEvents(fBytes.data(), size, &events);
    const bool areWrites =
        !events.empty() && std::all_of(events.begin(), events.end(),
                                       [](const Event& event) { return event.mask == IN_MODIFY; });
    fIsBusy = areWrites || events.size() >= kManyEvents;
    Handle(&events);
    if (fHasOverflown) {
        AwaitCalm();
        fHasOverflown = false;
        RereadAll();
    }
    fJustCreated.clear();
    fLastDrained = started;
    if (fBytes.size() > kGatheredBytes) {
        fBytes = {}; // of a storm
    }
}

/// The kernel's queue overflowed: all folders are read anew, which tells what happens until then.
/// So it is waited for, or a storm would have them read again and again.
void NodeWatcher::AwaitCalm()
{
    const bigtime_t deadline = system_time() + kLongestStorm;
    struct pollfd polled = {fInotify.Get(), POLLIN, 0};
    do {
        size_t size = TakeAhead();
        size += ReadMore(size);
        std::vector<Event> events;
        TakeEvents(fBytes.data(), size, &events);
        for (const Event& event : events) {
            Folder* folder = event.name.empty() ? FolderOf(event.watch) : nullptr;
            if (folder != nullptr) {
                SelfChanged(folder, event.mask); // of this no listing tells
            }
        }
    } while (system_time() < deadline && ::poll(&polled, 1, kCalmMilliseconds) > 0);
}

void NodeWatcher::RereadAll()
{
    std::vector<int> watches;
    for (const auto& [watch, folder] : fFolders) {
        if (folder->hasNames) {
            watches.push_back(watch);
        }
    }
    for (const int watch : watches) {
        FolderListing listing;
        Folder* folder = FolderOf(watch); // the end of another one may have been its own
        if (folder == nullptr) {
            continue;
        }
        if (IsGone(*folder)) {
            SelfGone(folder); // what told of it may be lost
        } else if (ReadNames(folder, &listing) == B_OK) {
            Reread(folder, listing, Since::kOverflow);
        }
    }
}

/// Tells the differences between what is known and what a listing found.
void NodeWatcher::Reread(Folder* folder, const FolderListing& listing, Since since)
{
    NameTable names;
    names.Fill(listing);
    const NameTable before = folder->Names();
    for (size_t i = 0; i < before.Count(); ++i) {
        const std::string_view name = before.NameAt(i);
        ino_t node = 0;
        // Some file systems list other numbers than a look at the entry gives.
        if (!names.Find(name, &node) ||
            (node != before.NodeAt(i) && RecordOf(folder, name).node != before.NodeAt(i))) {
            Removed(folder, name);
        }
    }
    for (size_t i = 0; i < names.Count(); ++i) {
        const std::string_view name = names.NameAt(i);
        ino_t node = 0;
        if (!folder->Names().Find(name, &node)) {
            Created(folder, name);
        } else if (since == Since::kOverflow &&
                   folder->targets->AnyWants(B_WATCH_STAT | B_WATCH_ENTRIES)) {
            // A change that was lost can only lie after what was told last.
            const BEntryRecord record = RecordOf(folder, name);
            if (record.status == B_OK && record.changed >= fLastDrained - 1) {
                Changed(folder, name);
            }
        }
    }
}

} // namespace kits
