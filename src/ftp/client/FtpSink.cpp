#include "ftp/client/FtpSink.h"

#include "ftp/client/clsFTP.h"

#include <DataIO.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace norvane {

int FileSink::Take(const char* data, size_t size)
{
    return fFile.Write(data, size) == static_cast<ssize_t>(size) ? 0 : kFtpLocalFile;
}

int FileSink::End()
{
    // A file that writes behind tells here what became of the last bytes.
    return fFile.Write("", 0) < 0 ? kFtpLocalFile : 0;
}

int MemorySink::Take(const char* data, size_t size)
{
    if (size > fLimit - std::min(fLimit, fLength)) {
        return kFtpTooMuch;
    }
    if (fLength + size > fCapacity) {
        const size_t capacity = std::max(fLength + size, fCapacity * 2);
        void* grown = std::realloc(*fData, capacity + 1);
        if (grown == nullptr) {
            return kFtpTooMuch;
        }
        *fData = static_cast<char*>(grown);
        fCapacity = capacity;
    }
    std::memcpy(*fData + fLength, data, size);
    fLength += size;
    return 0;
}

int MemorySink::End()
{
    if (fLength < fCapacity) {
        void* cut = std::realloc(*fData, fLength + 1);
        *fData = cut != nullptr ? static_cast<char*>(cut) : *fData;
    }
    return 0;
}

} // namespace norvane
