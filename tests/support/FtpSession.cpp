#include "FtpSession.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

namespace {

using namespace std::chrono_literals;

constexpr auto kLongest = 20s;
constexpr auto kSlice = 10ms;

void CloseSocket(int* socket)
{
    if (*socket >= 0) {
        close(*socket);
    }
    *socket = -1;
}

void ResetSocket(int* socket)
{
    linger none = {};
    none.l_onoff = 1;
    setsockopt(*socket, SOL_SOCKET, SO_LINGER, &none, sizeof(none));
    CloseSocket(socket);
}

/// An address in digits with a port; its length, 0 when it is none.
socklen_t MakeAddress(const std::string& host, int port, sockaddr_storage* address)
{
    *address = {};
    auto* four = reinterpret_cast<sockaddr_in*>(address);
    if (inet_pton(AF_INET, host.c_str(), &four->sin_addr) == 1) {
        four->sin_family = AF_INET;
        four->sin_port = htons(static_cast<uint16_t>(port));
        return sizeof(sockaddr_in);
    }
    auto* six = reinterpret_cast<sockaddr_in6*>(address);
    if (inet_pton(AF_INET6, host.c_str(), &six->sin6_addr) == 1) {
        six->sin6_family = AF_INET6;
        six->sin6_port = htons(static_cast<uint16_t>(port));
        return sizeof(sockaddr_in6);
    }
    return 0;
}

} // namespace

FtpSession::FtpSession(int socket, const std::atomic<bool>& stop) : fStop(stop), fControl(socket)
{
    sockaddr_storage own = {};
    socklen_t length = sizeof(own);
    getsockname(fControl, reinterpret_cast<sockaddr*>(&own), &length);
    fFamily = own.ss_family;
    // Otherwise the second of two replies in a row waits for the client's acknowledgement.
    const int isOn = 1;
    setsockopt(fControl, IPPROTO_TCP, TCP_NODELAY, &isOn, sizeof(isOn));
}

FtpSession::~FtpSession()
{
    Close();
}

bool FtpSession::Await(int socket, short events, std::chrono::milliseconds longest) const
{
    const auto end = std::chrono::steady_clock::now() + longest;
    while (socket >= 0 && !fStop && std::chrono::steady_clock::now() < end) {
        pollfd asked = {socket, events, 0};
        if (poll(&asked, 1, static_cast<int>(kSlice.count())) > 0) {
            return true;
        }
    }
    return false;
}

bool FtpSession::Pause(std::chrono::milliseconds time)
{
    const auto end = std::chrono::steady_clock::now() + time;
    while (!fStop && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(std::min<std::chrono::milliseconds>(kSlice, time));
    }
    return !fStop;
}

bool FtpSession::ReadLine(std::string* line)
{
    for (;;) {
        const size_t end = fReceived.find('\n');
        if (end != std::string::npos) {
            *line = fReceived.substr(0, end);
            fReceived.erase(0, end + 1);
            if (!line->empty() && line->back() == '\r') {
                line->pop_back();
            }
            return true;
        }
        char buffer[4096];
        const ssize_t count =
            Await(fControl, POLLIN, kLongest) ? recv(fControl, buffer, sizeof(buffer), 0) : -1;
        if (count <= 0) {
            return false;
        }
        fReceived.append(buffer, static_cast<size_t>(count));
    }
}

bool FtpSession::AwaitEnd()
{
    char buffer[4096];
    while (Await(fControl, POLLIN, kLongest)) {
        if (recv(fControl, buffer, sizeof(buffer), 0) <= 0) {
            return true;
        }
    }
    return false;
}

