#pragma once

#include <SupportDefs.h>

namespace norvane {

/// How far a search is.
struct SearchCounts
{
    int32 examined = 0; // files whose contents were looked at
    int32 found = 0;
    int32 unreadable = 0;

    SearchCounts& operator+=(const SearchCounts& more)
    {
        examined += more.examined;
        found += more.found;
        unreadable += more.unreadable;
        return *this;
    }
};

} // namespace norvane
