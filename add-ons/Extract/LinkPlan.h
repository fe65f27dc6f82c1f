#pragma once

#include "Extract/SafeTree.h"

#include <map>
#include <string>

namespace add_ons {

/// The links of an archive, before any of them is made, judged by where they lead together.
///
/// One alone may look harmless and lead outside through another. Plain data.
class LinkPlan
{
public:
    /// Notes a link; the first of one path counts. False for a second.
    bool Add(const Steps& path, const std::string& text);
    const std::map<Steps, std::string>& All() const { return fLinks; }

    /// Whether a link stays in the folder, on every step of the way and through all others. It may
    /// lead to nothing; it may not lead round in circles.
    bool StaysInside(const Steps& path) const;

private:
    std::map<Steps, std::string> fLinks;
};

} // namespace add_ons
