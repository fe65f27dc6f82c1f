#include <VolumeRoster.h>

#include "MountTable.h"
#include "MountWatcher.h"
#include "PathLookup.h"

#include <NodeMonitor.h>
#include <Volume.h>

#include <vector>

struct BVolumeRoster::Volumes
{
    std::vector<kits::MountedVolume> list;
    size_t next = 0;
};

BVolumeRoster::BVolumeRoster() = default;

BVolumeRoster::~BVolumeRoster()
{
    StopWatching();
}

status_t BVolumeRoster::GetNextVolume(BVolume* volume)
{
    if (volume == nullptr) {
        return B_BAD_VALUE;
    }
    if (fVolumes == nullptr) {
        fVolumes = std::make_unique<Volumes>();
        fVolumes->list = kits::ReadLocalVolumes();
    }
    // One that was unmounted since the list was read is passed over.
    while (fVolumes->next < fVolumes->list.size()) {
        if (volume->SetTo(fVolumes->list[fVolumes->next++].device) == B_OK) {
            return B_OK;
        }
    }
    volume->Unset();
    return B_BAD_VALUE;
}

void BVolumeRoster::Rewind()
{
    fVolumes.reset();
}

status_t BVolumeRoster::GetBootVolume(BVolume* volume)
{
    if (volume == nullptr) {
        return B_BAD_VALUE;
    }
    struct stat st;
    const status_t status = kits::sys::StatPath(kits::HomeFolder().c_str(), &st);
    return status == B_OK ? volume->SetTo(st.st_dev) : status;
}

status_t BVolumeRoster::StartWatching(BMessenger target)
{
    StopWatching();
    const status_t status = watch_node(nullptr, B_WATCH_MOUNT, target);
    if (status == B_OK) {
        fTarget = target;
    }
    return status;
}

void BVolumeRoster::StopWatching()
{
    if (fTarget.IsValid()) {
        kits::MountWatcher::Get().StopWatching(fTarget);
    }
    fTarget = BMessenger();
}
