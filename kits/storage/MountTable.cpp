#include "MountTable.h"

#include "KernelTypes.h"
#include "SystemCalls.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <iterator>
#include <linux/magic.h>
#include <string_view>
#include <sys/sysmacros.h>
#include <sys/vfs.h>

namespace kits {

namespace {

constexpr const char* kMountList = "/proc/self/mountinfo";

constexpr std::string_view kNetworkTypes[] = {
    "9p",     "afs",   "ceph", "cifs", "coda",  "davfs",    "gfs2", "glusterfs", "gpfs",
    "lustre", "ncpfs", "nfs",  "nfs4", "ocfs2", "orangefs", "smb3", "smbfs",     "kafs",
};

// The same, by what statfs() calls them; numbers that linux/magic.h of older systems does not name
// are written out.
constexpr uint32 kNetworkMagics[] = {
    V9FS_MAGIC,      AFS_SUPER_MAGIC,  AFS_FS_MAGIC,
    0x00c36400, // ceph
    0xff534d42, // cifs
    0xfe534d42, // smb3
    SMB_SUPER_MAGIC, CODA_SUPER_MAGIC, NFS_SUPER_MAGIC, OCFS2_SUPER_MAGIC,
};

template<typename Value, typename Type, size_t count>
bool IsOneOf(const Value& type, const Type (&types)[count])
{
    return std::find(std::begin(types), std::end(types), type) != std::end(types);
}

MountKind KindOf(std::string_view type, std::string_view source)
{
    if (IsKernelType(type)) {
        return MountKind::kKernel;
    }
    // What a program serves lies on this machine when it is made of a file, a folder or a disk
    // here.
    const bool isServed = type.starts_with("fuse.") && !source.starts_with('/');
    return isServed || IsOneOf(type, kNetworkTypes) ? MountKind::kNetwork : MountKind::kLocal;
}

/// The list writes blanks and the like as "\040".
std::string Unescaped(std::string_view text)
{
    std::string plain;
    plain.reserve(text.size());
    const auto isDigit = [&](size_t at) {
        return text[at] >= '0' && text[at] <= '7';
    };
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 3 < text.size() && isDigit(i + 1) && isDigit(i + 2) &&
            isDigit(i + 3)) {
            plain += static_cast<char>((text[i + 1] - '0') * 64 + (text[i + 2] - '0') * 8 +
                                       (text[i + 3] - '0'));
            i += 3;
        } else {
            plain += text[i];
        }
    }
    return plain;
}

/// Takes the next word, which a blank ends, off the front of `line`.
std::string_view NextWord(std::string_view* line)
{
    const size_t end = std::min(line->find(' '), line->size());
    const std::string_view word = line->substr(0, end);
    line->remove_prefix(std::min(end + 1, line->size()));
    return word;
}

/// "36 35 98:0 /root /point options tags... - type source options"
bool ParseMount(std::string_view line, Mount* mount)
{
    unsigned major = 0;
    unsigned minor = 0;
    const std::string id(NextWord(&line));
    NextWord(&line); // the parent's number
    const std::string device(NextWord(&line));
    if (std::sscanf(id.c_str(), "%d", &mount->id) != 1 ||
        std::sscanf(device.c_str(), "%u:%u", &major, &minor) != 2) {
        return false;
    }
    mount->device = makedev(major, minor);
    mount->root = Unescaped(NextWord(&line));
    mount->point = Unescaped(NextWord(&line));
    while (!line.empty() && NextWord(&line) != "-") {
    }
    mount->type = Unescaped(NextWord(&line));
    mount->source = Unescaped(NextWord(&line));
    mount->kind = KindOf(mount->type, mount->source);
    return !mount->point.empty();
}

