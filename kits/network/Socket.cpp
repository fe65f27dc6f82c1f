#include <socket.h>

#include "support/ErrnoTable.h"

#include <OS.h>

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>

namespace {

using kits::StatusFromErrno;

/// Milliseconds for poll(): rounded up, so that it does not return before the time.
int PollTime(bigtime_t microseconds)
{
    const bigtime_t milliseconds = (std::max<bigtime_t>(microseconds, 0) + 999) / 1000;
    return static_cast<int>(std::min<bigtime_t>(milliseconds, INT_MAX));
}

} // namespace

int open_socket(int family, int type)
{
    const int opened = socket(family, type | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    return opened < 0 ? StatusFromErrno(errno) : opened;
}

status_t closesocket(int socket)
{
    // What EINTR says is that it is closed all the same.
    return close(socket) < 0 && errno != EINTR ? StatusFromErrno(errno) : B_OK;
}

status_t connect_socket(int socket, const sockaddr* address, socklen_t length)
{
    if (connect(socket, address, length) == 0) {
        return B_OK;
    }
    // A signal leaves the connection under way, too.
    const bool isUnderWay = errno == EINPROGRESS || errno == EINTR || errno == EALREADY;
    return isUnderWay ? B_WOULD_BLOCK : StatusFromErrno(errno);
}

status_t socket_error(int socket)
{
    int error = 0;
    socklen_t length = sizeof(error);
    if (getsockopt(socket, SOL_SOCKET, SO_ERROR, &error, &length) < 0) {
        return StatusFromErrno(errno);
    }
    return StatusFromErrno(error);
}

int accept_socket(int socket, sockaddr* address, socklen_t* length)
{
    int accepted = 0;
    do {
        accepted = accept4(socket, address, length, SOCK_CLOEXEC | SOCK_NONBLOCK);
    } while (accepted < 0 && (errno == EINTR || errno == ECONNABORTED));
    return accepted < 0 ? StatusFromErrno(errno) : accepted;
}

ssize_t send_socket(int socket, const void* data, size_t size)
{
    ssize_t sent = 0;
    do {
        sent = send(socket, data, size, MSG_NOSIGNAL);
    } while (sent < 0 && errno == EINTR);
    return sent < 0 ? StatusFromErrno(errno) : sent;
}

ssize_t receive_socket(int socket, void* buffer, size_t size)
{
    ssize_t received = 0;
    do {
        received = recv(socket, buffer, size, 0);
    } while (received < 0 && errno == EINTR);
    return received < 0 ? StatusFromErrno(errno) : received;
}

status_t wait_for_socket(int socket, socket_readiness readiness, bigtime_t timeout)
{
    if (socket < 0) {
        return B_FILE_ERROR; // poll() would wait
    }
    const bigtime_t end = system_time() + std::max<bigtime_t>(timeout, 0);
    pollfd asked = {};
    asked.fd = socket;
    asked.events = readiness == B_SOCKET_READABLE ? POLLIN : POLLOUT;
    int ready = 0;
    do {
        ready = poll(&asked, 1, PollTime(end - system_time()));
    } while (ready < 0 && errno == EINTR);
    if (ready < 0) {
        return StatusFromErrno(errno);
    }
    if (ready == 0) {
        return B_TIMED_OUT;
    }
    return (asked.revents & POLLNVAL) != 0 ? B_FILE_ERROR : B_OK;
}
