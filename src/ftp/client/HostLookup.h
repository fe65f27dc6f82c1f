#pragma once

#include "ftp/client/FtpAddresses.h"

#include <SupportDefs.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace norvane {

/// Finds the addresses of a host, those of IPv4 first, with port 0; none when there is no such
/// host. May take minutes.
using HostResolver = std::function<std::vector<SocketAddress>(const std::string& host)>;

/// The system's.
std::vector<SocketAddress> ResolveHost(const std::string& host);
/// The address that `host` is itself, in digits; none when it is a name. Takes no time.
std::vector<SocketAddress> AddressInDigits(const std::string& host);

/// Moves those of IPv4 before those of IPv6; each kind keeps its order.
void PutFourFirst(std::vector<SocketAddress>* addresses);

/// A search for a host's addresses on a thread of its own, which is let go of when nobody waits any
/// more: it ends when the name servers have answered.
class HostLookup
{
public:
    /// Begins. Without a thread to be had, nothing is found.
    HostLookup(std::string host, HostResolver resolver);

    /// Waits until `time` at most; whether the answer is there.
    /// Units: microseconds of system_time().
    bool WaitUntil(bigtime_t time);
    /// What was found, once.
    std::vector<SocketAddress> TakeAddresses();

private:
    struct Work;

    std::shared_ptr<Work> fWork; // never null
};

} // namespace norvane
