#pragma once

#include <SupportDefs.h>

#include <string>

namespace add_ons {

/// What a person wants to be made.
struct ArchiveWish
{
    std::string name; // without its ending
    size_t format = 0;
};

/// Asks for name and format, in a window of its own; `wish` holds what is offered. False when the
/// person wants none. Thread: that of the work, which waits.
bool AskForArchive(ArchiveWish* wish);

} // namespace add_ons
