#pragma once

#include <SupportDefs.h>

#include <string>
#include <vector>

namespace norvane {

/// What an operation could not handle whole, gathered so that the person is told once, at its end.
class ProblemList
{
public:
    void Add(const std::string& name, const std::string& reason);
    bool IsEmpty() const { return fCount == 0; }
    int64 Count() const { return fCount; }

    /// The alert's text: up to twenty lines of name and reason, then how many more there were.
    std::string Text() const;
    /// Shows the text in an info alert and waits for it; nothing when the list is empty.
    void Show() const;

private:
    std::vector<std::string> fLines; // the first twenty
    int64 fCount = 0;
};

/// A name as text to read: a long one is cut, what has no shape has a sign.
std::string ShownName(const std::string& name);
/// What a status code means, as the second half of "name: reason".
const char* ReasonFor(status_t status);

} // namespace norvane
