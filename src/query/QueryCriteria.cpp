#include "query/QueryCriteria.h"

#include <Query.h>

#include <charconv>
#include <climits>
#include <cmath>
#include <limits>
#include <string_view>

namespace norvane {

namespace {

constexpr int64 kLargest = std::numeric_limits<int64>::max();

int64 NumberFrom(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(" \t+"), text.size()));
    int64 number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc::result_out_of_range) {
        return text[0] == '-' ? -kLargest : kLargest;
    }
    return number;
}

int64 Times(int64 number, int64 unit)
{
    int64 product = 0;
    if (__builtin_mul_overflow(number, unit, &product)) {
        return number < 0 ? -kLargest : kLargest;
    }
    return product;
}

/// A number below or above what a date's field holds is cut to it: no such year exists either.
int Field(const std::string& text, int offset)
{
    constexpr int64 kMost = INT_MAX / 2;
    const int64 number = NumberFrom(text);
    return static_cast<int>(number < -kMost ? -kMost : (number > kMost ? kMost : number)) - offset;
}

/// Midnight of that day by the local clock; false when there is no such time.
bool Midnight(const QueryCriteria::Date& date, time_t* midnight)
{
    std::tm fields = {};
    fields.tm_mon = Field(date.month, 1);
    fields.tm_mday = Field(date.day, 0);
    fields.tm_year = Field(date.year, 1900);
    fields.tm_wday = -1; // stays so when there is none
    *midnight = std::mktime(&fields);
    return fields.tm_wday >= 0;
}

int64 SecondsOf(const QueryCriteria& criteria)
{
    const int64 age = NumberFrom(criteria.age);
    switch (criteria.ageUnit) {
    case kHours:
        return Times(age, 3600);
    case kDays:
        return Times(age, 86400);
    case kWeeks:
        return Times(age, 604800);
    default:
        return Times(age, 31557600); // 365.25 days
    }
}

int64 BytesOf(const QueryCriteria& criteria)
{
    const int64 size = NumberFrom(criteria.size);
    switch (criteria.sizeUnit) {
    case kBytes:
        return size;
    case kKilobytes:
        return Times(size, 1024);
    default:
        return Times(size, 1048576);
    }
}

query_op NameOperation(uint32 choice)
{
    switch (choice) {
    case kNameIsNot:
        return B_NE;
    case kNameIs:
        return B_EQ;
    case kNameStartsWith:
        return B_BEGINS_WITH;
    case kNameEndsWith:
        return B_ENDS_WITH;
    default:
        return B_CONTAINS;
    }
}

query_op SizeOperation(uint32 choice)
{
    return choice == kSizeEqual ? B_EQ : (choice == kSizeAtLeast ? B_GE : B_LE);
}

void PushTime(time_t time, query_op operation, BQuery* query)
{
    query->PushAttr("last_modified");
    query->PushInt64(time);
    query->PushOp(operation);
}

} // namespace

QueryFault PushCriteria(const QueryCriteria& criteria, time_t now, BQuery* query)
{
    const bool joinsName = criteria.name.size() > 1;
    bool isValid = false;
    if (!criteria.name.empty()) {
        isValid = true;
        query->PushAttr("name");
        query->PushString(criteria.name.c_str());
        query->PushOp(NameOperation(criteria.nameOperator));
    }
    if (criteria.hasSize) {
        isValid = true;
        query->PushAttr("size");
        query->PushInt64(BytesOf(criteria));
        query->PushOp(SizeOperation(criteria.sizeOperator));
        if (joinsName) {
            query->PushOp(B_AND);
        }
    }
    if (criteria.isDateBetween) {
        isValid = true;
        time_t first = 0;
        time_t second = 0;
        if (!Midnight(criteria.first, &first) || !Midnight(criteria.second, &second) ||
            first >= second) {
            return QueryFault::kDatesInOrder;
        }
        PushTime(first, B_GE, query);
        PushTime(second, B_LE, query);
        query->PushOp(B_AND);
    } else if (criteria.isNotOlderThan) {
        isValid = true;
        int64 oldest = 0;
        if (__builtin_sub_overflow(int64{now}, SecondsOf(criteria), &oldest)) {
            oldest = -kLargest;
        }
        PushTime(oldest, B_GE, query);
    }
    if ((criteria.isDateBetween || criteria.isNotOlderThan) && (joinsName || criteria.hasSize)) {
        query->PushOp(B_AND);
    }
    return isValid ? QueryFault::kNone : QueryFault::kNoCriterion;
}

} // namespace norvane
