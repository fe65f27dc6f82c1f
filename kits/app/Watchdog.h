#pragma once

#include <SupportDefs.h>

#include <memory>

// A check of development and test builds (KITS_GUARDS), empty otherwise: of a window that leaves a
// message waiting for two seconds and takes none from its queue, the stacks of all threads are
// printed. KITS_WATCHDOG=abort in the environment ends the program then. A window whose thread said
// that it is at work for long (LongWork, SetLongRunning) is left in peace.

namespace kits {

#ifdef KITS_GUARDS

/// Watches the windows from a thread of its own for as long as it lives.
class Watchdog
{
public:
    /// Units: `limit` in microseconds of silence.
    explicit Watchdog(bigtime_t limit = 2000000);
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

private:
    class Watch;
    std::unique_ptr<Watch> fWatch;
};

#else

/// Watches nothing in builds without guards.
class Watchdog
{
public:
    Watchdog() {} // by hand: a member of a type that does nothing at all is told to be unused
};

#endif

} // namespace kits
