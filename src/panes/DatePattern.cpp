#include "panes/DatePattern.h"

#include <Autolock.h>
#include <Locker.h>

#include <array>
#include <ctime>
#include <map>
#include <memory>

namespace norvane {

namespace {

constexpr std::size_t kTextBytes = 256;

/// localtime_r without the look at the zone file that localtime makes at each call.
bool LocalTime(int64 seconds, std::tm& local)
{
    static const bool isZoneRead = [] {
        tzset();
        return true;
    }();
    const std::time_t time = static_cast<std::time_t>(seconds);
    return isZoneRead && localtime_r(&time, &local) != nullptr;
}

void PutTwoDigits(char* at, int number)
{
    at[0] = static_cast<char>('0' + number / 10 % 10);
    at[1] = static_cast<char>('0' + number % 10);
}

/// "%D %R" by hand: it is what nearly every row shows.
std::string DefaultText(const std::tm& local)
{
    std::string text = "00/00/00 00:00";
    PutTwoDigits(&text[0], local.tm_mon + 1);
    PutTwoDigits(&text[3], local.tm_mday);
    PutTwoDigits(&text[6], (local.tm_year % 100 + 100) % 100);
    PutTwoDigits(&text[9], local.tm_hour);
    PutTwoDigits(&text[12], local.tm_min);
    return text;
}

} // namespace

const DatePattern& DatePattern::For(const std::string& pattern)
{
    // Never destroyed: threads that wait for a disk go on when main() has ended.
    using Patterns = std::map<std::string, std::unique_ptr<const DatePattern>>;
    static BLocker& lock = *new BLocker("date patterns");
    static Patterns& patterns GUARDED_BY(lock) = *new Patterns;
    const BAutolock hold(lock);
    std::unique_ptr<const DatePattern>& slot = patterns[pattern];
    if (slot == nullptr) {
        slot.reset(new DatePattern(pattern));
    }
    return *slot;
}

DatePattern::DatePattern(const std::string& pattern)
    : fPattern(pattern), fIsDefault(pattern == kDefault)
{
}

std::string DatePattern::Format(int64 seconds) const
{
    std::tm local = {};
    if (!LocalTime(seconds, local)) {
        return "";
    }
    if (fIsDefault) {
        return DefaultText(local);
    }
    std::array<char, kTextBytes> text = {};
    // An empty result is also what a pattern without any output gives.
    const std::size_t length = std::strftime(text.data(), text.size(), fPattern.c_str(), &local);
    return std::string(text.data(), length);
}

} // namespace norvane
