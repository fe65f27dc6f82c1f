#pragma once

#include "SystemCalls.h"

#include <fcntl.h>

namespace kits {

/// The times of a stat record as utimensat() takes them; what is not to be set stays as it is.
struct TimesToSet
{
    TimesToSet(const struct stat& st, bool setsAccessed, bool setsModified)
    {
        times[0] = st.st_atim;
        times[1] = st.st_mtim;
        if (!setsAccessed) {
            times[0].tv_nsec = UTIME_OMIT;
        }
        if (!setsModified) {
            times[1].tv_nsec = UTIME_OMIT;
        }
    }

    struct timespec times[2];
};

} // namespace kits
