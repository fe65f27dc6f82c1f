#include "TreeWalker.h"

#include <algorithm>
#include <fcntl.h>
#include <memory>
#include <new>
#include <sys/resource.h>
#include <thread>

namespace kits {

namespace {

// Deeper than any tree that a path can name; going on below costs a way down from the top for many
// folders.
constexpr size_t kMostOpen = 4096;
constexpr size_t kFewestOpen = 16;
// With fewer folders waiting a helper would find nothing left to do.
constexpr size_t kHelpedFrom = 8;
// How often the owner looks whether the walk was stopped while others work. Microseconds.
constexpr bigtime_t kOwnerLooksEvery = 50'000;

size_t MostOpen()
{
    struct rlimit limit;
    const bool isKnown = ::getrlimit(RLIMIT_NOFILE, &limit) == 0;
    return isKnown ? std::clamp<size_t>(limit.rlim_cur / 4, 32, kMostOpen) : 64;
}

size_t MostHelpers()
{
    // The disk is waited for more than the processor, so two threads are worth it everywhere.
    return std::clamp<size_t>(std::thread::hardware_concurrency(), 2, 4) - 1;
}

} // namespace

TreeWalker::TreeWalker(BTreeHooks* hooks) : fHooks(hooks), fMostOpen(MostOpen()) {}

void TreeWalker::Walk(OpenFolder parent, const char* name)
{
    Folder top;
    top.fDescriptor = std::move(parent);
    try {
        EnterLater(top, name);
    } catch (const std::bad_alloc&) {
        TellNoMemory(name);
        return;
    }
    Work(Thread::kOwner);
    std::vector<WorkerThread> helpers; // joined at the end, unlocked
    MutexLock lock(fMutex);
    helpers.swap(fHelpers);
}

bool TreeWalker::IsStopped() const
{
    return fWasStopped || (fHooks != nullptr && fHooks->IsStopped());
}

status_t TreeWalker::Status() const
{
    MutexLock lock(fMutex);
    return fStatus;
}

void TreeWalker::NoteStatus(status_t status)
{
    MutexLock lock(fMutex);
    if (fStatus == B_OK || status == B_CANCELED) { // being stopped outweighs what was told
        fStatus = status;
    }
}

void TreeWalker::EnterLater(Folder& above, const char* name)
{
    auto folder = std::make_unique<Folder>();
    folder->above = &above;
    folder->name = name;
    MutexLock lock(fMutex);
    fWaiting.push_back(folder.get());
    [[maybe_unused]] const Folder* adopted = folder.release(); // by what waits
    ++above.fPending;
    if (fWaiting.size() >= kHelpedFrom && !fNeedsHelper && fHelpers.size() < MostHelpers()) {
        fNeedsHelper = true;
    }
}

void TreeWalker::StartHelper()
{
    {
        MutexLock lock(fMutex);
        if (!fNeedsHelper || fHelpers.size() >= MostHelpers()) {
            return;
        }
        fNeedsHelper = false;
        try {
            fHelpers.reserve(MostHelpers()); // once it is started it must have its place
        } catch (const std::bad_alloc&) {
            return;
        }
        WorkerThread helper;
        if (helper.Start("tree walker", [this] { Work(Thread::kHelper); }) != B_OK) {
            return; // those that are there do it alone
        }
        fHelpers.push_back(std::move(helper));
    }
    fChanged.Broadcast();
}

void TreeWalker::Work(Thread thread)
{
    while (Folder* folder = TakeWaiting(thread)) {
        Process(folder);
        MutexLock lock(fMutex);
        --fBusy;
        if (fBusy == 0 || fWaiting.size() > 1) {
            fChanged.Broadcast();
        }
    }
}

/// The next folder, which counts as being worked on; null when there will be none.
TreeWalker::Folder* TreeWalker::TakeWaiting(Thread thread)
{
    for (;;) {
        {
            MutexLock lock(fMutex);
            const bigtime_t due =
                thread == Thread::kOwner ? system_time() + kOwnerLooksEvery : B_INFINITE_TIMEOUT;
            while (fWaiting.empty() && fBusy > 0 && fChanged.WaitUntil(fMutex, due)) {
            }
            if (!fWaiting.empty()) {
                Folder* folder = fWaiting.back();
                fWaiting.pop_back();
                ++fBusy;
                return folder;
            }
            if (fBusy == 0) {
                return nullptr;
            }
        }
        // Others may have one huge folder for long, and what they count is told by this thread,
        // which hears of a stop too.
        if (IsStopped()) {
            fWasStopped = true;
        }
    }
}

void TreeWalker::Process(Folder* folder)
{
    bool isEntered = true;
    try {
        isEntered = Enter(folder);
    } catch (const std::bad_alloc&) {
        RanOut(folder); // what is known of it is walked all the same
    }
    if (isEntered) {
        StartHelper();
        {
            MutexLock lock(fMutex);
            --folder->fPending;
            if (folder->fPending > 0) {
                return;
            }
            ++folder->fPending;
        }
        LeaveOrTell(folder);
    }
    Done(folder);
}

/// Opens, reads and visits the folder; false when there is nothing to be left.
bool TreeWalker::Enter(Folder* folder)
{
    if (IsStopped()) {
        NoteStatus(B_CANCELED);
        SetLeft(folder->above);
        return false;
    }
    const OpenFolder above = OpenAbove(*folder);
    int opened = B_ENTRY_NOT_FOUND;
    if (above != nullptr) {
        opened = OpenChild(above->Get(), folder->name.c_str());
        if (opened == B_NO_MORE_FDS && CloseSome()) {
            opened = OpenChild(above->Get(), folder->name.c_str());
        }
    }
    UniqueFd owned(opened);
    if (opened < 0) {
        OpenFailed(*folder, above == nullptr ? -1 : above->Get(), opened);
        return false;
    }
    const auto open = std::make_shared<const UniqueFd>(std::move(owned));
    struct stat st = {};
    status_t status = sys::Stat(opened, &st);
    folder->device = st.st_dev;
    folder->node = st.st_ino;
    if (status == B_OK && !MayEnter(*folder, opened)) {
        return false;
    }
    FolderListing listing;
    if (status == B_OK) {
        status = listing.Read(opened, [this] { return IsStopped(); });
    }
    if (status != B_OK) {
        SetLeft(folder);
        if (status == B_CANCELED) {
            NoteStatus(status);
        } else {
            Tell(*folder, "", status);
        }
    }
    SetOpen(folder, open);
    // What was read before a failure is there all the same.
    Visit(*folder, opened, listing);
    return true;
}

void TreeWalker::LeaveOrTell(Folder* folder)
{
    try {
        Leave(*folder);
    } catch (const std::bad_alloc&) {
        RanOut(folder);
        SetLeft(folder->above);
    }
}

/// There was no memory for the folder, or for all that is in it.
void TreeWalker::RanOut(Folder* folder)
{
    SetLeft(folder);
    try {
        Tell(*folder, "", B_NO_MEMORY);
    } catch (const std::bad_alloc&) {
        TellNoMemory(folder->name.c_str()); // there is none for its path either
    }
}

void TreeWalker::TellNoMemory(const char* name)
{
    NoteStatus(B_NO_MEMORY);
    if (fHooks == nullptr) {
        return;
    }
    try {
        WithHooks([name](BTreeHooks& hooks) { hooks.Failed(name, B_NO_MEMORY); });
    } catch (const std::bad_alloc&) {
        return; // the status says it
    }
}

void TreeWalker::Done(Folder* folder)
{
    for (;;) {
        Folder* above = folder->above;
        bool isAboveDone = false;
        OpenFolder closed; // closed after the lock is free
        {
            MutexLock lock(fMutex);
            if (folder->fDescriptor != nullptr) {
                fOpen.erase(folder->fPlace);
                closed = std::move(folder->fDescriptor);
            }
            --above->fPending;
            isAboveDone = above->fPending == 0;
            if (isAboveDone) {
                ++above->fPending; // left by this thread alone
            }
        }
        delete folder;
        if (!isAboveDone) {
            return; // the top's parent is never done: its own count stays
        }
        folder = above;
        LeaveOrTell(folder);
    }
}

void TreeWalker::SetOpen(Folder* folder, OpenFolder open)
{
    OpenFolder closed;
    MutexLock lock(fMutex);
    if (folder->fDescriptor != nullptr) {
        return;
    }
    folder->fPlace = fOpen.insert(fOpen.end(), folder);
    folder->fDescriptor = std::move(open);
    if (fOpen.size() > fMostOpen) {
        Folder* longest = fOpen.front();
        fOpen.pop_front();
        closed = std::move(longest->fDescriptor);
    }
}

/// Closes what is open above the folders that are being walked, for when the program has no
/// descriptors left.
bool TreeWalker::CloseSome()
{
    std::vector<OpenFolder> closed;
    MutexLock lock(fMutex);
    while (fOpen.size() > kFewestOpen) {
        closed.push_back(std::move(fOpen.front()->fDescriptor));
        fOpen.pop_front();
    }
    return !closed.empty();
}

OpenFolder TreeWalker::Opened(const Folder* folder)
{
    MutexLock lock(fMutex);
    return folder->fDescriptor;
}

OpenFolder TreeWalker::OpenAbove(const Folder& folder)
{
    Folder* above = folder.above;
    OpenFolder open = Opened(above);
    if (open != nullptr) {
        return open;
    }
    // From below when that is open: it may have been moved, so what is found is compared.
    const OpenFolder below = Opened(&folder);
    if (below != nullptr) {
        auto found = std::make_shared<const UniqueFd>(
            sys::OpenAt(below->Get(), "..", O_RDONLY | O_DIRECTORY | O_NONBLOCK));
        struct stat st;
        if (found->IsOpen() && sys::Stat(found->Get(), &st) == B_OK && st.st_dev == above->device &&
            st.st_ino == above->node) {
            open = std::move(found);
        }
    }
    if (open == nullptr) {
        open = Reopen(above);
    }
    if (open == nullptr && CloseSome()) {
        open = Reopen(above);
    }
    if (open != nullptr) {
        SetOpen(above, open);
    }
    return open;
}

/// Opens a closed folder on the way down from the lowest one above it that is open.
OpenFolder TreeWalker::Reopen(const Folder* folder)
{
    std::vector<const Folder*> way;
    OpenFolder open;
    for (const Folder* at = folder; open == nullptr; at = at->above) {
        open = Opened(at);
        if (open == nullptr) {
            way.push_back(at);
        }
    }
    for (; !way.empty(); way.pop_back()) {
        const Folder* next = way.back();
        auto opened = std::make_shared<const UniqueFd>(OpenChild(open->Get(), next->name.c_str()));
        struct stat st;
        if (!opened->IsOpen() || sys::Stat(opened->Get(), &st) != B_OK ||
            st.st_dev != next->device || st.st_ino != next->node) {
            return nullptr;
        }
        open = std::move(opened);
    }
    return open;
}

std::string TreeWalker::PathOf(const Folder& folder, const char* name)
{
    std::string path = name;
    for (const Folder* at = &folder; at->above != nullptr; at = at->above) {
        path.insert(0, path.empty() ? at->name : at->name + "/");
    }
    return path;
}

void TreeWalker::Tell(const Folder& folder, const char* name, status_t status)
{
    NoteStatus(status);
    if (fHooks != nullptr) {
        const std::string path = PathOf(folder, name);
        WithHooks([&](BTreeHooks& hooks) { hooks.Failed(path.c_str(), status); });
    }
}

void TreeWalker::SetLeft(Folder* folder)
{
    MutexLock lock(fMutex);
    folder->isLeft = true;
}

} // namespace kits
