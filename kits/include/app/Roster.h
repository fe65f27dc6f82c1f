#pragma once

#include <EntryRef.h>
#include <OS.h>
#include <StorageDefs.h>
#include <SupportDefs.h>

/// How a program may be started, in app_info::flags.
enum {
    B_SINGLE_LAUNCH = 0x0,
    B_MULTIPLE_LAUNCH = 0x1,
    B_EXCLUSIVE_LAUNCH = 0x2,
};

/// What is known of a running program.
struct app_info
{
    thread_id thread = -1;                   // of its BApplication
    team_id team = -1;                       // the process
    uint32 flags = B_MULTIPLE_LAUNCH;        // one of the above
    entry_ref ref;                           // the program's file
    char signature[B_MIME_TYPE_LENGTH] = ""; // a MIME type; empty for none
};

/// Knows the running programs.
///
/// Thread: any thread.
class BRoster
{
public:
    /// Programs use be_roster.
    BRoster() = default;
    BRoster(const BRoster&) = delete;
    BRoster& operator=(const BRoster&) = delete;

    /// Fills in what is known of the program with that process number. Only this program knows
    /// itself. Errors: B_BAD_TEAM_ID for any other, `info` is unchanged then.
    status_t GetRunningAppInfo(team_id team, app_info* info) const;
};

/// The one roster. Ownership: belongs to the kits.
extern const BRoster* be_roster;
