#pragma once

#include <SupportDefs.h>

#include <string>
#include <sys/stat.h>
#include <sys/types.h>
#include <vector>

class BNode;

/// What a person is shown of a node besides its name and its contents, as it was when it was read.
///
/// An extension of the platform: the room that a node takes, when it was made, its access lists and
/// the extended attributes that programs and people gave it. Unset, or after a failure, it has
/// nothing of that. Reading may wait for a disk. Thread: as a plain value.
class BNodeDetails
{
public:
    /// One line of an access list.
    struct Right
    {
        /// Whom it is about.
        enum class Who : uint8 {
            kOwner,
            kUser,
            kGroup, // the owning one
            kNamedGroup,
            kMask, // bounds what all but the owner and others have
            kOthers,
        };

        Who who = Who::kOthers; // it is about
        uint32 id = 0;          // of a kUser or kNamedGroup
        uint8 rights = 0;       // 4 to read, 2 to write, 1 to execute
        bool isNew = false;     // what new entries of a folder get
    };

    /// One of the attributes whose system name begins with "user.".
    struct Attribute
    {
        std::string name;      // with "user."
        off_t size = 0;        // bytes
        std::string beginning; // of the value, at most kShownBytes
    };

    /// How much of an attribute's value is kept.
    static constexpr size_t kShownBytes = 256;

    /// Holds nothing, or reads what SetTo() does; InitCheck() tells what became of it.
    BNodeDetails() = default;
    explicit BNodeDetails(const BNode& node);

    /// Reads it all. What a file system does not have is no error, nor what may not be read.
    /// Errors: B_NO_INIT for an unset node, those of the stat record.
    status_t SetTo(const BNode& node);
    /// Errors: B_NO_INIT, or what the last SetTo() said.
    status_t InitCheck() const { return fStatus; }

    /// The stat record. All of it is 0 when unset.
    const struct stat& Record() const { return fRecord; }
    /// What the node takes on its volume. Units: bytes.
    off_t OccupiedBytes() const;
    /// When the node was made. Units: seconds since 1970. Errors: B_NO_INIT; B_UNSUPPORTED where
    /// nobody noted it.
    status_t GetBirthTime(time_t* made) const;
    /// The access list, and behind it that for new entries; empty where the mode says all.
    const std::vector<Right>& AccessList() const { return fRights; }
    /// In byte order of their names.
    const std::vector<Attribute>& Attributes() const { return fAttributes; }

private:
    status_t fStatus = B_NO_INIT;
    struct stat fRecord = {};
    time_t fMade = 0;
    bool fHasBirth = false;
    std::vector<Right> fRights;
    std::vector<Attribute> fAttributes;
};

/// The name of a user; empty when the system knows none. May ask another machine. An
/// extension of the platform.
std::string user_name(uid_t user);
/// The same for a group. An extension of the platform.
std::string group_name(gid_t group);

/// When an open node was made, which tells it from another one that got its number later. Units:
/// nanoseconds since 1970. Errors: B_NO_INIT; B_UNSUPPORTED where nobody noted it. An extension of
/// the platform.
status_t node_birth(const BNode& node, uint64* nanoseconds);

/// The bytes that a node with this record takes on its volume. An extension of the platform.
off_t occupied_bytes(const struct stat& record);
