#pragma once

#include <SupportDefs.h>

#include <string>
#include <string_view>
#include <vector>

namespace norvane {

/// One line of a server's listing.
struct RemoteEntry
{
    std::string name;        // as it is shown: of a link the whole rest of the line
    std::string size;        // decimal digits, as the server wrote them
    std::string date;        // month, day, and time or year, as the server wrote them
    std::string permissions; // the first character says what it is: 'd', 'l', '-', ...
    std::string commandName; // what commands call it; "" when it can be shown and never used

    bool IsFolder() const { return !permissions.empty() && permissions.front() == 'd'; }
    bool IsLink() const { return !permissions.empty() && permissions.front() == 'l'; }
};

/// What a listing ended with when it arrived. Its text alone does not say: whoever receives one
/// takes away its last byte, whatever that was.
enum class ListingEnd : uint8 {
    kLineFeed,
    kOther, // the last line has lost a byte; without a line feed before it there are no lines
};

/// Reads a listing, without its last byte, into its entries, without "." and "..", in its order.
/// Linear in its length.
///
/// An entry that is not shown whole, or whose columns are not where they are looked for, may have
/// the name of another one: it has no commandName.
std::vector<RemoteEntry> ParseListing(std::string_view listing,
                                      ListingEnd end = ListingEnd::kLineFeed);

} // namespace norvane
