#pragma once

#include <OS.h>

namespace kits {

// A thread's last steps come after its function has returned: what libraries keep per thread is
// cleaned up then. Nobody may leave main() while that runs, as it uses what leaving destroys.

/// Says that the calling thread, spawned by spawn_thread(), has nothing more to do than to return.
/// From here on it takes no lock that a caller of JoinEndedThreads() may hold.
void AnnounceThreadEnd();

/// Waits until every thread that has announced its end, or whose function has returned, is gone.
void JoinEndedThreads();

/// Takes a thread that was spawned and could not be started out of the table.
void ForgetThread(thread_id thread);

} // namespace kits
