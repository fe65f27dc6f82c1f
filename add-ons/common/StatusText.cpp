#include "common/StatusText.h"

#include <Errors.h>
#include <Font.h>
#include <String.h>

namespace add_ons {

const char* StatusText(status_t status)
{
    switch (status) {
    case B_ENTRY_NOT_FOUND:
        return "it is not there any more";
    case B_PERMISSION_DENIED:
        return "permission denied";
    case B_NOT_ALLOWED:
        return "this is not allowed here";
    case B_READ_ONLY_DEVICE:
        return "the volume is read only";
    case B_DEVICE_FULL:
        return "the volume is full";
    case B_FILE_EXISTS:
        return "an entry of that name exists";
    case B_NAME_TOO_LONG:
        return "the name is too long";
    case B_IS_A_DIRECTORY:
        return "it is a folder";
    case B_NOT_A_DIRECTORY:
        return "something on the way to it is no folder";
    case B_LINK_LIMIT:
        return "it is a link";
    case B_IO_ERROR:
        return "the device reports an error";
    case B_NO_MORE_FDS:
        return "too many files are open";
    case B_NO_MEMORY:
        return "out of memory";
    case B_NO_MORE_THREADS:
        return "the system has no threads left";
    case B_BUSY:
        return "it is busy";
    case B_CANCELED:
        return "it was stopped";
    default:
        return "the system refuses";
    }
}

std::string ShownName(std::string_view name)
{
    return BFont::VisibleText(name.data(), static_cast<int32>(name.size())).String();
}

std::string Grouped(size_t count)
{
    std::string text = std::to_string(count);
    for (size_t at = text.size(); at > 3; at -= 3) {
        text.insert(at - 3, 1, ' ');
    }
    return text;
}

} // namespace add_ons
