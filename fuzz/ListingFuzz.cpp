// Listings as a hostile server may write them: whatever they hold, what is read of them keeps what
// an entry promises.

#include "ftp/client/RemoteEntry.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

void Require(bool condition, const char* what)
{
    if (!condition) {
        std::fprintf(stderr, "Broken: %s\n", what);
        std::abort();
    }
}

void Check(const norvane::RemoteEntry& entry)
{
    Require(!entry.name.empty() && entry.name != "." && entry.name != "..", "it has a name");
    Require(entry.name.size() <= 256 && entry.size.size() <= 28 && entry.date.size() <= 28 &&
                entry.permissions.size() <= 24,
            "nothing is longer than it may be");
    Require(entry.name.find('\n') == std::string::npos, "a name is of one line");
    const std::string_view used = entry.commandName;
    if (used.empty()) {
        return;
    }
    Require(used != "." && used != "..", "no command goes elsewhere");
    Require(used.find_first_of(std::string_view("/\0\r\n", 4)) == std::string_view::npos,
            "no command is broken");
    Require(entry.name.compare(0, used.size(), used) == 0, "commands use what is shown");
    Require(used == entry.name || entry.IsLink(), "only a link is called by a part of its line");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view listing(reinterpret_cast<const char*>(data), size);
    const auto lines = static_cast<size_t>(std::count(listing.begin(), listing.end(), '\n')) + 1;
    for (const auto end : {norvane::ListingEnd::kLineFeed, norvane::ListingEnd::kOther}) {
        const auto entries = norvane::ParseListing(listing, end);
        Require(entries.size() <= lines, "a line is one entry at most");
        std::for_each(entries.begin(), entries.end(), Check);
    }
    return 0;
}
