#include "support/ErrnoTable.h"

#include <cerrno>

namespace kits {

namespace {

struct Pair
{
    int error;
    status_t status;
};

constexpr Pair kTable[] = {
    {0, B_OK},
    {ENOENT, B_ENTRY_NOT_FOUND},
    {EEXIST, B_FILE_EXISTS},
    {EACCES, B_PERMISSION_DENIED},
    {EPERM, B_NOT_ALLOWED},
    {ENOTDIR, B_NOT_A_DIRECTORY},
    {EISDIR, B_IS_A_DIRECTORY},
    {ENOTEMPTY, B_DIRECTORY_NOT_EMPTY},
    {ENAMETOOLONG, B_NAME_TOO_LONG},
    {ELOOP, B_LINK_LIMIT},
    {ENOSPC, B_DEVICE_FULL},
    {EDQUOT, B_DEVICE_FULL},
    {EROFS, B_READ_ONLY_DEVICE},
    {EXDEV, B_CROSS_DEVICE_LINK},
    {EMFILE, B_NO_MORE_FDS},
    {ENFILE, B_NO_MORE_FDS},
    {EBUSY, B_BUSY},
    {ETXTBSY, B_BUSY},
    {EFBIG, B_NOT_ALLOWED},
    {EMLINK, B_NOT_ALLOWED},
    {EBADF, B_FILE_ERROR},
    {EPIPE, B_BUSTED_PIPE},
    {EOPNOTSUPP, B_UNSUPPORTED},
    {ENOSYS, B_UNSUPPORTED},
    {ENOTTY, B_UNSUPPORTED},
    {ENODATA, B_ENTRY_NOT_FOUND}, // an attribute that is not there
    {ESTALE, B_ENTRY_NOT_FOUND},  // a node that a network file system has lost
    {ENXIO, B_BAD_VALUE},         // a socket, or a FIFO that nobody reads
    {ENODEV, B_BAD_VALUE},
    {EINVAL, B_BAD_VALUE},
    {E2BIG, B_BAD_VALUE},
    {ERANGE, B_BAD_VALUE},
    {EOVERFLOW, B_BAD_VALUE},
    {EILSEQ, B_BAD_VALUE}, // a name that the file system cannot hold
    {EIO, B_IO_ERROR},
    {ENOMEM, B_NO_MEMORY},
    {EFAULT, B_BAD_ADDRESS},
    {EINTR, B_INTERRUPTED},
    {EAGAIN, B_WOULD_BLOCK},
    {ETIMEDOUT, B_TIMED_OUT},
    {ECANCELED, B_CANCELED},
    {ENOEXEC, B_NOT_AN_EXECUTABLE},
};

} // namespace

status_t StatusFromErrno(int error)
{
    for (const Pair& pair : kTable) {
        if (pair.error == error) {
            return pair.status;
        }
    }
    return B_ERROR;
}

} // namespace kits
