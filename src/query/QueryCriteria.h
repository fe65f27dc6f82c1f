#pragma once

#include <SupportDefs.h>

#include <ctime>
#include <string>

class BQuery;

namespace norvane {

/// The choices of the query window's menus, which are their messages' codes, too.
enum QueryChoice : uint32 {
    kHours = 2060,
    kDays = 2061,
    kWeeks = 2062,
    kYears = 2063,
    kSizeEqual = 2070,
    kSizeAtLeast = 2071, // " > ", which includes equality as " < " does
    kSizeAtMost = 2072,
    kBytes = 2080,
    kKilobytes = 2081,
    kMegabytes = 2082,
    kNameContains = 2090,
    kNameIsNot = 2091,
    kNameIs = 2092,
    kNameStartsWith = 2093,
    kNameEndsWith = 2094,
};

/// What the query window's controls say: texts as they were typed.
struct QueryCriteria
{
    struct Date
    {
        std::string month;
        std::string day;
        std::string year;
    };

    std::string name;
    uint32 nameOperator = kNameContains;

    bool hasSize = false;
    std::string size;
    uint32 sizeOperator = kSizeAtMost;
    uint32 sizeUnit = kKilobytes;

    bool isDateBetween = false;
    Date first;
    Date second;
    bool isNotOlderThan = false; // counts unless isDateBetween
    std::string age;
    uint32 ageUnit = kDays;
};

enum class QueryFault : uint8 {
    kNone,
    kNoCriterion,
    kDatesInOrder, // the second date is not after the first, or one of them is none
};

/// Pushes the criteria as terms. A name of one byte leaves its term and the next one side by side,
/// which means the same as joining them. `now` is in seconds since 1970. Text that is no number
/// counts as 0; numbers are cut to what 64 bits hold. After a fault what was pushed is of no use.
QueryFault PushCriteria(const QueryCriteria& criteria, time_t now, BQuery* query);

} // namespace norvane
