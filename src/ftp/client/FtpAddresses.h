#pragma once

#include <SupportDefs.h>

#include <socket.h>

#include <string>

namespace norvane {

/// Where a socket is or connects to: a host and a port, of IPv4 or IPv6.
class SocketAddress
{
public:
    /// The wildcard address of a family, with port 0.
    explicit SocketAddress(int family = AF_INET);
    /// Copies an address as the system gives it; another family's becomes the IPv4 wildcard.
    SocketAddress(const sockaddr* address, size_t length);

    /// Of this end of a socket, and of the other one. False, and nothing changes, when it has none.
    bool SetToLocal(int socket);
    bool SetToPeer(int socket);
    void SetPort(uint16 port);

    int Family() const { return fAddress.ss_family; }
    uint16 Port() const;
    /// In digits, without the port.
    std::string HostText() const;
    bool IsSameHost(const SocketAddress& other) const;

    /// For the calls of sockets.
    const sockaddr* Raw() const;
    socklen_t Length() const;

private:
    bool SetTo(int (*ask)(int, sockaddr*, socklen_t*), int socket);

    sockaddr_storage fAddress = {};
};

/// The command that tells the server where this end waits: PORT for IPv4, EPRT for IPv6.
std::string PortCommand(const SocketAddress& address);

/// Where the server waits, by the text of a reply to PASV: the six numbers after the last "(", or,
/// without one, those after the code. False when they are no address; nothing is changed then.
bool ReadPassiveReply(const char* text, SocketAddress* address);
/// The port by the reply to EPSV, as in "(|||6446|)", any sign in place of the bars.
bool ReadExtendedPassiveReply(const char* text, uint16* port);

} // namespace norvane
