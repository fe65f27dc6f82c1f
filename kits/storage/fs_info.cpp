#include <fs_info.h>

#include "EntryName.h"
#include "KernelVolume.h"
#include "NodeNumbers.h"
#include "PathLookup.h"

#include <Directory.h>

#include <fcntl.h>

int32 dev_for_path(const char* path)
{
    if (path == nullptr || *path == '\0') {
        return B_BAD_VALUE;
    }
    const kits::UniqueFd node(
        kits::OpenPath(kits::sys::kWorkingDirectory, kits::SystemPath(path), O_PATH));
    if (!node.IsOpen()) {
        return node.Get();
    }
    struct stat st;
    const status_t status = kits::sys::Stat(node.Get(), &st);
    return status == B_OK ? static_cast<int32>(st.st_dev) : status;
}

bool is_kernel_volume(const BDirectory& folder)
{
    const kits::UniqueFd opened(folder.Dup());
    return opened.IsOpen() && kits::IsKernelVolume(opened.Get());
}

status_t is_mount_point(const BDirectory& folder, const char* name, bool* is)
{
    if (folder.InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    if (!kits::IsEntryName(name) || is == nullptr) {
        return B_BAD_VALUE;
    }
    const kits::UniqueFd opened(folder.Dup());
    return opened.IsOpen() ? kits::sys::IsMountPointAt(opened.Get(), name, is) : opened.Get();
}

bool has_stable_nodes(const BDirectory& folder)
{
    const kits::UniqueFd opened(folder.Dup());
    return !opened.IsOpen() || kits::HasStableNodes(opened.Get());
}