std::vector<Mount> ReadRows(int list)
{
    std::string text;
    char buffer[16 * 1024];
    for (;;) {
        const ssize_t length =
            sys::ReadAt(list, buffer, sizeof(buffer), static_cast<off_t>(text.size()));
        if (length <= 0) {
            break;
        }
        text.append(buffer, static_cast<size_t>(length));
    }
    std::vector<Mount> mounts;
    std::string_view rest = text;
    while (!rest.empty()) {
        const size_t end = std::min(rest.find('\n'), rest.size());
        Mount mount;
        if (ParseMount(rest.substr(0, end), &mount)) {
            mounts.push_back(std::move(mount));
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return mounts;
}

/// The mount that "/" lies in, as far as it can be told without its row.
bool DescribeRoot(Mount* mount)
{
    const UniqueFd root(sys::OpenAt(sys::kWorkingDirectory, "/", O_PATH | O_DIRECTORY));
    struct stat st;
    struct statfs volume;
    if (!root.IsOpen() || sys::Stat(root.Get(), &st) != B_OK ||
        sys::VolumeRecord(root.Get(), &volume) != B_OK) {
        return false;
    }
    mount->id = sys::MountOf(root.Get());
    mount->device = st.st_dev;
    mount->point.assign(1, '/');
    mount->source = "root";
    const auto magic = static_cast<long>(volume.f_type);
    if (magic != TMPFS_MAGIC && IsKernelMagic(magic)) {
        mount->kind = MountKind::kKernel;
    } else if (IsOneOf(static_cast<uint32>(magic), kNetworkMagics)) {
        mount->kind = MountKind::kNetwork;
    }
    return mount->id >= 0;
}

/// The kernel lists those mounts alone whose points can be reached. Where the root folder is no
/// mount point, in a chroot or some containers, the mount that it lies in is missing; what is seen
/// of it is all below "/".
std::vector<Mount> WithRoot(std::vector<Mount> mounts)
{
    const bool isListed = std::any_of(mounts.begin(), mounts.end(),
                                      [](const Mount& mount) { return mount.point == "/"; });
    Mount root;
    if (!isListed && DescribeRoot(&root)) {
        mounts.insert(mounts.begin(), std::move(root));
    }
    return mounts;
}

} // namespace

std::vector<Mount> ReadMounts()
{
    const UniqueFd list(sys::OpenAt(sys::kWorkingDirectory, kMountList, O_RDONLY));
    return WithRoot(list.IsOpen() ? ReadRows(list.Get()) : std::vector<Mount>());
}

bool FindDevice(const Mount& mount, dev_t* device)
{
    if (mount.kind != MountKind::kLocal) {
        return false;
    }
    const UniqueFd point(
        sys::OpenAt(sys::kWorkingDirectory, mount.point.c_str(), O_PATH | O_NOFOLLOW));
    struct statx record;
    // What was mounted over it later is reached by the same path.
    if (!point.IsOpen() || sys::MountOf(point.Get()) != mount.id ||
        sys::KnownRecord(point.Get(), &record) != B_OK || !S_ISDIR(record.stx_mode)) {
        return false;
    }
    *device = makedev(record.stx_dev_major, record.stx_dev_minor);
    return true;
}

std::vector<MountedVolume> ReadLocalVolumes()
{
    std::vector<MountedVolume> volumes;
    for (Mount& mount : ReadMounts()) {
        dev_t device = 0;
        if (!FindDevice(mount, &device)) {
            continue;
        }
        const auto known =
            std::find_if(volumes.begin(), volumes.end(),
                         [device](const MountedVolume& volume) { return volume.device == device; });
        if (known == volumes.end()) {
            volumes.push_back({device, std::move(mount)});
        } else if (known->mount.root != "/" && mount.root == "/") {
            known->mount = std::move(mount);
        }
    }
    return volumes;
}

bool FindVolume(dev_t device, MountedVolume* volume)
{
    for (MountedVolume& local : ReadLocalVolumes()) {
        if (local.device == device) {
            *volume = std::move(local);
            return true;
        }
    }
    for (Mount& mount : ReadMounts()) {
        if (mount.kind == MountKind::kNetwork && mount.device == device) {
            *volume = {device, std::move(mount)};
            return true;
        }
    }
    return false;
}

bool FindMountOf(int descriptor, Mount* mount)
{
    const int id = sys::MountOf(descriptor);
    for (Mount& row : ReadMounts()) {
        if (row.id == id) {
            *mount = std::move(row);
            return true;
        }
    }
    return false;
}

MountTable::MountTable() : fList(sys::OpenAt(sys::kWorkingDirectory, kMountList, O_RDONLY))
{
    fDevices = Read();
}

std::vector<dev_t> MountTable::Read()
{
    std::map<int32, dev_t> known;
    std::vector<dev_t> devices;
    for (const Mount& mount : WithRoot(ReadRows(fList.Get()))) {
        const auto before = fKnown.find(mount.id);
        dev_t device = before == fKnown.end() ? 0 : before->second;
        if (before == fKnown.end() && !FindDevice(mount, &device)) {
            continue;
        }
        known.emplace(mount.id, device);
        devices.push_back(device);
    }
    fKnown = std::move(known);
    std::sort(devices.begin(), devices.end());
    devices.erase(std::unique(devices.begin(), devices.end()), devices.end());
    return devices;
}

void MountTable::Update(std::vector<dev_t>* mounted, std::vector<dev_t>* unmounted)
{
    std::vector<dev_t> now = Read();
    std::set_difference(now.begin(), now.end(), fDevices.begin(), fDevices.end(),
                        std::back_inserter(*mounted));
    std::set_difference(fDevices.begin(), fDevices.end(), now.begin(), now.end(),
                        std::back_inserter(*unmounted));
    fDevices = std::move(now);
}

} // namespace kits
