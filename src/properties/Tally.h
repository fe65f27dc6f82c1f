#pragma once

#include "properties/ModeChange.h"

#include <SupportDefs.h>

#include <map>
#include <string>
#include <sys/stat.h>

namespace norvane {

/// How many entries there are of each kind, what they take, and which modes they have.
struct Tally
{
    int64 files = 0;
    int64 folders = 0;
    int64 links = 0;
    int64 others = 0;
    int64 bytes = 0;               // of files
    int64 occupiedBytes = 0;       // of all
    int64 unreadable = 0;          // entries that could not be looked at
    std::map<mode_t, int64> modes; // kind and permissions, and how many have them

    void Add(const struct stat& record);
    void Add(const Tally& other);
    int64 Count() const { return files + folders + links + others; }
    /// "3 files, 1 folder, 2 links": what there is none of is left out; "nothing" for none at all.
    std::string Text() const;
    /// How many entries in folders a change would give another mode.
    int64 ChangedBy(const ModeChange& change) const;
};

/// A number with a comma between each three digits.
std::string GroupedNumber(int64 number);
/// "1,234 files": the number and what there are of.
std::string Counted(int64 count, const char* one, const char* many);
/// "1,234,567 bytes (1.2 MiB)".
std::string SizeInFull(int64 bytes);

} // namespace norvane
