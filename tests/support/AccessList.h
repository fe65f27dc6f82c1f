#pragma once

#include <cstdint>
#include <string>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/xattr.h>
#include <vector>

/// An access list as the system keeps it, built and read by the tests themselves.
struct AccessList
{
    struct Named
    {
        unsigned who;
        unsigned rights;
    };

    unsigned owner = 6;
    std::vector<Named> users = {};
    unsigned group = 0;
    std::vector<Named> groups = {};
    unsigned mask = 7;
    unsigned others = 0;

    std::string Bytes() const
    {
        std::string bytes("\2\0\0\0", 4);
        const auto add = [&bytes](unsigned kind, unsigned rights, unsigned who) {
            for (const unsigned part : {kind, rights, who & 0xffffu, who >> 16}) {
                bytes += static_cast<char>(part & 0xff);
                bytes += static_cast<char>(part >> 8);
            }
        };
        add(0x01, owner, ~0u);
        for (const Named& user : users) {
            add(0x02, user.rights, user.who);
        }
        add(0x04, group, ~0u);
        for (const Named& named : groups) {
            add(0x08, named.rights, named.who);
        }
        add(0x10, mask, ~0u);
        add(0x20, others, ~0u);
        return bytes;
    }

    /// False where the file system keeps none.
    bool GiveTo(const std::string& path, const char* which = "access") const
    {
        const std::string bytes = Bytes();
        return setxattr(path.c_str(), Name(which).c_str(), bytes.data(), bytes.size(), 0) == 0;
    }

    static std::string Name(const char* which) { return std::string("system.posix_acl_") + which; }
    /// The bytes of the list that a node has; "" for none.
    static std::string Of(const std::string& path, const char* which = "access")
    {
        char bytes[1024];
        const ssize_t size = getxattr(path.c_str(), Name(which).c_str(), bytes, sizeof(bytes));
        return size < 0 ? std::string() : std::string(bytes, static_cast<size_t>(size));
    }
};

/// Somebody who is neither the owner of what is looked at nor root.
struct Person
{
    unsigned user;
    std::vector<unsigned> groups;

    bool IsIn(unsigned group) const
    {
        for (const unsigned mine : groups) {
            if (mine == group) {
                return true;
            }
        }
        return false;
    }

    /// Whether the bits alone of a node of `group` let this person do `right` (4, 2 or 1).
    bool May(unsigned right, mode_t mode, unsigned group) const
    {
        return ((IsIn(group) ? mode >> 3 : mode) & right) != 0;
    }

    /// The same by a list, in the order in which the system looks.
    bool May(unsigned right, const AccessList& list, unsigned group) const
    {
        for (const AccessList::Named& named : list.users) {
            if (named.who == user) {
                return (named.rights & list.mask & right) != 0;
            }
        }
        bool isInAny = false;
        unsigned rights = 0;
        if (IsIn(group)) {
            isInAny = true;
            rights |= list.group & list.mask;
        }
        for (const AccessList::Named& named : list.groups) {
            if (IsIn(named.who)) {
                isInAny = true;
                rights |= named.rights & list.mask;
            }
        }
        return ((isInAny ? rights : list.others) & right) != 0;
    }
};
