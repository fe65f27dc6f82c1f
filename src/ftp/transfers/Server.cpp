#include "ftp/transfers/Server.h"

#include "fileops/engine/OperationUI.h"
#include "ftp/client/RemoteFolder.h"
#include "ftp/client/ServerReason.h"

#include <DataIO.h>

#include <cstdlib>

namespace norvane {

namespace {

constexpr unsigned int kGoodbyeMs = 2'000; // all that was to be done is done
constexpr int kNotLoggedIn = 530;
constexpr int kWantsPassword = 331;
constexpr int kClosing = 421;

/// Whether the connection cannot be trusted after that: an answer that comes late would be taken
/// for that of the next command.
bool IsLostAfter(int code)
{
    return code == kFtpTimedOut || code == kFtpCancelled || code == kClosing;
}

/// A path without the slashes at its end.
std::string Trimmed(const std::string& path)
{
    const size_t last = path.find_last_not_of('/');
    return last == std::string::npos ? "/" : path.substr(0, last + 1);
}

} // namespace

Server::Server(TransferHost host, OperationUI& ui) : fHost(std::move(host)), fCalls(ui) {}

std::string Server::Open()
{
    fIsUsable = true;
    fCalls.Client().SetHost(fHost.host.c_str(), fHost.port, nullptr, 0);
    const char* password = fHost.password.empty() ? nullptr : fHost.password.c_str();
    const int connected = Do([this, password](clsFTP& client) {
        return client.Connect(fHost.user.c_str(), password, nullptr);
    });
    if (connected != 0) {
        fIsUsable = false;
        fLost = ConnectReason(connected);
        return fLost;
    }
    const int changed = fHost.path.empty() ? 0 : ChangeDir(fHost.path);
    if (!IsAgreed(changed)) {
        Lose("its folder cannot be opened: " + Reason(changed));
        return fLost;
    }
    const int found = FindPath(&fPath);
    if (!IsAgreed(found) || (!fHost.path.empty() && Trimmed(fPath) != Trimmed(fHost.path))) {
        Lose("it does not lead to the folder " + fHost.path);
    }
    return fLost;
}

void Server::Close()
{
    if (fIsUsable) {
        fCalls.Do([](clsFTP& client) {
            client.SetTimeout(kGoodbyeMs);
            return client.Disconnect();
        });
    }
    fIsUsable = false;
}

int Server::Do(const ServerCalls::Call& call, const ServerCalls::Progress& progress)
{
    const int code = fCalls.Do(call, progress);
    if (IsLostAfter(code) || (code != 0 && !fCalls.Client().IsConnected())) {
        Lose(Reason(code));
    }
    return code;
}

void Server::Lose(const std::string& reason)
{
    if (fIsUsable) {
        fIsUsable = false;
        fLost = reason;
    }
}

int Server::ChangeDir(const std::string& path)
{
    return Do([&path](clsFTP& client) { return client.ChangeDir(path.c_str()); });
}

/// Asks where it is.
int Server::FindPath(std::string* path)
{
    if (!fIsUsable) {
        return kFtpNotConnected;
    }
    char* answer = nullptr;
    const int code = Do([&answer](clsFTP& client) { return client.PrintDir(&answer); });
    const std::string found = PathInReply(answer);
    std::free(answer);
    if (!IsAgreed(code) || found.empty()) {
        return IsAgreed(code) ? kFtpNotConnected : code;
    }
    *path = found;
    return 0;
}

std::string Server::Enter(const std::string& name)
{
    const int changed = ChangeDir(NameInCommand(name));
    if (!IsAgreed(changed)) {
        return Reason(changed);
    }
    std::string path;
    if (!IsAgreed(FindPath(&path))) {
        Lose("it does not say which folder it is in");
        return fLost;
    }
    if (path == fPath) {
        return "the server does not go there";
    }
    fPath = path;
    return "";
}

void Server::Leave(const std::string& path)
{
    std::string found;
    if (!fIsUsable || (IsAgreed(ChangeDir("..")) && IsAgreed(FindPath(&found)) && found == path)) {
        fPath = path;
        return;
    }
    // Up from a folder that was entered by a link is elsewhere.
    if (IsAgreed(ChangeDir(path)) && IsAgreed(FindPath(&found)) && found == path) {
        fPath = path;
        return;
    }
    Lose("it does not lead back to the folder " + path);
}

std::string Server::List(std::vector<RemoteEntry>* entries)
{
    char* text = nullptr;
    const int code =
        Do([this, &text](clsFTP& client) { return client.List(nullptr, &text, fHost.isPassive); });
    if (code == 0 && text != nullptr) {
        const auto length =
            static_cast<size_t>(std::max<int64>(fCalls.Client().BytesMoved() - 1, 0));
        *entries = ParseListing({text, length}, fCalls.Client().EndOfListing());
    }
    std::free(text);
    return code == 0 ? "" : "its folder cannot be listed: " + Reason(code);
}

std::string Server::MakeFolder(const std::string& name)
{
    const int code =
        Do([&name](clsFTP& client) { return client.MakeDir(NameInCommand(name).c_str()); });
    return IsAgreed(code) ? "" : Reason(code);
}

/// Moves a file; how much of it the client knows only when it has begun.
std::string Server::Move(const ServerCalls::Call& call, const ServerCalls::Progress& progress)
{
    fBytesMoved = 0;
    const auto counted = [this, &call](clsFTP& client) {
        const int code = call(client);
        fBytesMoved = code != kFtpBadName ? client.BytesMoved() : 0;
        return code;
    };
    const int code = Do(counted, progress);
    return code == 0 ? "" : Reason(code);
}

std::string Server::Send(BDataIO& file, int64 bytes, const std::string& name,
                         const ServerCalls::Progress& progress)
{
    const auto call = [this, &file, bytes, &name](clsFTP& client) {
        return client.UploadFrom(file, bytes, NameInCommand(name).c_str(), true, fHost.isPassive);
    };
    return Move(call, progress);
}

std::string Server::Receive(BDataIO& file, const std::string& name,
                            const ServerCalls::Progress& progress)
{
    const auto call = [this, &file, &name](clsFTP& client) {
        return client.DownloadTo(file, NameInCommand(name).c_str(), true, fHost.isPassive);
    };
    return Move(call, progress);
}

std::string Server::Reason(int code)
{
    return ServerReason(fCalls.Client(), code);
}

std::string Server::ConnectReason(int code)
{
    switch (code) {
    case kFtpTimedOut:
        return "timed out trying to connect";
    case kNotLoggedIn:
        return "the username or password supplied is incorrect";
    case kWantsPassword:
        return "it wants a password";
    default:
        return Reason(code);
    }
}

} // namespace norvane
