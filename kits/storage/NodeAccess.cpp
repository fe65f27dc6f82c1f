// Access lists, kept by the system as an extended attribute: a version, then one record for each
// entry, all numbers with the least significant byte first.

#include <NodeAccess.h>

#include "AttributeStatus.h"
#include "SystemCalls.h"

#include <Node.h>

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

constexpr const char* kAccessList = "system.posix_acl_access";
constexpr const char* kDefaultList = "system.posix_acl_default";

constexpr size_t kHeaderBytes = 4;
constexpr size_t kEntryBytes = 8; // two of the kind, two of the rights, four of who
constexpr uint32 kVersion = 2;

enum Kind : uint32 {
    kOwner = 0x01,
    kNamedUser = 0x02,
    kGroup = 0x04,
    kNamedGroup = 0x08,
    kMask = 0x10,
    kOthers = 0x20,
};

constexpr uint32 kAllRights = 7;

uint32 NumberAt(const std::string& list, size_t at, size_t bytes)
{
    uint32 number = 0;
    for (size_t i = 0; i < bytes; ++i) {
        number |= uint32(static_cast<unsigned char>(list[at + i])) << (8 * i);
    }
    return number;
}

uint32 KindAt(const std::string& list, size_t at)
{
    return NumberAt(list, at, 2);
}

uint32 RightsAt(const std::string& list, size_t at)
{
    return NumberAt(list, at + 2, 2) & kAllRights;
}

void SetRightsAt(std::string* list, size_t at, uint32 rights)
{
    (*list)[at + 2] = static_cast<char>(rights);
    (*list)[at + 3] = '\0';
}

bool IsList(const std::string& list)
{
    return list.size() >= kHeaderBytes && (list.size() - kHeaderBytes) % kEntryBytes == 0 &&
           NumberAt(list, 0, 4) == kVersion;
}

template<typename Visit>
void ForEachEntry(const std::string& list, Visit visit)
{
    for (size_t at = kHeaderBytes; at < list.size(); at += kEntryBytes) {
        visit(at, KindAt(list, at), RightsAt(list, at));
    }
}

/// What a list says, its mask applied.
struct Rights
{
    uint32 group = kAllRights;
    uint32 others = kAllRights;
    uint32 everyNamedUser = kAllRights;  // has at least these
    uint32 everyNamedGroup = kAllRights; // has at least these
};

Rights RightsOf(const std::string& list)
{
    if (!IsList(list)) {
        return {0, 0, 0, 0}; // of another kind: nothing is known of it
    }
    uint32 mask = kAllRights;
    ForEachEntry(list,
                 [&](size_t, uint32 kind, uint32 here) { mask = kind == kMask ? here : mask; });
    Rights rights;
    ForEachEntry(list, [&](size_t, uint32 kind, uint32 here) {
        if (kind == kNamedUser) {
            rights.everyNamedUser &= here & mask;
        } else if (kind == kGroup) {
            rights.group &= here & mask;
        } else if (kind == kNamedGroup) {
            rights.everyNamedGroup &= here & mask;
        } else if (kind == kOthers) {
            rights.others &= here;
        }
    });
    return rights;
}

/// The list of an open node; empty when it has none.
status_t ReadList(int node, const char* name, std::string* list)
{
    char some[512];
    ssize_t size = kits::sys::GetAttribute(node, name, some, sizeof(some));
    if (size >= 0) {
        list->assign(some, static_cast<size_t>(size));
        return B_OK;
    }
    if (size == B_BAD_VALUE) { // a long one
        list->resize(size_t{64} * 1024);
        size = kits::sys::GetAttribute(node, name, list->data(), list->size());
        list->resize(size < 0 ? 0 : static_cast<size_t>(size));
        return size < 0 ? static_cast<status_t>(size) : B_OK;
    }
    list->clear();
    const bool hasNone = size == B_ENTRY_NOT_FOUND || size == B_UNSUPPORTED;
    return hasNone ? B_OK : static_cast<status_t>(size);
}

status_t WriteList(int node, const char* name, const std::string& list)
{
    return kits::KeepingStatus(kits::sys::SetAttribute(node, name, list.data(), list.size()), node);
}

/// The list as it is for a node of another group: what is cut are the rights of those who are not
/// named.
std::string CutForOtherGroup(const std::string& list)
{
    const Rights rights = RightsOf(list);
    const uint32 others = rights.others & rights.group;
    std::string cut = list;
    ForEachEntry(list, [&](size_t at, uint32 kind, uint32) {
        if (kind == kGroup) {
            // Who is in several groups has what any of them has.
            SetRightsAt(&cut, at, others & rights.everyNamedGroup);
        } else if (kind == kOthers) {
            SetRightsAt(&cut, at, others);
        }
    });
    return cut;
}

/// The same people, none of whom may do anything.
std::string Masked(const std::string& list)
{
    std::string masked = list;
    ForEachEntry(list, [&](size_t at, uint32 kind, uint32) {
        if (kind == kGroup || kind == kMask || kind == kOthers) {
            SetRightsAt(&masked, at, 0);
        }
    });
    return masked;
}

/// Whether nothing was changed between the two, contents apart.
bool IsSameChange(const struct stat& one, const struct stat& other)
{
    return one.st_ctim.tv_sec == other.st_ctim.tv_sec &&
           one.st_ctim.tv_nsec == other.st_ctim.tv_nsec && one.st_mode == other.st_mode &&
           one.st_gid == other.st_gid;
}

} // namespace

