#include "ftp/client/FtpSocket.h"

#include <socket.h>

namespace norvane {

void FtpSocket::SetTo(int socket)
{
    const std::lock_guard lock(fMutex);
    if (fNumber >= 0) {
        closesocket(fNumber);
    }
    fNumber = socket;
}

void FtpSocket::Close()
{
    SetTo(-1);
}

void FtpSocket::Break()
{
    linger none = {};
    none.l_onoff = 1;
    setsockopt(fNumber, SOL_SOCKET, SO_LINGER, &none, sizeof(none));
    Close();
}

void FtpSocket::ShutDown()
{
    const std::lock_guard lock(fMutex);
    if (fNumber >= 0) {
        shutdown(fNumber, SHUT_RDWR);
    }
}

} // namespace norvane
