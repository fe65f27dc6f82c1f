#include "FileAddresses.h"

#include "EscapedPath.h"

#include <Entry.h>
#include <EntryRef.h>
#include <Message.h>
#include <Path.h>

#include <unistd.h>

namespace kits {

namespace {

constexpr std::string_view kScheme = "file:";

// -1 for what is no hexadecimal digit.
int DigitOf(char byte)
{
    if (byte >= '0' && byte <= '9') {
        return byte - '0';
    }
    const char lower = static_cast<char>(byte | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::string Unescaped(std::string_view text)
{
    std::string bytes;
    bytes.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' && i + 2 < text.size() ? DigitOf(text[i + 1]) : -1;
        const int low = high >= 0 ? DigitOf(text[i + 2]) : -1;
        if (low < 0) {
            bytes += text[i];
            continue;
        }
        bytes += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return bytes;
}

bool IsThisMachine(std::string_view host)
{
    char own[256] = "";
    gethostname(own, sizeof(own) - 1);
    return host.empty() || host == "localhost" || host == own;
}

} // namespace

std::string AddressOfPath(std::string_view path)
{
    return "file://" + EscapedPath(path);
}

std::optional<std::string> PathOfAddress(std::string_view address)
{
    if (!address.starts_with(kScheme)) {
        return std::nullopt;
    }
    address.remove_prefix(kScheme.size());
    if (address.starts_with("//")) {
        const size_t slash = address.find('/', 2);
        if (slash == std::string_view::npos || !IsThisMachine(address.substr(2, slash - 2))) {
            return std::nullopt;
        }
        address.remove_prefix(slash);
    }
    std::string path = Unescaped(address);
    if (!path.starts_with('/') || path.find('\0') != std::string::npos) {
        return std::nullopt;
    }
    return path;
}

std::string AddressesOfRefs(const BMessage& message)
{
    std::string list;
    entry_ref ref;
    entry_ref last; // refs of one folder follow each other: its path is looked up once
    std::string folder;
    for (int32 i = 0; message.FindRef("refs", i, &ref) == B_OK; ++i) {
        if (ref.name == nullptr) {
            continue;
        }
        if (folder.empty() || ref.device != last.device || ref.directory != last.directory) {
            BPath path(&ref);
            folder = path.InitCheck() == B_OK && path.GetParent(&path) == B_OK ? path.Path() : "";
            last = ref;
        }
        if (!folder.empty()) {
            list += AddressOfPath(folder == "/" ? folder + ref.name : folder + "/" + ref.name);
            list += "\r\n";
        }
    }
    return list;
}

void AddRefsOfAddresses(std::string_view list, BMessage* message)
{
    while (!list.empty()) {
        const size_t end = list.find_first_of(std::string_view("\r\n\0", 3));
        const std::string_view line = list.substr(0, end);
        list.remove_prefix(end == std::string_view::npos ? list.size() : end + 1);
        const std::optional<std::string> path = PathOfAddress(line);
        entry_ref ref;
        if (path.has_value() && get_ref_for_path(path->c_str(), &ref) == B_OK) {
            message->AddRef("refs", &ref);
        }
    }
}

} // namespace kits
