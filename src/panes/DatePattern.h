#pragma once

#include <SupportDefs.h>

#include <string>

namespace norvane {

/// A strftime pattern of the Date column, shared by all rows that were built with it.
///
/// Thread: any. Ownership: patterns live as long as the program; there are as many as a person
/// chose.
class DatePattern
{
public:
    static constexpr const char* kDefault = "%D %R";

    /// The one object for that pattern.
    static const DatePattern& For(const std::string& pattern);

    DatePattern(const DatePattern&) = delete;
    DatePattern& operator=(const DatePattern&) = delete;

    /// The local date and time, at most 255 characters.
    /// Units: seconds since 1970.
    std::string Format(int64 seconds) const;
    const std::string& Pattern() const { return fPattern; }

private:
    explicit DatePattern(const std::string& pattern);

    const std::string fPattern;
    const bool fIsDefault;
};

} // namespace norvane
