#pragma once

#include <Messenger.h>
#include <SupportDefs.h>

#include <memory>

class BVolume;

/// The mounted local file systems, those in memory included, each once.
///
/// The kernel's own (processes, devices and their like) and those of other machines are left out,
/// and what another mount hides. Thread: one at a time.
class BVolumeRoster
{
public:
    /// Its end stops watching.
    BVolumeRoster();
    virtual ~BVolumeRoster();
    BVolumeRoster(const BVolumeRoster&) = delete;
    BVolumeRoster& operator=(const BVolumeRoster&) = delete;

    /// The next volume, in the order in which they were mounted; the list is read at the first call
    /// and after Rewind(). Errors: B_BAD_VALUE at the end; `volume` is unset then.
    status_t GetNextVolume(BVolume* volume);
    /// Has GetNextVolume() begin anew.
    void Rewind();
    /// The volume that holds the home folder. Errors: B_BAD_VALUE for null; those of looking.
    status_t GetBootVolume(BVolume* volume);

    /// Sends B_NODE_MONITOR messages about mounts (B_DEVICE_MOUNTED) and their ends
    /// (B_DEVICE_UNMOUNTED) to `target` until StopWatching() or the roster's end.
    /// Errors: B_BAD_VALUE when there is no such target.
    status_t StartWatching(BMessenger target);
    /// Ends that.
    void StopWatching();
    /// Who is told; not valid while nobody is.
    BMessenger Messenger() const { return fTarget; }

private:
    struct Volumes;

    std::unique_ptr<Volumes> fVolumes; // null until asked
    BMessenger fTarget;
};
