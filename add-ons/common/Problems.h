#pragma once

#include <SupportDefs.h>

#include <string>
#include <vector>

namespace add_ons {

/// What went wrong with single entries, told once at the end. Plain data.
class Problems
{
public:
    void Add(const std::string& name, const std::string& reason);
    bool IsEmpty() const { return fCount == 0; }
    int64 Count() const { return fCount; }
    /// One line for each of the first, then the number of further ones.
    std::string Text() const;

    /// Shows `heading` and the lines in an alert, and waits until it is read; nothing when there is
    /// nothing to tell. Thread: that of the work.
    void Tell(const char* title, const std::string& heading) const;

private:
    std::vector<std::string> fLines; // the first
    int64 fCount = 0;
};

/// A name as a line of an alert shows it: cut when it is long.
std::string CutName(const std::string& name);

/// Shows an alert with one button, and waits until it is read.
void Say(const char* title, const std::string& text);

} // namespace add_ons
