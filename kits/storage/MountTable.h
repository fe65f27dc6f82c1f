#pragma once

#include "UniqueFd.h"

#include <SupportDefs.h>

#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

namespace kits {

/// Who fills a mounted file system.
enum class MountKind {
    kLocal,   // a disk, a file or the memory of this machine
    kNetwork, // another machine; asking it anything may take for ever
    kKernel,  // nothing is stored there
};

/// A row of the kernel's list of mounts, or what can be told of the root folder's where that has no
/// row.
struct Mount
{
    int32 id = 0;
    dev_t device = 0;  // that of the list; on some file systems its nodes carry another
    std::string root;  // the folder of the file system that is mounted; "/" for all of it
    std::string point; // where
    std::string type;
    std::string source;
    MountKind kind = MountKind::kLocal;
};

/// A mounted file system and the number that its nodes carry.
struct MountedVolume
{
    dev_t device = 0;
    Mount mount;
};

/// All rows, in the order in which they were mounted; the root folder's is always among them.
std::vector<Mount> ReadMounts();
/// The number that the nodes of a mount carry; false when the mount is out of reach, hidden by
/// another, or not local. Asks nobody who may not answer, a program that serves the mount among
/// them: whoever looks for one volume must not wait for all others.
bool FindDevice(const Mount& mount, dev_t* device);
/// The local volumes, each once: at the mount that shows all of it, where there is one.
std::vector<MountedVolume> ReadLocalVolumes();
/// The volume whose nodes carry `device`, one of a network included.
bool FindVolume(dev_t device, MountedVolume* volume);
/// The mount that an open node was reached through.
bool FindMountOf(int descriptor, Mount* mount);

/// The local volumes that are mounted, as they come and go; its descriptor wakes a poll for POLLPRI
/// at every change.
class MountTable
{
public:
    MountTable();

    int Descriptor() const { return fList.Get(); }
    /// Reads the list again and tells what came and went since the last reading.
    void Update(std::vector<dev_t>* mounted, std::vector<dev_t>* unmounted);

private:
    std::vector<dev_t> Read();

    UniqueFd fList;
    std::map<int32, dev_t> fKnown; // by the mount's number: each is asked for its device once
    std::vector<dev_t> fDevices;   // ascending, each once
};

} // namespace kits
