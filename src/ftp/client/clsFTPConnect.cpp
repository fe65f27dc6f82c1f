#include "ftp/client/clsFTP.h"

#include <OS.h>
#include <socket.h>

#include <algorithm>

namespace norvane {

namespace {

// Of a host with many addresses.
constexpr size_t kMaxTried = 8;

} // namespace

int clsFTP::Connect(const char* user, const char* pass, const char* account)
{
    const FtpStop::Call call(fStop);
    fType = Type::kUnset;
    LoseControl();
    int code = OpenControl();
    if (code != 0) {
        return code;
    }
    code = ReadGreeting();
    if (code != 220) {
        return FailToConnect(code);
    }
    code = LogIn(user, pass, account);
    const bool isEnough = code == 0 || code == 220 || code == 331 || code == 332;
    return isEnough ? code : FailToConnect(code);
}

int clsFTP::OpenControl()
{
    std::vector<SocketAddress> addresses;
    int code = FindHost(fHasProxy ? fProxyHost : fHost, &addresses);
    if (code == kFtpNoSuchHost) {
        Report("Error initailizing local host.");
    }
    if (code != 0) {
        return code;
    }
    code = ConnectToAny(addresses, fHasProxy ? fProxyPort : fPort);
    if (code == kFtpNoSocket) {
        Report("Error initializing control socket.");
    } else if (code == kFtpNotConnected) {
        Report("Unable to connect to host");
    }
    return code;
}

int clsFTP::FindHost(const std::string& host, std::vector<SocketAddress>* addresses)
{
    if (IsStopped()) {
        return kFtpCancelled;
    }
    if (host.empty()) {
        return kFtpNoSuchHost;
    }
    *addresses = AddressInDigits(host);
    if (!addresses->empty()) {
        return 0;
    }
    HostLookup lookup(host, fResolver);
    const bigtime_t end = system_time() + fTimeout;
    while (!lookup.WaitUntil(std::min(end, system_time() + FtpStop::kSlice))) {
        if (IsStopped()) {
            return kFtpCancelled;
        }
        if (system_time() >= end) {
            return kFtpNoSuchHost;
        }
    }
    *addresses = lookup.TakeAddresses();
    return addresses->empty() ? kFtpNoSuchHost : 0;
}

/// Tries one after the other, those of a family within the time-out.
int clsFTP::ConnectToAny(const std::vector<SocketAddress>& addresses, unsigned int port)
{
    int worst = port > 0 && port <= 65535 ? kFtpNoSocket : kFtpNotConnected;
    const size_t count = worst == kFtpNoSocket ? std::min(addresses.size(), kMaxTried) : 0;
    bigtime_t end = system_time() + fTimeout;
    for (size_t i = 0; i < count; i++) {
        SocketAddress address = addresses[i];
        address.SetPort(static_cast<uint16>(port));
        if (i > 0 && address.Family() != addresses[i - 1].Family()) {
            end = system_time() + fTimeout;
        }
        const int code = ConnectSocket(&fControl, address, end);
        if (code == 0 || code == kFtpCancelled) {
            return code;
        }
        worst = std::max(worst, code);
    }
    return worst;
}

/// Connects a new socket: 0, kFtpNoSocket, kFtpNotConnected or kFtpCancelled.
int clsFTP::ConnectSocket(FtpSocket* into, const SocketAddress& address, bigtime_t end)
{
    const int sock = open_socket(address.Family(), SOCK_STREAM);
    if (sock < 0) {
        return kFtpNoSocket;
    }
    into->SetTo(sock);
    status_t status = connect_socket(sock, address.Raw(), address.Length());
    Wait wait = Wait::kReady;
    if (status == B_WOULD_BLOCK) {
        wait = WaitFor(sock, Direction::kWrite, end);
        status = wait == Wait::kReady ? socket_error(sock) : B_TIMED_OUT;
    }
    if (status == B_OK && !IsStopped()) {
        return 0;
    }
    into->Close();
    return wait == Wait::kStopped || IsStopped() ? kFtpCancelled : kFtpNotConnected;
}

/// 220, or the code that connecting fails with.
int clsFTP::ReadGreeting()
{
    const int alive = 1;
    setsockopt(fControl.Number(), SOL_SOCKET, SO_KEEPALIVE, &alive, sizeof(alive));
    fOwed = 1;
    int code = NextReply();
    if (code == 120) {
        for (int i = 0; i < 3 && code != 220; i++) {
            code = NextReply();
        }
    }
    fLastCode = code;
    fOwed = 0;
    if (code == kFtpCancelled || code == 220) {
        return code;
    }
    return 421;
}

int clsFTP::LogIn(const char* user, const char* pass, const char* account)
{
    int code = 220;
    if (user != nullptr) {
        code = SendUser(user);
    }
    if (code == 331 && pass != nullptr) {
        code = SendPass(pass);
    }
    if (code == 332 && account != nullptr) {
        code = SendAcct(account);
    }
    return code;
}

int clsFTP::FailToConnect(int code)
{
    Report("Exception: " + std::to_string(code) + " - Error connecting to server.");
    LoseControl();
    return code;
}

} // namespace norvane
