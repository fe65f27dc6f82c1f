// The attributes of a BNode, kept as extended attributes of the file system.

#include "AttributeStatus.h"
#include "SystemCalls.h"

#include <Node.h>
#include <NodeAccess.h>

#include <algorithm>
#include <cstring>
#include <string_view>

namespace {

constexpr std::string_view kPrefix = "user.norvane.";
constexpr std::string_view kGivenPrefix = "user.";
constexpr std::string_view kListPrefix = "system.posix_acl_";

// An attribute's value starts with its type, least significant byte first.
constexpr size_t kTypeBytes = 4;

bool IsAttributeName(const char* name)
{
    return name != nullptr && *name != '\0' && std::strlen(name) < B_ATTR_NAME_LENGTH;
}

std::string SystemName(const char* name)
{
    return std::string(kPrefix) + name;
}

/// The whole value, its type included.
status_t ReadValue(int node, const char* systemName, std::string* value)
{
    // It may grow between asking for its size and reading it.
    for (;;) {
        const ssize_t size = kits::sys::GetAttribute(node, systemName, nullptr, 0);
        if (size < 0) {
            return static_cast<status_t>(size);
        }
        value->resize(static_cast<size_t>(size) + 1);
        const ssize_t read =
            kits::sys::GetAttribute(node, systemName, value->data(), value->size());
        if (read >= 0) {
            value->resize(static_cast<size_t>(read));
            return B_OK;
        }
        if (read != B_BAD_VALUE) {
            return static_cast<status_t>(read);
        }
    }
}

/// All names the file system knows of the node, each followed by a zero.
status_t ListNames(int node, std::string* names)
{
    names->resize(512);
    for (;;) {
        const ssize_t size = kits::sys::ListAttributes(node, names->data(), names->size());
        if (size >= 0) {
            names->resize(static_cast<size_t>(size));
            return B_OK;
        }
        if (size != B_BAD_VALUE || names->size() >= 1u << 20) {
            return static_cast<status_t>(size);
        }
        names->resize(names->size() * 8);
    }
}

template<typename Visit>
void ForEachName(const std::string& names, Visit visit)
{
    for (size_t at = 0; at < names.size(); at += std::strlen(names.c_str() + at) + 1) {
        visit(names.c_str() + at);
    }
}

/// Whether an attribute was given to the node rather than made by the system.
bool IsGiven(std::string_view name)
{
    return name.starts_with(kGivenPrefix);
}

/// What failed outweighs what cannot be kept.
status_t Worse(status_t before, status_t now)
{
    return before == B_OK || (before == B_UNSUPPORTED && now != B_OK) ? now : before;
}

status_t CopyAttribute(int source, const char* name, int target)
{
    std::string value;
    const status_t status = ReadValue(source, name, &value);
    if (status == B_ENTRY_NOT_FOUND) {
        return B_OK; // it was removed since it was listed
    }
    return status != B_OK
               ? status
               : kits::KeepingStatus(
                     kits::sys::SetAttribute(target, name, value.data(), value.size()), target);
}

} // namespace

ssize_t BNode::WriteAttr(const char* name, type_code type, off_t offset, const void* buffer,
                         size_t size)
{
    if (!IsAttributeName(name) || offset != 0 || (buffer == nullptr && size > 0)) {
        return B_BAD_VALUE;
    }
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    status_t status = Settle();
    if (status != B_OK) {
        return status;
    }
    std::string value(kTypeBytes, '\0');
    for (size_t i = 0; i < kTypeBytes; ++i) {
        value[i] = static_cast<char>(type >> (8 * i));
    }
    if (size > 0) {
        value.append(static_cast<const char*>(buffer), size);
    }
    status =
        kits::sys::SetAttribute(fDescriptor, SystemName(name).c_str(), value.data(), value.size());
    RewindAttrs();
    return status == B_OK ? static_cast<ssize_t>(size) : status;
}

ssize_t BNode::ReadAttr(const char* name, type_code, off_t offset, void* buffer, size_t size) const
{
    if (!IsAttributeName(name) || offset < 0 || (buffer == nullptr && size > 0)) {
        return B_BAD_VALUE;
    }
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    std::string value;
    status_t status = Settle();
    if (status == B_OK) {
        status = ReadValue(fDescriptor, SystemName(name).c_str(), &value);
    }
    if (status != B_OK) {
        return status;
    }
    const size_t start = kTypeBytes + static_cast<size_t>(offset);
    if (value.size() < start) {
        return 0;
    }
    const size_t length = std::min(size, value.size() - start);
    if (length > 0) {
        std::memcpy(buffer, value.data() + start, length);
    }
    return static_cast<ssize_t>(length);
}

