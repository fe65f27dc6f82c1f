#include "ftp/client/HostLookup.h"

#include "DetachedThread.h"

#include <OS.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

namespace norvane {

namespace {

std::vector<SocketAddress> Ask(const std::string& host, int flags)
{
    addrinfo hints = {};
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = flags;
    addrinfo* answer = nullptr;
    if (getaddrinfo(host.c_str(), nullptr, &hints, &answer) != 0) {
        return {};
    }
    std::vector<SocketAddress> addresses;
    for (const addrinfo* one = answer; one != nullptr; one = one->ai_next) {
        if (one->ai_family == AF_INET || one->ai_family == AF_INET6) {
            addresses.emplace_back(one->ai_addr, one->ai_addrlen);
        }
    }
    freeaddrinfo(answer);
    PutFourFirst(&addresses);
    return addresses;
}

} // namespace

struct HostLookup::Work
{
    std::string host;
    HostResolver resolver;

    std::mutex mutex; // guards all below
    std::condition_variable end;
    bool hasEnded = false;
    std::vector<SocketAddress> addresses;
};

void PutFourFirst(std::vector<SocketAddress>* addresses)
{
    std::stable_partition(addresses->begin(), addresses->end(),
                          [](const SocketAddress& address) { return address.Family() == AF_INET; });
}

std::vector<SocketAddress> ResolveHost(const std::string& host)
{
    return Ask(host, 0);
}

std::vector<SocketAddress> AddressInDigits(const std::string& host)
{
    return Ask(host, AI_NUMERICHOST);
}

HostLookup::HostLookup(std::string host, HostResolver resolver) : fWork(std::make_shared<Work>())
{
    fWork->host = std::move(host);
    fWork->resolver = std::move(resolver);
    const auto look = [work = fWork] {
        std::vector<SocketAddress> addresses = work->resolver(work->host);
        {
            const std::lock_guard lock(work->mutex);
            work->hasEnded = true;
            work->addresses = std::move(addresses);
        }
        work->end.notify_all();
    };
    if (!StartDetached("host lookup", B_NORMAL_PRIORITY, look)) {
        const std::lock_guard lock(fWork->mutex);
        fWork->hasEnded = true;
    }
}

bool HostLookup::WaitUntil(bigtime_t time)
{
    const std::chrono::microseconds left(std::max<bigtime_t>(time - system_time(), 0));
    std::unique_lock lock(fWork->mutex);
    return fWork->end.wait_for(lock, left, [this] { return fWork->hasEnded; });
}

std::vector<SocketAddress> HostLookup::TakeAddresses()
{
    const std::lock_guard lock(fWork->mutex);
    return std::exchange(fWork->addresses, {});
}

} // namespace norvane
