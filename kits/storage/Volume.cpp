#include <Volume.h>

#include "MountTable.h"
#include "SystemCalls.h"

#include <Directory.h>
#include <fs_info.h>

#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/statvfs.h>
#include <sys/sysmacros.h>
#include <sys/vfs.h>
#include <unistd.h>

using kits::MountedVolume;

namespace {

/// The root folder of the volume, open for the path alone.
kits::UniqueFd OpenRoot(const MountedVolume& volume)
{
    return kits::UniqueFd(kits::sys::OpenAt(kits::sys::kWorkingDirectory,
                                            volume.mount.point.c_str(), O_PATH | O_DIRECTORY));
}

status_t ReadRecord(dev_t device, struct statfs* record)
{
    MountedVolume volume;
    if (!kits::FindVolume(device, &volume)) {
        return B_BAD_VALUE;
    }
    const kits::UniqueFd root = OpenRoot(volume);
    return root.IsOpen() ? kits::sys::VolumeRecord(root.Get(), record) : root.Get();
}

/// Blocks as bytes; more than a number can hold is the most that it can.
off_t BytesOf(uint64 blocks, const struct statfs& record)
{
    const auto blockBytes =
        static_cast<uint64>(record.f_frsize != 0 ? record.f_frsize : record.f_bsize);
    uint64 bytes = 0;
    return __builtin_mul_overflow(blocks, blockBytes, &bytes) || bytes > INT64_MAX
               ? INT64_MAX
               : static_cast<off_t>(bytes);
}

/// Whether the file of the system's device tree holds a 1.
bool SaysYes(const char* path)
{
    const kits::UniqueFd file(kits::sys::OpenAt(kits::sys::kWorkingDirectory, path, O_RDONLY));
    char answer = '0';
    return file.IsOpen() && kits::sys::ReadAt(file.Get(), &answer, 1, 0) == 1 && answer == '1';
}

} // namespace

BVolume::BVolume(dev_t device)
{
    SetTo(device);
}

BVolume::~BVolume() = default;

status_t BVolume::SetTo(dev_t device)
{
    Unset();
    MountedVolume volume;
    if (!kits::FindVolume(device, &volume)) {
        fStatus = B_BAD_VALUE;
        return fStatus;
    }
    fDevice = device;
    fStatus = B_OK;
    return fStatus;
}

void BVolume::Unset()
{
    fDevice = 0;
    fStatus = B_NO_INIT;
}

status_t BVolume::GetRootDirectory(BDirectory* directory) const
{
    if (directory == nullptr) {
        return B_BAD_VALUE;
    }
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    MountedVolume volume;
    if (!kits::FindVolume(fDevice, &volume)) {
        return B_BAD_VALUE;
    }
    return directory->SetTo(volume.mount.point.c_str());
}

off_t BVolume::Capacity() const
{
    struct statfs record;
    const status_t status = fStatus == B_OK ? ReadRecord(fDevice, &record) : status_t(B_NO_INIT);
    return status == B_OK ? BytesOf(record.f_blocks, record) : status;
}

off_t BVolume::FreeBytes() const
{
    struct statfs record;
    const status_t status = fStatus == B_OK ? ReadRecord(fDevice, &record) : status_t(B_NO_INIT);
    return status == B_OK ? BytesOf(record.f_bavail, record) : status;
}

status_t BVolume::GetName(char* name) const
{
    if (name == nullptr) {
        return B_BAD_VALUE;
    }
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    MountedVolume volume;
    if (!kits::FindVolume(fDevice, &volume)) {
        return B_BAD_VALUE;
    }
    const std::string& from = volume.mount.point == "/" ? volume.mount.source : volume.mount.point;
    std::snprintf(name, B_FILE_NAME_LENGTH, "%s", from.c_str() + from.rfind('/') + 1);
    return B_OK;
}

bool BVolume::IsRemovable() const
{
    if (fStatus != B_OK) {
        return false;
    }
    // A partition says it through the disk that it is part of.
    char path[96];
    for (const char* disk : {"", "/.."}) {
        std::snprintf(path, sizeof(path), "/sys/dev/block/%u:%u%s/removable", major(fDevice),
                      minor(fDevice), disk);
        if (SaysYes(path)) {
            return true;
        }
    }
    return false;
}

bool BVolume::IsReadOnly() const
{
    struct statfs record;
    return fStatus == B_OK && ReadRecord(fDevice, &record) == B_OK &&
           (static_cast<unsigned long>(record.f_flags) & ST_RDONLY) != 0;
}

bool BVolume::IsPersistent() const
{
    struct statfs record;
    return fStatus == B_OK && ReadRecord(fDevice, &record) == B_OK &&
           record.f_type != TMPFS_MAGIC && record.f_type != RAMFS_MAGIC;
}

bool BVolume::IsShared() const
{
    MountedVolume volume;
    return fStatus == B_OK && kits::FindVolume(fDevice, &volume) &&
           volume.mount.kind == kits::MountKind::kNetwork;
}

bool BVolume::KnowsAttr() const
{
    MountedVolume volume;
    if (fStatus != B_OK || !kits::FindVolume(fDevice, &volume)) {
        return false;
    }
    const kits::UniqueFd root = OpenRoot(volume);
    // Where there are any, one that is missing is told apart from none at all.
    char value = 0;
    const ssize_t status = root.IsOpen()
                               ? kits::sys::GetAttribute(root.Get(), "user.norvane.none", &value, 1)
                               : root.Get();
    return status >= 0 || status == B_ENTRY_NOT_FOUND;
}

status_t fs_stat_dev(dev_t device, fs_info* info)
{
    MountedVolume volume;
    if (info == nullptr || !kits::FindVolume(device, &volume)) {
        return B_BAD_VALUE;
    }
    struct statfs record;
    const kits::UniqueFd root = OpenRoot(volume);
    const status_t status =
        root.IsOpen() ? kits::sys::VolumeRecord(root.Get(), &record) : root.Get();
    if (status != B_OK) {
        return status;
    }
    *info = {};
    info->dev = device;
    info->block_size = record.f_frsize != 0 ? record.f_frsize : record.f_bsize;
    info->total_blocks = static_cast<off_t>(record.f_blocks);
    info->free_blocks = static_cast<off_t>(record.f_bavail);
    std::snprintf(info->device_name, sizeof(info->device_name), "%s", volume.mount.source.c_str());
    std::snprintf(info->fsh_name, sizeof(info->fsh_name), "%s", volume.mount.type.c_str());
    BVolume(device).GetName(info->volume_name);
    return B_OK;
}
