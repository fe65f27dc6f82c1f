#pragma once

#include <SupportDefs.h>

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>

// Sockets. bind(), listen(), getsockname(), getpeername(), getsockopt(), setsockopt(), shutdown(),
// inet_pton(), inet_ntop(), getaddrinfo() and freeaddrinfo() are the platform's own; the functions
// below stand in place of socket(), connect(), accept(), send(), recv(), select() and close(),
// whose manners differ from system to system. An extension of the platform, closesocket() aside.
//
// Their sockets never block, whatever their number, and no program that is started inherits them.
// What fails is a status of Errors.h, never a signal.
//
// Thread: any; one socket may be read, written and shut down by different threads, but its number
// must not be used any more once closesocket() was called.

/// What a socket is waited for.
enum socket_readiness {
    B_SOCKET_READABLE, // or accepting, or at its end
    B_SOCKET_WRITABLE, // or connected, or refused
};

/// Makes a socket of `family` (AF_INET, AF_INET6) and `type` (SOCK_STREAM, SOCK_DGRAM); returns its
/// number, or a negative status. Errors: B_NO_MORE_FDS, B_ERROR where there is no such family ...
int open_socket(int family, int type);

/// Closes a socket. Errors: B_FILE_ERROR when it is not open.
status_t closesocket(int socket);

/// Begins to connect. B_WOULD_BLOCK: the socket is writable as soon as that is decided, and
/// socket_error() tells how. Errors: B_ERROR and others when it is refused at once.
status_t connect_socket(int socket, const sockaddr* address, socklen_t length);

/// What became of a connection that was begun: B_OK when it stands. Asking clears it.
status_t socket_error(int socket);

/// Takes the next connection; returns its socket, or a negative status: B_WOULD_BLOCK when nobody
/// waits. `address` gets who it is, `*length` bytes at most.
int accept_socket(int socket, sockaddr* address, socklen_t* length);

/// Sends what there is room for, and returns how many bytes that was, or a negative status:
/// B_WOULD_BLOCK when there is none, B_BUSTED_PIPE when nobody reads any more.
ssize_t send_socket(int socket, const void* data, size_t size);

/// Receives what has come, `size` bytes at most, and returns how many, 0 at the end, or a negative
/// status: B_WOULD_BLOCK when nothing has come yet.
ssize_t receive_socket(int socket, void* buffer, size_t size);

/// Waits until the socket is ready, failed ones included: the call that follows tells.
/// Units: microseconds from now; 0 and less only looks. Errors: B_TIMED_OUT; B_FILE_ERROR when it
/// is not open.
status_t wait_for_socket(int socket, socket_readiness readiness, bigtime_t timeout);