bool FtpSession::SendAll(int socket, std::string_view data)
{
    while (!data.empty()) {
        if (!Await(socket, POLLOUT, kLongest)) {
            return false;
        }
        const ssize_t count = send(socket, data.data(), data.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (count < 0 && errno != EAGAIN) {
            return false;
        }
        data.remove_prefix(static_cast<size_t>(std::max<ssize_t>(count, 0)));
    }
    return true;
}

bool FtpSession::Send(std::string_view text)
{
    return SendAll(fControl, text);
}

void FtpSession::Close()
{
    CloseData();
    CloseListening();
    CloseSocket(&fControl);
}

void FtpSession::Reset()
{
    ResetSocket(&fControl);
}

std::string FtpSession::ListenForData()
{
    CloseData();
    CloseListening();
    sockaddr_storage own = {};
    socklen_t length = sizeof(own);
    getsockname(fControl, reinterpret_cast<sockaddr*>(&own), &length);
    // The port is at the same place in both families' addresses.
    reinterpret_cast<sockaddr_in*>(&own)->sin_port = 0;
    fListening = socket(fFamily, SOCK_STREAM | SOCK_CLOEXEC, 0);
    bind(fListening, reinterpret_cast<sockaddr*>(&own), length);
    listen(fListening, 4);
    getsockname(fListening, reinterpret_cast<sockaddr*>(&own), &length);
    fDataPort = ntohs(reinterpret_cast<sockaddr_in*>(&own)->sin_port);
    return "127,0,0,1," + std::to_string(fDataPort / 256) + "," + std::to_string(fDataPort % 256);
}

bool FtpSession::SetActive(const std::string& command)
{
    CloseData();
    CloseListening();
    unsigned int n[6] = {};
    if (std::sscanf(command.c_str(), "PORT %u,%u,%u,%u,%u,%u", &n[0], &n[1], &n[2], &n[3], &n[4],
                    &n[5]) == 6) {
        fActiveHost = std::to_string(n[0]) + "." + std::to_string(n[1]) + "." +
                      std::to_string(n[2]) + "." + std::to_string(n[3]);
        fActivePort = static_cast<int>(n[4] * 256 + n[5]);
        return true;
    }
    char host[64] = {};
    if (std::sscanf(command.c_str(), "EPRT |%*d|%63[^|]|%d|", host, &fActivePort) == 2) {
        fActiveHost = host;
        return true;
    }
    return false;
}

bool FtpSession::OpenData(const char* from)
{
    return fListening >= 0 ? Accept() : Connect(from);
}

bool FtpSession::Accept()
{
    fData = Await(fListening, POLLIN, kLongest) ? accept(fListening, nullptr, nullptr) : -1;
    CloseListening();
    return fData >= 0;
}

bool FtpSession::Connect(const char* from)
{
    sockaddr_storage address = {};
    const socklen_t length = MakeAddress(fActiveHost, fActivePort, &address);
    if (length == 0) {
        return false;
    }
    fData = socket(address.ss_family, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_storage own = {};
    if (from != nullptr) {
        const socklen_t ownLength = MakeAddress(from, 0, &own);
        bind(fData, reinterpret_cast<sockaddr*>(&own), ownLength);
    }
    // Loopback decides at once.
    if (connect(fData, reinterpret_cast<sockaddr*>(&address), length) != 0) {
        CloseData();
        return false;
    }
    return true;
}

bool FtpSession::SendData(std::string_view data)
{
    return SendAll(fData, data);
}

bool FtpSession::ReadData(std::string* data)
{
    return ReadSomeData(std::string::npos, data);
}

bool FtpSession::ReadSomeData(size_t bytes, std::string* data)
{
    data->clear();
    char buffer[64 * 1024];
    while (data->size() < bytes) {
        if (!Await(fData, POLLIN, kLongest)) {
            return false;
        }
        const ssize_t count = recv(fData, buffer, sizeof(buffer), 0);
        if (count <= 0) {
            return count == 0 && bytes == std::string::npos;
        }
        data->append(buffer, static_cast<size_t>(count));
    }
    return true;
}

void FtpSession::CloseData()
{
    CloseSocket(&fData);
}

void FtpSession::ResetData()
{
    ResetSocket(&fData);
}

void FtpSession::CloseListening()
{
    CloseSocket(&fListening);
}
