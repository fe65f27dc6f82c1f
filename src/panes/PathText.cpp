#include "panes/PathText.h"

#include <cctype>
#include <vector>

namespace norvane {

namespace {

constexpr const char* kFileScheme = "file://";

int HexDigit(char digit)
{
    if (std::isxdigit(static_cast<unsigned char>(digit)) == 0) {
        return -1;
    }
    return std::isdigit(static_cast<unsigned char>(digit)) != 0
               ? digit - '0'
               : std::tolower(static_cast<unsigned char>(digit)) - 'a' + 10;
}

std::string WithoutEscapes(const std::string& address)
{
    std::string text;
    for (std::size_t i = 0; i < address.size(); i++) {
        const int high =
            address[i] == '%' && i + 2 < address.size() ? HexDigit(address[i + 1]) : -1;
        const int low = high >= 0 ? HexDigit(address[i + 2]) : -1;
        const int byte = high * 16 + low;
        if (low < 0 || byte == 0) {
            text += address[i];
            continue;
        }
        text += static_cast<char>(byte);
        i += 2;
    }
    return text;
}

/// The path in a "file://" address: what follows the host, which may be empty or named.
std::string PathOfAddress(const std::string& address)
{
    const std::string rest = address.substr(std::string(kFileScheme).size());
    const std::size_t slash = rest.find('/');
    return slash == std::string::npos ? "/" : WithoutEscapes(rest.substr(slash));
}

std::string Normalised(const std::string& path)
{
    std::vector<std::string> steps;
    std::size_t start = 0;
    while (start <= path.size()) {
        std::size_t end = path.find('/', start);
        end = end == std::string::npos ? path.size() : end;
        const std::string step = path.substr(start, end - start);
        if (step == ".." && !steps.empty()) {
            steps.pop_back();
        } else if (!step.empty() && step != "." && step != "..") {
            steps.push_back(step);
        }
        start = end + 1;
    }
    std::string whole;
    for (const std::string& step : steps) {
        whole += "/" + step;
    }
    return whole.empty() ? "/" : whole;
}

} // namespace

std::string ResolveFolder(const std::string& typed, const std::string& current,
                          const std::string& home)
{
    if (typed.starts_with(kFileScheme)) {
        return Normalised(PathOfAddress(typed));
    }
    if (typed == "~" || typed.starts_with("~/")) {
        return Normalised(home + typed.substr(1));
    }
    if (typed.starts_with("/")) {
        return Normalised(typed);
    }
    return Normalised(JoinPath(current, typed));
}

std::string ParentFolder(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos || slash == 0 ? "/" : path.substr(0, slash);
}

std::string JoinPath(const std::string& folder, const std::string& name)
{
    return folder.ends_with("/") ? folder + name : folder + "/" + name;
}

} // namespace norvane
