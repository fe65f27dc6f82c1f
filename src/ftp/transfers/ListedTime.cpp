#include "ftp/transfers/ListedTime.h"

#include <cctype>
#include <cstdio>
#include <sstream>

namespace norvane {

namespace {

constexpr std::time_t kMinute = 60;
constexpr std::time_t kHour = 60 * kMinute;
constexpr std::time_t kDay = 24 * kHour;
// The zones that people live in.
constexpr std::time_t kWestOfGreenwich = 12 * kHour;
constexpr std::time_t kEastOfGreenwich = 14 * kHour;

/// From 1; 0 when it is none.
int MonthOf(const std::string& text)
{
    static const char* const kMonths[] = {"jan", "feb", "mar", "apr", "may", "jun",
                                          "jul", "aug", "sep", "oct", "nov", "dec"};
    std::string lower;
    for (const char letter : text) {
        lower += static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    }
    for (int month = 0; month < 12; month++) {
        if (lower == kMonths[month]) {
            return month + 1;
        }
    }
    return 0;
}

/// The number that is all of the text; -1 when it is none.
int NumberOf(const std::string& text)
{
    int number = 0;
    int length = 0;
    const bool isNumber = text.size() <= 4 &&
                          std::sscanf(text.c_str(), "%4d%n", &number, &length) == 1 &&
                          static_cast<size_t>(length) == text.size() && text[0] != '-';
    return isNumber ? number : -1;
}

std::time_t TimeOf(int year, int month, int day, std::time_t ofDay)
{
    // Days since 1970, with years that begin in March so that the odd day is the last.
    const int64 years = month <= 2 ? year - 1 : year;
    const int64 era = years / 400;
    const int64 yearOfEra = years - era * 400;
    const int64 dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const int64 dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return static_cast<std::time_t>(era * 146'097 + dayOfEra - 719'468) * kDay + ofDay;
}

int YearOf(std::time_t time)
{
    struct tm parts = {};
    gmtime_r(&time, &parts);
    return parts.tm_year + 1900;
}

} // namespace

std::optional<ListedTime> ReadListedTime(const std::string& date, std::time_t now)
{
    std::string first;
    std::string second;
    std::string last;
    std::istringstream(date) >> first >> second >> last;
    const bool isMonthFirst = MonthOf(first) != 0;
    const int month = MonthOf(isMonthFirst ? first : second);
    const int day = NumberOf(isMonthFirst ? second : first);
    if (month == 0 || day < 1 || day > 31) {
        return std::nullopt;
    }
    const size_t colon = last.find(':');
    if (colon == std::string::npos) {
        const int year = NumberOf(last);
        if (year < 1970) {
            return std::nullopt;
        }
        const std::time_t begin = TimeOf(year, month, day, 0);
        return ListedTime{begin - kEastOfGreenwich, begin + kDay - 1 + kWestOfGreenwich};
    }
    const int hour = NumberOf(last.substr(0, colon));
    const int minute = NumberOf(last.substr(colon + 1, 2));
    if (hour < 0 || hour > 23 || minute < 0 || minute > 59) {
        return std::nullopt;
    }
    // The year is left out for what is younger than that: the last such day, clocks being what
    // they are.
    const std::time_t ofDay = hour * kHour + minute * kMinute;
    std::time_t time = TimeOf(YearOf(now) + 1, month, day, ofDay);
    for (int year = YearOf(now); time > now + 2 * kDay; year--) {
        time = TimeOf(year, month, day, ofDay);
    }
    return ListedTime{time - kEastOfGreenwich, time + kMinute - 1 + kWestOfGreenwich};
}

} // namespace norvane