status_t BNode::RemoveAttr(const char* name)
{
    if (!IsAttributeName(name)) {
        return B_BAD_VALUE;
    }
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    const status_t status = Settle();
    RewindAttrs();
    return status == B_OK ? kits::sys::RemoveAttribute(fDescriptor, SystemName(name).c_str())
                          : status;
}

status_t BNode::GetAttrInfo(const char* name, attr_info* info) const
{
    if (!IsAttributeName(name) || info == nullptr) {
        return B_BAD_VALUE;
    }
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    std::string value;
    status_t status = Settle();
    if (status == B_OK) {
        status = ReadValue(fDescriptor, SystemName(name).c_str(), &value);
    }
    if (status != B_OK) {
        return status;
    }
    if (value.size() < kTypeBytes) {
        return B_BAD_VALUE; // not of our making
    }
    info->type = 0;
    for (size_t i = 0; i < kTypeBytes; ++i) {
        info->type |= type_code(static_cast<unsigned char>(value[i])) << (8 * i);
    }
    info->size = static_cast<off_t>(value.size() - kTypeBytes);
    return B_OK;
}

status_t BNode::GetNextAttrName(char* buffer)
{
    if (buffer == nullptr) {
        return B_BAD_VALUE;
    }
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    if (!fHasAttributeNames) {
        std::string names;
        const status_t status = ListNames(fDescriptor, &names);
        if (status != B_OK && status != B_UNSUPPORTED) {
            return status;
        }
        ForEachName(status == B_OK ? names : std::string(), [this](const char* name) {
            if (std::string_view(name).starts_with(kPrefix)) {
                fAttributeNames.emplace_back(name + kPrefix.size());
            }
        });
        fHasAttributeNames = true;
    }
    if (fNextAttribute >= fAttributeNames.size()) {
        return B_ENTRY_NOT_FOUND;
    }
    const std::string& name = fAttributeNames[fNextAttribute++];
    std::memcpy(buffer, name.c_str(), name.size() + 1); // the system's names are 255 bytes at most
    return B_OK;
}

void BNode::RewindAttrs()
{
    fAttributeNames.clear();
    fNextAttribute = 0;
    fHasAttributeNames = false;
}

int32 BNode::CountAttrs() const
{
    if (fStatus != B_OK || Settle() != B_OK) {
        return 0;
    }
    std::string names;
    if (ListNames(fDescriptor, &names) != B_OK) {
        return 0;
    }
    int32 count = 0;
    ForEachName(names, [&count](const char* name) {
        count += std::string_view(name).starts_with(kPrefix) ? 1 : 0;
    });
    return count;
}

status_t BNode::CopyAttrsFrom(const BNode& source)
{
    if (fStatus != B_OK || source.fStatus != B_OK) {
        return B_NO_INIT;
    }
    status_t status = Settle();
    std::string names;
    if (status == B_OK) {
        status = ListNames(source.fDescriptor, &names);
    }
    if (status != B_OK) {
        return status == B_UNSUPPORTED ? status_t(B_OK) : status; // there are none to take over
    }
    status_t worst = B_OK;
    ForEachName(names, [&](const char* name) {
        if (IsGiven(name)) {
            worst = Worse(worst, CopyAttribute(source.fDescriptor, name, fDescriptor));
        }
    });
    RewindAttrs();
    return worst;
}

status_t BNode::CheckAttrsFrom(const BNode& source)
{
    if (fStatus != B_OK || source.fStatus != B_OK) {
        return B_NO_INIT;
    }
    std::string names;
    status_t status = ListNames(source.fDescriptor, &names);
    if (status != B_OK) {
        return status == B_UNSUPPORTED ? status_t(B_OK) : status;
    }
    bool hasAttributes = false;
    bool hasLists = false;
    ForEachName(names, [&](const char* name) {
        hasAttributes |= IsGiven(name);
        hasLists |= std::string_view(name).starts_with(kListPrefix);
    });
    status = hasAttributes ? CopyAttrsFrom(source) : status_t(B_OK);
    return hasLists ? Worse(status, BNodeAccess::CheckLists(source, this)) : status;
}
