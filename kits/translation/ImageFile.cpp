#include "ImageFile.h"

#include "server/ToolkitUse.h"

#include <Entry.h>

#include <sys/stat.h>

namespace kits {

namespace {

status_t OpenRegular(const char* path, BFile* file, off_t* size)
{
    if (path == nullptr) {
        return B_BAD_VALUE;
    }
    // Looked at before it is opened: whoever waits at the other end of a FIFO would notice that.
    const BEntry entry(path, true);
    struct stat st;
    const status_t status = entry.GetStat(&st);
    if (status != B_OK) {
        return status;
    }
    if (!S_ISREG(st.st_mode)) {
        return B_BAD_VALUE;
    }
    *size = st.st_size;
    return file->SetTo(&entry, B_READ_ONLY);
}

} // namespace

ImageFile::ImageFile(const char* path) : fStatus(OpenRegular(path, &fFile, &fSize))
{
    if (fStatus == B_OK) {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
}

qint64 ImageFile::readData(char* data, qint64 most)
{
    if (ToolkitUse::IsEnding()) {
        fStatus = B_CANCELED;
        return -1;
    }
    const ssize_t count = fFile.ReadAt(pos(), data, static_cast<size_t>(most));
    if (count < 0) {
        fStatus = static_cast<status_t>(count);
        return -1;
    }
    return count;
}

} // namespace kits
