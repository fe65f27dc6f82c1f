#pragma once

#include <SupportDefs.h>

#include <ctime>
#include <optional>
#include <string>

namespace norvane {

/// When a listed entry was changed, as far as its line tells: between two moments. Lines say
/// neither the year of young entries nor the zone that the server lives in.
struct ListedTime
{
    std::time_t earliest;
    std::time_t latest;
};

/// Reads the date of a listing's line ("Jan 14 12:00", "Jan 14  2020"); nothing when that is in
/// other words. `now` decides the year of a line without.
std::optional<ListedTime> ReadListedTime(const std::string& date, std::time_t now);

} // namespace norvane
