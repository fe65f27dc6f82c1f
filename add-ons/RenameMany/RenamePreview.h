#pragma once

#include "RenameMany/NewNames.h"

#include <atomic>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

namespace rename_many {

/// What is known of a folder that entries lie in.
struct FolderNames
{
    std::unordered_set<std::string> keys; // of all names in it; see KeyOf()
    bool foldsCase = false;               // "a" and "A" are one name there
};

/// What names are compared by: equal keys cannot be in one folder.
std::string KeyOf(const FolderNames& folder, const std::string& name);

/// Why an entry cannot have its new name.
enum class Fault : uint8 {
    kNone,
    kEmpty,   // no name
    kDots,    // "." and ".." are the folder itself and the one above
    kSlash,   // "/" ends names
    kTooLong, // more than 255 bytes
    kTaken,   // the folder has such an entry, which stays as it is
    kTwice,   // another selected entry would be called so, too
};

/// All new names, with what is wrong with them.
struct Preview
{
    std::shared_ptr<const Entries> entries; // never null
    std::vector<std::string> names;         // the new ones; of an entry that is gone its own
    std::vector<Fault> faults;
    size_t changed = 0; // how many get another name
    size_t gone = 0;
    size_t bad = 0;    // how many have a fault
    std::string error; // of the rules: then no name is new

    /// Whether there is something to do, and nothing in the way.
    bool CanRename() const { return error.empty() && bad == 0 && changed > 0; }
};

/// Makes the new names and looks for what is wrong with them. Null when `isStopped` became true.
std::shared_ptr<const Preview> MakePreview(std::shared_ptr<const Entries> entries,
                                           const std::vector<FolderNames>& folders,
                                           const Rules& rules, const std::atomic<bool>& isStopped);

} // namespace rename_many
