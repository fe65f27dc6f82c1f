#include <NodeDetails.h>

#include "SystemCalls.h"

#include <Node.h>

#include <algorithm>
#include <cstring>
#include <grp.h>
#include <optional>
#include <pwd.h>

namespace {

using Right = BNodeDetails::Right;

constexpr const char* kAccessList = "system.posix_acl_access";
constexpr const char* kDefaultList = "system.posix_acl_default";
constexpr const char* kGiven = "user.";
constexpr size_t kMostBytes = size_t{64} * 1024; // of a value or of all names, by the system
constexpr off_t kBlockBytes = 512;               // of st_blocks, everywhere

std::string ReadValue(int node, const char* name)
{
    std::string value(kMostBytes, '\0');
    const ssize_t size = kits::sys::GetAttribute(node, name, value.data(), value.size());
    value.resize(size < 0 ? 0 : static_cast<size_t>(size));
    return value;
}

// An access list is a version, then one record for each line: two bytes of the kind, two of the
// rights, four of who, each number with its least significant byte first.
constexpr size_t kHeaderBytes = 4;
constexpr size_t kEntryBytes = 8;
constexpr uint32 kVersion = 2;

uint32 NumberAt(const std::string& list, size_t at, size_t bytes)
{
    uint32 number = 0;
    for (size_t i = 0; i < bytes; i++) {
        number |= uint32(static_cast<unsigned char>(list[at + i])) << (8 * i);
    }
    return number;
}

std::optional<Right::Who> WhoOf(uint32 kind)
{
    switch (kind) {
    case 0x01:
        return Right::Who::kOwner;
    case 0x02:
        return Right::Who::kUser;
    case 0x04:
        return Right::Who::kGroup;
    case 0x08:
        return Right::Who::kNamedGroup;
    case 0x10:
        return Right::Who::kMask;
    case 0x20:
        return Right::Who::kOthers;
    default:
        return std::nullopt;
    }
}

void AddRights(const std::string& list, bool isNew, std::vector<Right>* rights)
{
    if (list.size() < kHeaderBytes || NumberAt(list, 0, 4) != kVersion) {
        return;
    }
    for (size_t at = kHeaderBytes; at + kEntryBytes <= list.size(); at += kEntryBytes) {
        if (const auto who = WhoOf(NumberAt(list, at, 2))) {
            const auto bits = static_cast<uint8>(NumberAt(list, at + 2, 2) & 7);
            rights->push_back({*who, NumberAt(list, at + 4, 4), bits, isNew});
        }
    }
}

std::vector<BNodeDetails::Attribute> ReadAttributes(int node)
{
    std::vector<BNodeDetails::Attribute> attributes;
    std::string names(kMostBytes, '\0');
    const ssize_t size = kits::sys::ListAttributes(node, names.data(), names.size());
    names.resize(size < 0 ? 0 : static_cast<size_t>(size));
    for (size_t at = 0; at < names.size(); at += std::strlen(names.c_str() + at) + 1) {
        const std::string name = names.c_str() + at;
        if (!name.starts_with(kGiven)) {
            continue;
        }
        std::string value = ReadValue(node, name.c_str());
        const auto bytes = static_cast<off_t>(value.size());
        value.resize(std::min(value.size(), BNodeDetails::kShownBytes));
        attributes.push_back({name, bytes, std::move(value)});
    }
    std::sort(attributes.begin(), attributes.end(),
              [](const auto& a, const auto& b) { return a.name < b.name; });
    return attributes;
}

/// The name in the record that `look` finds, however large that is.
template<typename Record, typename Look>
std::string NameOf(Look look, char* Record::*name)
{
    constexpr size_t kMostRecordBytes = size_t{1} << 20; // of groups with very many members
    for (std::string bytes(1024, '\0'); bytes.size() <= kMostRecordBytes;
         bytes.resize(bytes.size() * 4)) {
        Record record = {};
        Record* found = nullptr;
        const int error = look(&record, bytes.data(), bytes.size(), &found);
        if (error != ERANGE) {
            return error == 0 && found != nullptr ? found->*name : std::string();
        }
    }
    return {};
}

} // namespace

BNodeDetails::BNodeDetails(const BNode& node)
{
    SetTo(node);
}

status_t BNodeDetails::SetTo(const BNode& node)
{
    *this = BNodeDetails();
    if (node.InitCheck() != B_OK) {
        return fStatus;
    }
    const kits::UniqueFd open(node.Dup());
    fStatus = open.IsOpen() ? kits::sys::Stat(open.Get(), &fRecord) : open.Get();
    if (fStatus != B_OK) {
        fRecord = {};
        return fStatus;
    }
    uint64 birth = 0;
    fHasBirth = kits::sys::BirthOf(open.Get(), &birth) == B_OK;
    fMade = static_cast<time_t>(birth / 1'000'000'000);
    if (S_ISLNK(fRecord.st_mode)) {
        return fStatus; // has no lists and no attributes of that kind
    }
    AddRights(ReadValue(open.Get(), kAccessList), false, &fRights);
    if (S_ISDIR(fRecord.st_mode)) {
        AddRights(ReadValue(open.Get(), kDefaultList), true, &fRights);
    }
    fAttributes = ReadAttributes(open.Get());
    return fStatus;
}

off_t BNodeDetails::OccupiedBytes() const
{
    return occupied_bytes(fRecord);
}

status_t BNodeDetails::GetBirthTime(time_t* made) const
{
    if (made == nullptr) {
        return B_BAD_VALUE;
    }
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    if (!fHasBirth) {
        return B_UNSUPPORTED;
    }
    *made = fMade;
    return B_OK;
}

std::string user_name(uid_t user)
{
    return NameOf<passwd>(
        [user](passwd* record, char* bytes, size_t size, passwd** found) {
            return ::getpwuid_r(user, record, bytes, size, found);
        },
        &passwd::pw_name);
}

std::string group_name(gid_t group)
{
    return NameOf<::group>(
        [group](struct group* record, char* bytes, size_t size, struct group** found) {
            return ::getgrgid_r(group, record, bytes, size, found);
        },
        &::group::gr_name);
}

status_t node_birth(const BNode& node, uint64* nanoseconds)
{
    if (nanoseconds == nullptr) {
        return B_BAD_VALUE;
    }
    if (node.InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    const kits::UniqueFd open(node.Dup());
    return open.IsOpen() ? kits::sys::BirthOf(open.Get(), nanoseconds) : open.Get();
}

off_t occupied_bytes(const struct stat& record)
{
    return static_cast<off_t>(record.st_blocks) * kBlockBytes;
}