BNodeAccess::BNodeAccess(const BNode& node)
{
    SetTo(node);
}

status_t BNodeAccess::SetTo(const BNode& node)
{
    struct stat now;
    return Read(node, nullptr, &now);
}

status_t BNodeAccess::SetTo(const BNode& node, struct stat* record)
{
    const struct stat before = *record;
    return Read(node, &before, record);
}

status_t BNodeAccess::Read(const BNode& node, const struct stat* before, struct stat* now)
{
    *this = BNodeAccess();
    std::string list;
    status_t status = node.InitCheck() == B_OK ? ReadList(node.Descriptor(), kAccessList, &list)
                                               : status_t(B_NO_INIT);
    if (status == B_OK) {
        status = node.GetStat(now);
    }
    if (status == B_OK && list.empty() && (now->st_mode & S_IRWXG) != 0 &&
        (before == nullptr || !IsSameChange(*before, *now))) {
        // The group's bits would be a mask, were the list made just before they were read.
        status = ReadList(node.Descriptor(), kAccessList, &list);
    }
    fStatus = status;
    if (status == B_OK) {
        fMode = now->st_mode & 07777;
        fGroup = now->st_gid;
        fList = std::move(list);
    }
    return status;
}

mode_t BNodeAccess::MostFor(gid_t group) const
{
    if (fStatus != B_OK) {
        return S_IRWXU;
    }
    Rights rights;
    if (HasList()) {
        rights = RightsOf(fList);
    } else {
        rights.group = (fMode >> 3) & kAllRights;
    }
    rights.others &= fMode & kAllRights;
    const bool isSame = group == fGroup;
    // Somebody who is named here is anybody there, a member of the group or not.
    mode_t forGroup = rights.group & rights.everyNamedUser;
    mode_t forOthers = rights.others & rights.everyNamedUser & rights.everyNamedGroup;
    if (!isSame) {
        forOthers &= rights.group;
        forGroup = forOthers;
    }
    return (fMode & S_IRWXU) | forGroup << 3 | forOthers;
}

status_t BNodeAccess::GiveList(BNode* node, gid_t group) const
{
    if (node->InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    return IsList(fList) ? WriteList(node->Descriptor(), kAccessList,
                                     group == fGroup ? fList : CutForOtherGroup(fList))
                         : status_t(B_BAD_VALUE);
}

status_t BNodeAccess::RemoveList(BNode* node)
{
    if (node->InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    // Asking costs next to nothing; removing one that is not there may be written to the medium.
    std::string list;
    status_t status = ReadList(node->Descriptor(), kAccessList, &list);
    if (status != B_OK || list.empty()) {
        return status;
    }
    struct stat st;
    status = node->GetStat(&st);
    if (status == B_OK && (st.st_mode & S_IRWXG) != 0) {
        // What was the mask would be the group's rights.
        const mode_t others = RightsOf(list).group << 3 | (st.st_mode & ~mode_t(S_IRWXG));
        status = node->SetPermissions(others & st.st_mode);
    }
    return status == B_OK ? kits::sys::RemoveAttribute(node->Descriptor(), kAccessList) : status;
}

status_t BNodeAccess::CopyDefaultList(const BNode& from, BNode* to)
{
    if (from.InitCheck() != B_OK || to->InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    std::string list;
    const status_t status = ReadList(from.Descriptor(), kDefaultList, &list);
    if (status != B_OK || list.empty()) {
        return status;
    }
    if (!IsList(list)) {
        return B_BAD_VALUE;
    }
    gid_t group = 0;
    gid_t madeGroup = 0;
    const bool isSame =
        from.GetGroup(&group) == B_OK && to->GetGroup(&madeGroup) == B_OK && group == madeGroup;
    return WriteList(to->Descriptor(), kDefaultList, isSame ? list : CutForOtherGroup(list));
}

status_t BNodeAccess::CheckLists(const BNode& from, BNode* made)
{
    if (from.InitCheck() != B_OK || made->InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    for (const char* name : {kAccessList, kDefaultList}) {
        std::string list;
        status_t status = ReadList(from.Descriptor(), name, &list);
        if (status == B_OK && !list.empty()) {
            status = IsList(list) ? WriteList(made->Descriptor(), name, Masked(list))
                                  : status_t(B_UNSUPPORTED);
            if (status == B_OK) {
                status = kits::sys::RemoveAttribute(made->Descriptor(), name);
            }
        }
        if (status != B_OK) {
            return status;
        }
    }
    return B_OK;
}

mode_t current_umask()
{
    constexpr mode_t kNobody = S_IRWXG | S_IRWXO;
    constexpr char kKey[] = "\nUmask:";
    const kits::UniqueFd file(
        kits::sys::OpenAt(kits::sys::kWorkingDirectory, "/proc/self/status", O_RDONLY));
    char text[512]; // it stands among the first lines
    const ssize_t length =
        file.IsOpen() ? kits::sys::ReadAt(file.Get(), text, sizeof(text) - 1, 0) : file.Get();
    if (length < 0) {
        return kNobody;
    }
    text[length] = '\0';
    const char* found = std::strstr(text, kKey);
    return found == nullptr
               ? kNobody
               : static_cast<mode_t>(std::strtoul(found + sizeof(kKey) - 1, nullptr, 8));
}
