#pragma once

#include <SupportDefs.h>

/// Threads and time.

/// Names a thread, and a process; negative values are errors.
using thread_id = int32;
using team_id = int32;

/// A thread's work; what it returns is handed to wait_for_thread().
using thread_func = status_t (*)(void* data);

/// The room for a name, its closing zero included.
constexpr size_t B_OS_NAME_LENGTH = 32;

/// How urgent a thread is. Below B_NORMAL_PRIORITY it gets the less of the processor the lower it
/// is; above, it counts as normal: the system decides.
constexpr int32 B_IDLE_PRIORITY = 0;                // only when nothing else wants to run
constexpr int32 B_LOWEST_ACTIVE_PRIORITY = 1;       // the least that still gets its share
constexpr int32 B_LOW_PRIORITY = 5;                 // work that nobody waits for
constexpr int32 B_NORMAL_PRIORITY = 10;             // as any program
constexpr int32 B_DISPLAY_PRIORITY = 15;            // what a person sees
constexpr int32 B_URGENT_DISPLAY_PRIORITY = 20;     // what a person sees at once
constexpr int32 B_REAL_TIME_DISPLAY_PRIORITY = 100; // drawing that may not stutter
constexpr int32 B_URGENT_PRIORITY = 110;            // sound and the like
constexpr int32 B_REAL_TIME_PRIORITY = 120;         // devices that cannot wait

/// What a thread is doing, as far as this system tells.
enum thread_state {
    B_THREAD_RUNNING = 1,
    B_THREAD_READY,
    B_THREAD_RECEIVING,
    B_THREAD_ASLEEP,
    B_THREAD_SUSPENDED, // spawned, but not resumed yet
    B_THREAD_WAITING,
};

/// What get_thread_info() tells.
struct thread_info
{
    thread_id thread;            // its number
    team_id team;                // the process
    char name[B_OS_NAME_LENGTH]; // closed by a zero
    thread_state state;          // at the moment of asking
    int32 priority;              // as given to spawn_thread()
};

/// Makes a thread that will call `function` with `data`; resume_thread() or wait_for_thread()
/// starts it. A name is cut at B_OS_NAME_LENGTH - 1 bytes. An exception that leaves `function` ends
/// the program, with the stack it was thrown from on stderr. Errors: B_BAD_VALUE without a
/// function; B_NO_MEMORY. Ownership: borrows `name`.
thread_id spawn_thread(thread_func function, const char* name, int32 priority, void* data);

/// Starts a thread that was spawned.
/// Errors: B_BAD_THREAD_ID; B_BAD_THREAD_STATE when it runs already; B_NO_MORE_THREADS or
/// B_NO_MEMORY when the system has none left: the thread may be resumed again later.
status_t resume_thread(thread_id thread);

/// Waits for the end of `thread`, starting it when nobody has, and tells what its function
/// returned. Errors: B_BAD_THREAD_ID when there is none of that number, as after its end;
/// B_NOT_ALLOWED for the calling thread. `returnValue` (may be null) is untouched then.
status_t wait_for_thread(thread_id thread, status_t* returnValue);

/// The newest thread called `name`; the calling thread when `name` is null.
/// Errors: B_NAME_NOT_FOUND.
thread_id find_thread(const char* name);

/// Gives a thread another name, cut as by spawn_thread(). Errors: B_BAD_THREAD_ID.
status_t rename_thread(thread_id thread, const char* name);
/// Tells what is known of a thread. Errors: B_BAD_THREAD_ID; B_BAD_VALUE without `info`.
status_t get_thread_info(thread_id thread, thread_info* info);

/// Microseconds since the machine started; never goes back.
bigtime_t system_time();
/// Seconds since 1970, by the machine's clock.
uint32 real_time_clock();
/// Microseconds since 1970, by the machine's clock.
bigtime_t real_time_clock_usecs();

/// The clock that snooze_until() takes its time from: system_time().
constexpr int B_SYSTEM_TIMEBASE = 0;

/// Sleeps for so many microseconds; not at all for 0 and less.
status_t snooze(bigtime_t microseconds);
/// Sleeps until `time`. Errors: B_BAD_VALUE for a time base other than B_SYSTEM_TIMEBASE.
status_t snooze_until(bigtime_t time, int timeBase);
