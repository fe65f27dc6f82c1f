#pragma once

#include "FolderListing.h"
#include "FolderTable.h"
#include "kernel/Mutex.h"
#include "kernel/WorkerThread.h"

#include <TreeHooks.h>

#include <atomic>
#include <list>
#include <string>
#include <vector>

namespace kits {

/// Walks a folder with all below it, relative to open folders and with several threads.
///
/// Each folder is read whole, visited, and left when all below it has been left. It stays open
/// meanwhile, unless too many are: then those nearest the top are closed, and found again from
/// below.
///
/// Thread: Walk() returns when the walk is over; the virtual functions are called by its threads,
/// for different folders at once.
class TreeWalker
{
public:
    /// `hooks` may be null.
    explicit TreeWalker(BTreeHooks* hooks);
    virtual ~TreeWalker() = default;
    TreeWalker(const TreeWalker&) = delete;
    TreeWalker& operator=(const TreeWalker&) = delete;

    /// Walks the folder `name` in `parent`. Where there is no memory for it, what is not walked
    /// stays and is told; other threads are a help and no condition. Nothing is thrown.
    void Walk(OpenFolder parent, const char* name);
    /// What was told first; B_CANCELED when the walk was stopped.
    status_t Status() const;

protected:
    struct Folder
    {
        Folder* above = nullptr;
        std::string name;
        dev_t device = 0; // known once it was opened
        ino_t node = 0;
        bool isLeft = false; // something in it stays; written with the walker's lock

    private:
        friend class TreeWalker;
        OpenFolder fDescriptor; // null while it is closed
        // Among those that are open, while it is; the top's parent is not.
        std::list<Folder*>::iterator fPlace;
        int32 fPending = 1; // itself, and those below that have not been left
    };

    /// Opens `name` in `parent`; a descriptor or a status.
    virtual int OpenChild(int parent, const char* name) = 0;
    /// Whether to read the folder, which is open.
    virtual bool MayEnter(const Folder& folder, int descriptor) = 0;
    /// The folder was read. Calls EnterLater() for those below.
    virtual void Visit(Folder& folder, int descriptor, const FolderListing& listing) = 0;
    /// It could not be opened, or read to its end.
    virtual void OpenFailed(Folder& folder, int parent, status_t status) = 0;
    /// All below has been left. Not called when it could not be opened.
    virtual void Leave(Folder& folder) = 0;

    void EnterLater(Folder& above, const char* name);
    /// A descriptor of the folder above, opened again when need be; null when it is out of reach.
    OpenFolder OpenAbove(const Folder& folder);

    bool IsStopped() const;
    /// Tells the hooks that (folder, name) failed; "" means the folder itself.
    void Tell(const Folder& folder, const char* name, status_t status);
    /// Notes that something in the folder stays.
    void SetLeft(Folder* folder);
    void NoteStatus(status_t status);

    template<typename Call>
    auto WithHooks(Call call)
    {
        MutexLock lock(fHooksMutex);
        return call(*fHooks);
    }
    static std::string PathOf(const Folder& folder, const char* name);

private:
    enum class Thread { kOwner, kHelper };

    void Work(Thread thread);
    Folder* TakeWaiting(Thread thread);
    void Process(Folder* folder);
    bool Enter(Folder* folder);
    void LeaveOrTell(Folder* folder);
    void RanOut(Folder* folder);
    void TellNoMemory(const char* name);
    void Done(Folder* folder);
    OpenFolder Opened(const Folder* folder);
    OpenFolder Reopen(const Folder* folder);
    void SetOpen(Folder* folder, OpenFolder open);
    bool CloseSome();
    void StartHelper();

    BTreeHooks* const fHooks;
    const size_t fMostOpen;
    Mutex fHooksMutex; // held while a hook but IsStopped() is called
    std::atomic<bool> fWasStopped{false};

    mutable Mutex fMutex; // guards what folders hold, too
    Condition fChanged;
    // Owned; the last one is walked first, so that few are open.
    std::vector<Folder*> fWaiting GUARDED_BY(fMutex);
    std::list<Folder*> fOpen GUARDED_BY(fMutex); // the longest open first
    int32 fBusy GUARDED_BY(fMutex) = 0;
    status_t fStatus GUARDED_BY(fMutex) = B_OK;
    std::vector<WorkerThread> fHelpers GUARDED_BY(fMutex); // of the thread in Walk()
    bool fNeedsHelper GUARDED_BY(fMutex) = false;
};

} // namespace kits
