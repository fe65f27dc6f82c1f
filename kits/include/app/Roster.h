#pragma once

#include <EntryRef.h>
#include <OS.h>
#include <StorageDefs.h>
#include <SupportDefs.h>

class BMessage;

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

/// Starts programs, and knows the running ones.
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

    /// Runs a program, or opens a document or folder by the program that the desktop has for it;
    /// links are followed. What is started outlives this program, and nothing of this one's reaches
    /// it but the environment and the output.
    ///
    /// A program is a file that the system runs itself (no script, no library), that the person may
    /// run, and whose name is not a document's: `invoice.pdf` is opened, never run. Scripts are
    /// documents: what runs with the rights of the person is to be seen from the file's kind, and
    /// who means to run one can do so where its output is seen. Programs begin in the folder that
    /// they lie in, others in the home folder.
    ///
    /// A document's type is the one stored in it, else that of its name, else that of its content;
    /// its program is that of the desktop's settings (mimeapps.list) for the type or what it
    /// derives from. "/boot/apps/StyledEdit" stands for the program for plain text, without one for
    /// $VISUAL or $EDITOR in a terminal; "/boot/beos/system/Tracker" for the desktop's file
    /// manager, which opens folders, too, and is never this program. Refs to these two are made
    /// from their paths, though nothing is there.
    ///
    /// It waits for the disk and for the session's bus, half a minute at worst: no window's thread
    /// calls it. `initialMessage` must be null: programs here take no messages. `team` (may be
    /// null) gets the process, 0 when the bus started it or knew it running. Errors: B_BAD_VALUE;
    /// B_ENTRY_NOT_FOUND; B_BAD_TYPE for a FIFO, socket or device; B_LAUNCH_FAILED_NO_RESOLVE_LINK
    /// for a link that leads nowhere, B_LINK_LIMIT; B_LAUNCH_FAILED_NO_PREFERRED_APP when no
    /// program is set that is installed; B_LAUNCH_FAILED_APP_NOT_FOUND, B_LAUNCH_FAILED_EXECUTABLE,
    /// B_PERMISSION_DENIED, B_NO_MORE_TEAMS, B_TIMED_OUT, B_LAUNCH_FAILED. `team` is unchanged
    /// then.
    status_t Launch(const entry_ref* ref, const BMessage* initialMessage = nullptr,
                    team_id* team = nullptr) const;
    /// The same with arguments, the program's own name not among them. For whatever opens documents
    /// they are the paths of further ones, each absolute.
    status_t Launch(const entry_ref* ref, int argc, const char* const* argv,
                    team_id* team = nullptr) const;
    /// Opens files by the program of that signature, as BMimeType tells them; `argv` are their
    /// paths, each absolute. Errors: as above,
    /// B_LAUNCH_FAILED_APP_NOT_FOUND when no installed program has it.
    status_t Launch(const char* signature, int argc, const char* const* argv,
                    team_id* team = nullptr) const;
};

/// The one roster. Ownership: belongs to the kits.
extern const BRoster* be_roster;
