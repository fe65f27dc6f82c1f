#pragma once

#include "FolderIdentity.h"
#include "SystemCalls.h"
#include "kernel/Mutex.h"

#include <EntryRef.h>

#include <list>
#include <memory>
#include <string>
#include <unordered_map>

namespace kits {

/// An open folder, shared by whoever works in it just now; closed by the last of them.
using OpenFolder = std::shared_ptr<const UniqueFd>;

/// The folders that refs, entries and watches speak of, each known once by device and inode.
///
/// A known folder is reached through a descriptor that the table keeps open, so it is found
/// wherever it was moved to. Descriptors are limited: the longest unused are closed, and on volumes
/// other than those of the root and the home folder each one after some idle seconds, because an
/// open folder keeps a volume from being unmounted. The path is noted then, the folder opened again
/// by it when needed, and compared: not by its numbers alone, which another folder may have got
/// after it was removed. When that one is met the removed one is out of reach for good, to those
/// who hold it. A folder that nobody holds stays known for a while: a ref may be made from its
/// numbers alone. (Messages hold the folders of the refs in them.)
///
/// Thread: any.
class FolderTable
{
public:
    static FolderTable& Get();

    /// Makes the open folder `descriptor` known. Ownership: borrows the descriptor.
    FolderHold Know(int descriptor, const struct stat& st);
    FolderHold Know(int descriptor);
    /// The same for the folder at `path`, without keeping it open when it was not known: for
    /// whoever makes thousands known at once.
    FolderHold KnowAt(int descriptor, const std::string& path);
    /// Null when the folder is not known.
    FolderHold Find(dev_t device, ino_t node);
    /// The same, when it is the one that TagOf() gave `tag` for; else one that cannot be opened. 0
    /// as tag: whichever has the numbers.
    FolderHold Find(dev_t device, ino_t node, uint32 tag);
    /// A folder that lies on no disk: what is in it has a name and can be looked at by nobody. Its
    /// device is 0, which no disk has, its node is `number`.
    FolderHold FindNowhere(ino_t number);
    /// What tells it from others of its numbers, the same in every program; 0 when nothing does.
    uint32 TagOf(const FolderHold& folder) const;

    /// Opens the folder again when it is closed. Errors: B_ENTRY_NOT_FOUND when it is no longer
    /// where it was.
    [[nodiscard]] status_t Open(const FolderHold& folder, OpenFolder* open);
    dev_t DeviceOf(const FolderHold& folder) const;
    ino_t NodeOf(const FolderHold& folder) const;

    /// Closes the descriptors that were not used for `idle` microseconds; on the volumes that
    /// nobody unmounts only with `everywhere`. Returns how many stay open that will have to be
    /// closed.
    enum class Volumes { kOther, kAll };
    size_t CloseIdle(bigtime_t idle, Volumes volumes);

    /// How many descriptors the table holds.
    size_t CountOpen() const;

private:
    struct Key
    {
        dev_t device;
        ino_t node;
        bool operator==(const Key&) const = default;
    };
    struct KeyHash
    {
        size_t operator()(const Key& key) const
        {
            return (key.node ^ (key.device << 32)) * 0x9e3779b97f4a7c15ull;
        }
    };
    struct Folder : FolderCount
    {
        Key key{};
        FolderIdentity identity; // as it was when it became known
        uint32 tag = 0;
        OpenFolder open;  // null while closed
        std::string path; // where it was when it was closed
        bigtime_t lastUse = 0;
        // Its places in the two lists: kept here while it is in none, since letting go of a folder
        // must not need memory.
        std::list<Folder*> placeInOpen{this};
        std::list<Folder*> placeInUnheld{this};
        std::list<Folder*>::iterator inOpen;   // valid while `open`
        std::list<Folder*>::iterator inUnheld; // valid while `isUnheld`
        bool isUnheld = false;
        bool isGone = false; // another one has its numbers
    };

    FolderTable();

    static void ReleaseLast(FolderCount* count);
    FolderHold Hold(Folder* folder) REQUIRES(fMutex);
    void SetOpen(Folder* folder, OpenFolder open) REQUIRES(fMutex);
    void Touch(Folder* folder) REQUIRES(fMutex);
    bool IsOnOtherVolume(const Folder* folder) const;
    bool IsOther(const FolderHold& known, const FolderIdentity& identity, int descriptor);
    void AfterOpening(const Folder* folder);
    void SetGone(Folder* folder) REQUIRES(fMutex);
    FolderHold HoldGone(const Key& key, uint32 tag) REQUIRES(fMutex);
    status_t FindPath(int descriptor, std::string* path);
    void CloseLongestUnused();
    void CloseNoted(const FolderHold& hold, bigtime_t lastUse);
    void WakeSweeper();
    void Sweep();

    const dev_t fRootDevice;
    const dev_t fHomeDevice;
    size_t fOpenLimit = 0; // written by the constructor alone

    mutable Mutex fMutex; // guards what folders point to, too
    std::unordered_map<Key, std::unique_ptr<Folder>, KeyHash> fFolders GUARDED_BY(fMutex);
    // Held by somebody; their numbers are another folder's.
    std::list<std::unique_ptr<Folder>> fGone GUARDED_BY(fMutex);
    std::list<Folder*> fOpen GUARDED_BY(fMutex);   // the last used first
    std::list<Folder*> fUnheld GUARDED_BY(fMutex); // the latest first
    bool fIsSweeping GUARDED_BY(fMutex) = false;
};

/// Raises the limit of descriptors as far as the system allows; called once by the table.
void RaiseDescriptorLimit();
/// Gives the process the limit it was started with; for children, between fork and exec.
void RestoreDescriptorLimit();

} // namespace kits
