#pragma once

#include <Entry.h>

#include <string>
#include <sys/stat.h>
#include <vector>

namespace norvane {

struct Tally;

/// One line of what a person is shown: what it is about, and what it says.
struct Fact
{
    std::string label;
    std::string value;

    bool operator==(const Fact&) const = default;
};

/// What is known of one entry besides what it contains.
struct EntryFacts
{
    struct stat record = {};
    std::string kind;        // for people
    std::vector<Fact> place; // where it is and where it leads
    std::vector<Fact> rest;  // times, owner, numbers, the volume
    std::vector<Fact> more;  // access list and attributes
};

/// Reads all of an entry. Errors: those of its stat record; `facts` is unchanged then. Thread: any
/// that may wait for a disk.
status_t ReadFacts(const entry_ref& ref, EntryFacts* facts);

/// The lines about an entry, in their order. `contents` (may be null) is what is in a folder so
/// far, `isCounted` that this is all.
std::vector<Fact> LinesOf(const EntryFacts& facts, const Tally* contents, bool isCounted);
/// The same of several entries: `chosen` they themselves, `contents` what is in those that are
/// folders.
std::vector<Fact> LinesOf(const Tally& chosen, const Tally& contents, bool isCounted);

} // namespace norvane
