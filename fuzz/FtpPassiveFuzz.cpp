// The text of a reply that says where a server waits: it is an address, or changes nothing.

#include "ftp/client/FtpAddresses.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using namespace norvane;

void Require(bool condition, const char* what)
{
    if (!condition) {
        std::fprintf(stderr, "Broken: %s\n", what);
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);

    SocketAddress address(AF_INET);
    if (ReadPassiveReply(text.c_str(), &address)) {
        Require(address.Family() == AF_INET && address.Port() != 0, "it is an address");
        // What is announced is read back as the same.
        const std::string line = PortCommand(address);
        SocketAddress again(AF_INET);
        Require(ReadPassiveReply(("227 (" + line.substr(5)).c_str(), &again), "it is read again");
        Require(again.IsSameHost(address) && again.Port() == address.Port(), "it is the same");
    } else {
        Require(address.Port() == 0 && address.HostText() == "0.0.0.0", "nothing has changed");
    }

    uint16 port = 0;
    const bool isRead = ReadExtendedPassiveReply(text.c_str(), &port);
    Require(isRead == (port != 0), "it is a port");
    return 0;
}
