#pragma once

#include "ftp/client/SessionFile.h"

#include <Messenger.h>

#include <memory>
#include <string>

class BMessage;

namespace norvane {

/// Work on session files, each on a thread of its own that waits for the disk. What came of it is
/// posted to a window; one that is gone by then misses nothing. Without a thread to be had the work
/// is done when the call returns.
///
/// Thread: any.

/// A window's interest in the folder of sessions; the watch of the folder ends with it.
class SessionsWatch
{
public:
    explicit SessionsWatch(const BMessenger& window);
    ~SessionsWatch();
    SessionsWatch(const SessionsWatch&) = delete;
    SessionsWatch& operator=(const SessionsWatch&) = delete;

    /// Has the folder watched and then read: the window gets a kSessionsListed, and B_NODE_MONITOR
    /// messages from then on.
    void List();

private:
    class Work;

    const std::shared_ptr<Work> fWork;
};

/// What saving does where a session of that name exists already.
enum class Existing { kKept, kReplaced };

/// Posts a kSessionRead with what the file has, which SessionIn() reads.
void ReadSession(const std::string& fileName, const BMessenger& window);
/// Posts a kSessionSaved. With Existing::kKept nothing is written where there is anything of that
/// name, as its bool "exists" tells.
void SaveSession(const FtpSession& session, Existing existing, const BMessenger& window);
/// Posts a kSessionDeleted.
void DeleteSession(const std::string& name, const BMessenger& window);

/// The session that a kSessionRead carries.
FtpSession SessionIn(const BMessage& message);

/// What a status of such work means, as the second half of "session: reason".
const char* ReasonForSession(status_t status);

} // namespace norvane
