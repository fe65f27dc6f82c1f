#pragma once

#include <SupportDefs.h>

namespace kits {

/// When an input event happened, in system_time(). A busy program takes events late: what was
/// pressed before a question could be read does not answer it because of that.
///
/// The events' own clock began anywhere. How far it is from ours tells the least delay among the
/// events of the last while. Thread: the server's.
class EventClock
{
public:
    /// For an event that carries `milliseconds` (0: nothing) and is taken at `now`. Never before
    /// the moment it happened, after `now`, or before an earlier event.
    bigtime_t TimeOf(uint64 milliseconds, bigtime_t now);

private:
    void Note(bigtime_t distance, bigtime_t now);

    bool fIsSet = false;
    bigtime_t fLeast = 0;       // of the distances that were seen since fSince,
    bigtime_t fLeastBefore = 0; // and in the while before
    bigtime_t fSince = 0;
    bigtime_t fLast = 0; // what was said last
};

} // namespace kits
