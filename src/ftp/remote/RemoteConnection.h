#pragma once

#include "ftp/client/RemoteFolder.h"
#include "ftp/client/SessionFile.h"

#include <Messenger.h>
#include <SupportDefs.h>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace norvane {

class clsFTP;

/// Who hears of a connection.
struct ConnectionListeners
{
    BMessenger pane; // each line of the log: MSG_FTP_STATUS
    BMessenger list; // kSourceNews whenever something that a person sees has changed
};

/// What came of something that was asked of a connection, to be told in an alert.
struct ConnectionAnswer
{
    enum class Kind : uint8 {
        kConnected,
        kNotConnected,
        kWantsPassword,
        kChanged, // entries of the server: what is shown is to be read again
    };

    Kind kind;
    std::string title; // of an alert; with an empty text there is none
    std::string text;
};

/// A pane's connection to a server, with a client and a thread of its own: what it is told to do it
/// does in order, and whoever tells it does not wait.
///
/// Thread: any. Letting go of it waits for nothing: what runs is ended by shutting the connection
/// down, else the server is told goodbye.
class RemoteConnection
{
public:
    /// What a command works with, on the connection's thread.
    struct Desk
    {
        clsFTP& client;
        RemoteFolder& folder;
        const std::atomic<bool>& isCancelled; // by the person: what has many steps ends
    };
    /// Keeps what it needs. What it returns is handed to the listeners.
    using Command = std::function<std::optional<ConnectionAnswer>(Desk& desk)>;
    enum class Kind : uint8 { kList, kChange };

    RemoteConnection(std::string sessionFile, const ConnectionListeners& listeners);
    ~RemoteConnection();
    RemoteConnection(const RemoteConnection&) = delete;
    RemoteConnection& operator=(const RemoteConnection&) = delete;

    /// Begins to connect, as the session file says.
    void Connect();
    /// Has `command` done after all that was asked for before; `doing` says to the person what it
    /// is. A listing that has not begun gives way to another.
    void Do(Kind kind, const char* doing, Command command);
    /// The answer to kWantsPassword; nothing: the person gave none.
    void GivePassword(const std::optional<std::string>& password);
    /// Ends what is running, and drops what waits; false when nothing is.
    bool Cancel();

    /// The oldest answer that was not taken yet.
    std::optional<ConnectionAnswer> TakeAnswer();
    /// What is being done, for the footer; "" for nothing.
    std::string Doing() const;
    /// Where connecting is, or how it ended.
    std::string Status() const;
    /// As it was read, with a password that was given later. Whole once there is a connection.
    FtpSession Session() const;

private:
    class Work;

    const std::shared_ptr<Work> fWork;
};

/// A client's callback: passes lines on to a pane's log. `user` is a BMessenger, borrowed.
int FtpCallback(int percent, int bytes, char* text, void* user);

} // namespace norvane
