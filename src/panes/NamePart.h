#pragma once

#include <SupportDefs.h>

#include <string>
#include <vector>

namespace norvane {

/// A text that names are looked through for. Case counts when there is a capital letter in it.
///
/// Plain data.
class NamePart
{
public:
    explicit NamePart(std::string text);

    const std::string& Text() const { return fText; }
    /// Whether a name holds the text; each holds an empty one.
    bool IsIn(const char* name) const;
    /// Whether no name holds this text that does not hold the other.
    bool IsNarrowerThan(const NamePart& other) const;

private:
    bool IsFoldedIn(const char* name) const;
    bool IsFoldedAsciiIn(const char* name) const;

    std::string fText;
    std::vector<uint32> fFolded; // empty where case counts
    bool fIsAscii = false;
};

} // namespace norvane
