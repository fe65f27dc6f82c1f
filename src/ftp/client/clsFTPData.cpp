#include "ftp/client/clsFTP.h"

#include <OS.h>
#include <socket.h>

#include <algorithm>

namespace norvane {

namespace {

constexpr int kBacklog = 5;
// What a server gets to tell the end of a transfer that was cancelled.
constexpr bigtime_t kGrace = 50'000;

} // namespace

/// Waits for the server's connection from now on; returns the socket, or -1. `address` gets where.
int clsFTP::FTPInitDataConnection(SocketAddress* address)
{
    SocketAddress own;
    const bool hasOwn = own.SetToLocal(fControl.Number());
    const int sock = open_socket(own.Family(), SOCK_STREAM);
    if (sock < 0) {
        Report("Error initializing data connection.");
        return -1;
    }
    fListening.SetTo(sock);
    *address = SocketAddress(own.Family());
    int listening = Listen(sock, address);
    if (listening >= 0 && !hasOwn) {
        Report("Error getting host IP for data connection.");
        listening = -1;
    }
    if (listening < 0) {
        fListening.Close();
        return -1;
    }
    // The server reaches this machine under the address that it is connected with.
    own.SetPort(address->Port());
    *address = own;
    return listening;
}

int clsFTP::Listen(int sock, SocketAddress* address)
{
    if (bind(sock, address->Raw(), address->Length()) != 0) {
        Report("Unable to bind port 20, attempting different port.");
        if (bind(sock, address->Raw(), address->Length()) != 0) {
            Report("Error binding data connection.");
            return -1;
        }
    }
    if (!address->SetToLocal(sock)) {
        Report("Error getting port number for data connection.");
        return -1;
    }
    if (listen(sock, kBacklog) != 0) {
        Report("Error listening on data connection.");
        return -1;
    }
    return sock;
}

int clsFTP::FTPSendPort(const SocketAddress& address)
{
    const int code = Command(PortCommand(address));
    return code == 200 ? 0 : code;
}

int clsFTP::FTPSendPASV(SocketAddress* address)
{
    if (address->Family() == AF_INET6) {
        return FTPSendEPSV(address);
    }
    const int code = Command("PASV\r\n");
    if (code != 227) {
        return code;
    }
    return ReadPassiveReply(fReply, address) ? 0 : kFtpNoDataConnection;
}

int clsFTP::FTPSendEPSV(SocketAddress* address)
{
    const int code = Command("EPSV\r\n");
    if (code != 229) {
        return code;
    }
    uint16 port = 0;
    if (!ReadExtendedPassiveReply(fReply, &port)) {
        return kFtpNoDataConnection;
    }
    address->SetPort(port);
    return 0;
}

int clsFTP::SetType(Type type)
{
    if (type == fType) {
        return 0;
    }
    const int code = Command(type == Type::kBinary ? "TYPE I\r\n" : "TYPE A\r\n");
    if (code != 200) {
        return code;
    }
    fType = type;
    return 0;
}

/// Brings the data connection about, the command's first reply read. `isTold`: what failed was
/// said already.
int clsFTP::OpenData(const Order& order, bool* isTold)
{
    SocketAddress address;
    if (!fControl.IsOpen() || !address.SetToPeer(fControl.Number())) {
        return kFtpNotConnected;
    }
    int code = order.isPassive ? 0 : PrepareActive();
    if (code == 0) {
        code = SetType(order.type);
    }
    if (code == 0 && order.isPassive) {
        code = FTPSendPASV(&address);
        if (code == 0) {
            code = ConnectData(address);
            *isTold = code == kFtpNoSocket || code == kFtpNotConnected;
        }
    }
    if (code == 0) {
        code = StartTransfer(order.command);
    }
    if (code == 0 && !order.isPassive) {
        code = AcceptData();
    }
    fListening.Close();
    return code;
}

int clsFTP::PrepareActive()
{
    SocketAddress address;
    int code = kFtpNoDataConnection;
    if (FTPInitDataConnection(&address) >= 0) {
        code = FTPSendPort(address);
    }
    return code == 0 || code == kFtpCancelled ? code : kFtpNoDataConnection;
}

/// Connects to the port that the server named, and to no other machine than the server.
int clsFTP::ConnectData(SocketAddress address)
{
    const uint16 port = address.Port();
    if (!address.SetToPeer(fControl.Number())) {
        return kFtpNoDataConnection;
    }
    address.SetPort(port);
    const int code = ConnectSocket(&fData, address, system_time() + fTimeout);
    if (code == kFtpNoSocket) {
        Report("Error initializing data socket.");
    } else if (code == kFtpNotConnected) {
        Report("Unable to connect to host");
    }
    return code;
}

int clsFTP::StartTransfer(const std::string& line)
{
    const int code = Command(line);
    fHasBegun = code == 125 || code == 150;
    return fHasBegun ? 0 : code;
}

/// Takes the server's connection; those of anybody else are closed.
int clsFTP::AcceptData()
{
    SocketAddress server;
    if (!server.SetToPeer(fControl.Number())) {
        return kFtpNoDataConnection;
    }
    for (const bigtime_t end = system_time() + fTimeout;;) {
        const Wait wait = WaitFor(fListening.Number(), Direction::kRead, end);
        if (wait != Wait::kReady) {
            return wait == Wait::kTimedOut ? kFtpTimedOut : kFtpCancelled;
        }
        const int sock = accept_socket(fListening.Number(), nullptr, nullptr);
        if (sock < 0 && sock != B_WOULD_BLOCK) {
            return kFtpNoDataConnection;
        }
        SocketAddress peer;
        if (sock >= 0 && peer.SetToPeer(sock) && peer.IsSameHost(server)) {
            fData.SetTo(sock);
            return 0;
        }
        if (sock >= 0) {
            closesocket(sock);
        }
    }
}

/// Ends the data connection and reads what the server says of it.
int clsFTP::EndData()
{
    shutdown(fData.Number(), SHUT_WR);
    fData.Close();
    const int code = FinalReply();
    fLastCode = code;
    return code == 226 || code == 250 ? 0 : code;
}

/// Breaks the data connection off after a failure, so that the server takes the transfer for no
/// whole one; returns the code that tells most.
int clsFTP::AbandonData(int code)
{
    if (!fData.IsOpen()) {
        return code;
    }
    fIsBroken = fHasBegun;
    fData.Break();
    if (fOwed == 0 || code == kFtpTimedOut || fStop.IsShutDown()) {
        return code;
    }
    fGraceEnd = code == kFtpCancelled ? system_time() + kGrace : 0;
    const int final = FinalReply();
    fGraceEnd = 0;
    return code == kFtpNoDataConnection && final >= 400 ? final : code;
}

} // namespace norvane
