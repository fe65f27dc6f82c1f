#include "ftp/client/FtpStop.h"

namespace norvane {

FtpStop::Call::Call(FtpStop& stop) : fStop(stop)
{
    const std::lock_guard lock(fStop.fMutex);
    if (fStop.fDepth++ == 0) {
        fStop.fIsCancelled = false;
    }
}

FtpStop::Call::~Call()
{
    const std::lock_guard lock(fStop.fMutex);
    fStop.fDepth--;
}

void FtpStop::Cancel()
{
    const std::lock_guard lock(fMutex);
    if (fDepth > 0) {
        fIsCancelled = true;
    }
}

} // namespace norvane
