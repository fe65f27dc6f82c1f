#pragma once

#include "ftp/transfers/ServerCalls.h"
#include "ftp/transfers/TransferHost.h"

#include <string>
#include <vector>

class BDataIO;

namespace norvane {

/// A server as a transfer sees it: where it is there, and whether it can still be talked to.
///
/// A folder counts as entered only when the server agreed and then names another folder than
/// before. Calls that return a text return "" for success, and otherwise the reason for the
/// person. Thread: the operation's.
class Server
{
public:
    /// Ownership: borrows `ui` for its own life.
    Server(TransferHost host, OperationUI& ui);

    /// Connects, and goes to the folder of the request.
    std::string Open();
    /// Says goodbye.
    void Close();
    const TransferHost& Host() const { return fHost; }
    /// False once there is nobody to talk to, or it is not known in which folder.
    bool IsUsable() const { return fIsUsable; }
    /// Why not.
    const std::string& LostBecause() const { return fLost; }

    /// The folder where it is, as the server names it.
    const std::string& Path() const { return fPath; }
    std::string Enter(const std::string& name);
    /// Goes up, to the folder that was Path() before Enter().
    void Leave(const std::string& path);
    std::string List(std::vector<RemoteEntry>* entries);
    std::string MakeFolder(const std::string& name);

    /// Moves a file to or from the server. What of it has failed on this side only `file` knows.
    /// Ownership: borrows `file` for the call.
    std::string Send(BDataIO& file, int64 bytes, const std::string& name,
                     const ServerCalls::Progress& progress);
    std::string Receive(BDataIO& file, const std::string& name,
                        const ServerCalls::Progress& progress);
    /// Of the last file.
    int64 BytesMoved() const { return fBytesMoved; }

private:
    int Do(const ServerCalls::Call& call, const ServerCalls::Progress& progress = nullptr);
    std::string Move(const ServerCalls::Call& call, const ServerCalls::Progress& progress);
    int ChangeDir(const std::string& path);
    int FindPath(std::string* path);
    std::string Reason(int code);
    std::string ConnectReason(int code);
    void Lose(const std::string& reason);

    const TransferHost fHost;
    bool fIsUsable = false;
    std::string fPath;
    std::string fLost;
    int64 fBytesMoved = 0;
    ServerCalls fCalls;
};

} // namespace norvane
