#pragma once

#include <mutex>

namespace norvane {

/// Owns a socket. Thread: its owner's, but for ShutDown().
class FtpSocket
{
public:
    FtpSocket() = default;
    ~FtpSocket() { Close(); }
    FtpSocket(const FtpSocket&) = delete;
    FtpSocket& operator=(const FtpSocket&) = delete;

    /// Adopts `socket` in place of the one it had, which is closed.
    void SetTo(int socket);
    void Close();
    /// The same, so that the other end sees the connection broken, not ended.
    void Break();
    /// Ends both directions; the socket stays open. Thread: any.
    void ShutDown();

    /// -1 when there is none.
    int Number() const { return fNumber; }
    bool IsOpen() const { return fNumber >= 0; }

private:
    // Between its closing and another thread's shutting it down the number could become that of
    // something else. The owner alone writes it, so it reads it without the lock.
    std::mutex fMutex;
    int fNumber = -1;
};

} // namespace norvane
