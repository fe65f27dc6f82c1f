#include "ftp/client/FtpAddresses.h"

#include "ftp/client/FtpTokens.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace norvane {

namespace {

constexpr int kNumbers = 6; // of a passive reply: four of the address, two of the port

/// A number of one byte at the start of a text, after blanks; -1 when it is none.
int ByteNumber(const char* text)
{
    char* end = nullptr;
    const long number = std::strtol(text, &end, 10);
    return end == text || number < 0 || number > 255 ? -1 : static_cast<int>(number);
}

const char* PassiveNumbers(const char* text)
{
    const char* bracket = std::strrchr(text, '(');
    if (bracket != nullptr) {
        return bracket + 1;
    }
    const char* behindCode = text + std::min<size_t>(std::strlen(text), 3);
    return behindCode + std::strcspn(behindCode, "0123456789");
}

bool ReadNumbers(char** tokens, int count, int numbers[kNumbers])
{
    for (int i = 0; i < kNumbers; i++) {
        numbers[i] = i < count ? ByteNumber(tokens[i]) : -1;
        if (numbers[i] < 0) {
            return false;
        }
    }
    return true;
}

} // namespace

SocketAddress::SocketAddress(int family)
{
    fAddress.ss_family = static_cast<sa_family_t>(family);
}

SocketAddress::SocketAddress(const sockaddr* address, size_t length) : SocketAddress(AF_INET)
{
    if (address->sa_family == AF_INET || address->sa_family == AF_INET6) {
        std::memcpy(&fAddress, address, std::min(length, sizeof(fAddress)));
    }
}

bool SocketAddress::SetToLocal(int socket)
{
    return SetTo(&getsockname, socket);
}

bool SocketAddress::SetToPeer(int socket)
{
    return SetTo(&getpeername, socket);
}

bool SocketAddress::SetTo(int (*ask)(int, sockaddr*, socklen_t*), int socket)
{
    sockaddr_storage address = {};
    socklen_t length = sizeof(address);
    if (ask(socket, reinterpret_cast<sockaddr*>(&address), &length) != 0 ||
        (address.ss_family != AF_INET && address.ss_family != AF_INET6)) {
        return false;
    }
    fAddress = address;
    return true;
}

// The two kinds of addresses have their port, and their host, at places of their own.
void SocketAddress::SetPort(uint16 port)
{
    if (Family() == AF_INET6) {
        reinterpret_cast<sockaddr_in6*>(&fAddress)->sin6_port = htons(port);
    } else {
        reinterpret_cast<sockaddr_in*>(&fAddress)->sin_port = htons(port);
    }
}

uint16 SocketAddress::Port() const
{
    return Family() == AF_INET6 ? ntohs(reinterpret_cast<const sockaddr_in6*>(&fAddress)->sin6_port)
                                : ntohs(reinterpret_cast<const sockaddr_in*>(&fAddress)->sin_port);
}

std::string SocketAddress::HostText() const
{
    char text[INET6_ADDRSTRLEN] = {};
    const void* host = &reinterpret_cast<const sockaddr_in*>(&fAddress)->sin_addr;
    if (Family() == AF_INET6) {
        host = &reinterpret_cast<const sockaddr_in6*>(&fAddress)->sin6_addr;
    }
    return inet_ntop(Family(), host, text, sizeof(text)) != nullptr ? text : "";
}

bool SocketAddress::IsSameHost(const SocketAddress& other) const
{
    return Family() == other.Family() && HostText() == other.HostText();
}

const sockaddr* SocketAddress::Raw() const
{
    return reinterpret_cast<const sockaddr*>(&fAddress);
}

socklen_t SocketAddress::Length() const
{
    return Family() == AF_INET6 ? sizeof(sockaddr_in6) : sizeof(sockaddr_in);
}

std::string PortCommand(const SocketAddress& address)
{
    const std::string port = std::to_string(address.Port());
    if (address.Family() == AF_INET6) {
        return "EPRT |2|" + address.HostText() + "|" + port + "|\r\n";
    }
    std::string line = "PORT " + address.HostText() + "," + std::to_string(address.Port() / 256) +
                       "," + std::to_string(address.Port() % 256) + "\r\n";
    std::replace(line.begin(), line.end(), '.', ',');
    return line;
}

bool ReadPassiveReply(const char* text, SocketAddress* address)
{
    char** tokens = nullptr;
    const int count = StrTokenize(PassiveNumbers(text), ",", &tokens);
    int numbers[kNumbers] = {};
    const bool isRead = ReadNumbers(tokens, count, numbers);
    FreeTokens(&tokens, count);
    const int port = numbers[4] * 256 + numbers[5];
    if (!isRead || port == 0) {
        return false;
    }
    sockaddr_in found = {};
    found.sin_family = AF_INET;
    for (int i = 0; i < 4; i++) {
        found.sin_addr.s_addr = found.sin_addr.s_addr << 8 | static_cast<uint32>(numbers[i]);
    }
    found.sin_addr.s_addr = htonl(found.sin_addr.s_addr);
    *address = SocketAddress(reinterpret_cast<const sockaddr*>(&found), sizeof(found));
    address->SetPort(static_cast<uint16>(port));
    return true;
}

bool ReadExtendedPassiveReply(const char* text, uint16* port)
{
    const char* bracket = std::strrchr(text, '(');
    if (bracket == nullptr || std::strlen(bracket) < 5) {
        return false;
    }
    const char bar = bracket[1];
    char* end = nullptr;
    const long number = std::strtol(bracket + 4, &end, 10);
    const bool isRead = bracket[2] == bar && bracket[3] == bar && bracket[4] >= '0' &&
                        bracket[4] <= '9' && *end == bar && number > 0 && number <= 65535;
    if (isRead) {
        *port = static_cast<uint16>(number);
    }
    return isRead;
}

} // namespace norvane
