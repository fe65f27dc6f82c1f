#include "fileops/engine/ProblemList.h"

#include <Errors.h>
#include <Font.h>
#include <String.h>

namespace norvane {

namespace {

constexpr size_t kShownLines = 20;
constexpr size_t kShownNameBytes =
    80; // a longer name is cut: this is text to read, not a path to use

/// Why a program was not started.
const char* ReasonForStart(status_t status)
{
    switch (status) {
    case B_LAUNCH_FAILED_NO_RESOLVE_LINK:
        return "the link leads nowhere";
    case B_LAUNCH_FAILED_NO_PREFERRED_APP:
        return "no installed program is set for files of this kind";
    case B_LAUNCH_FAILED_APP_NOT_FOUND:
        return "its program, or what that needs, is not installed";
    case B_LAUNCH_FAILED_EXECUTABLE:
    case B_NOT_AN_EXECUTABLE:
        return "this machine cannot run it";
    case B_LAUNCH_FAILED:
        return "its program could not be started";
    case B_TIMED_OUT:
        return "its program does not answer";
    case B_NO_MORE_TEAMS:
        return "the system has no processes left";
    default:
        return "the file system refused it";
    }
}

} // namespace

std::string ShownName(const std::string& name)
{
    if (name.size() <= kShownNameBytes) {
        return BFont::VisibleText(name.c_str()).String();
    }
    size_t end = kShownNameBytes;
    while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80) {
        end--; // never in the middle of a letter
    }
    return std::string(BFont::VisibleText(name.c_str(), static_cast<int32>(end)).String()) + "...";
}

void ProblemList::Add(const std::string& name, const std::string& reason)
{
    fCount++;
    if (fLines.size() < kShownLines) {
        fLines.push_back(ShownName(name) + ": " + reason);
    }
}

std::string ProblemList::Text() const
{
    std::string text = "Some items could not be handled whole:";
    for (const std::string& line : fLines) {
        text += "\n\t" + line;
    }
    const int64 more = fCount - static_cast<int64>(fLines.size());
    if (more > 0) {
        text += "\n\tand " + std::to_string(more) + " more";
    }
    return text;
}

const char* ReasonFor(status_t status)
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
        return "the name or path is too long";
    case B_IS_A_DIRECTORY:
        return "a folder of that name is in the way";
    case B_NOT_A_DIRECTORY:
        return "something that is no folder is in the way";
    case B_LINK_LIMIT:
        return "its links lead in a circle";
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
    default:
        return ReasonForStart(status);
    }
}

} // namespace norvane
