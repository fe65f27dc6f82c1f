#include "common/Problems.h"

#include <Alert.h>
#include <Errors.h>

namespace add_ons {

namespace {

constexpr size_t kShownLines = 20;
constexpr size_t kShownBytes = 80;

} // namespace

void Problems::Add(const std::string& name, const std::string& reason)
{
    fCount++;
    if (fLines.size() < kShownLines) {
        fLines.push_back(ShownName(name) + ": " + reason);
    }
}

std::string Problems::Text() const
{
    std::string text;
    for (const std::string& line : fLines) {
        text += "\n\t" + line;
    }
    const int64 more = fCount - static_cast<int64>(fLines.size());
    if (more > 0) {
        text += "\n\tand " + std::to_string(more) + " more";
    }
    return text;
}

void Problems::Tell(const char* title, const std::string& heading) const
{
    if (!IsEmpty()) {
        Say(title, heading + Text());
    }
}

std::string ShownName(const std::string& name)
{
    std::string shown = name;
    if (shown.size() > kShownBytes) {
        size_t end = kShownBytes;
        while (end > 0 && (static_cast<unsigned char>(shown[end]) & 0xC0) == 0x80) {
            end--; // never in the middle of a letter
        }
        shown.resize(end);
        shown += "...";
    }
    for (char& letter : shown) {
        if (static_cast<unsigned char>(letter) < ' ' || letter == '\x7f') {
            letter = ' ';
        }
    }
    return shown;
}

std::string Reason(status_t status)
{
    switch (status) {
    case B_ENTRY_NOT_FOUND:
        return "it is not there any more";
    case B_PERMISSION_DENIED:
    case B_NOT_ALLOWED:
        return "it may not be read or written";
    case B_DEVICE_FULL:
        return "the volume is full";
    case B_READ_ONLY_DEVICE:
        return "the volume is read-only";
    case B_NAME_TOO_LONG:
        return "its name is too long";
    case B_FILE_EXISTS:
        return "the name is taken";
    case B_LINK_LIMIT:
        return "a link is there instead";
    case B_NO_MEMORY:
        return "there is no memory left";
    case B_NO_MORE_FDS:
        return "too many files are open";
    default:
        return "the file system refused it";
    }
}

void Say(const char* title, const std::string& text)
{
    // It deletes itself once it is answered.
    auto* alert =
        new BAlert(title, text.c_str(), "OK", nullptr, nullptr, B_WIDTH_AS_USUAL, B_INFO_ALERT);
    alert->Go();
}

} // namespace add_ons
