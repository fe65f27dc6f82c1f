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

/// Reads a listing into its entries, without "." and "..", in its order. Linear in its length.
std::vector<RemoteEntry> ParseListing(std::string_view listing);

} // namespace norvane
