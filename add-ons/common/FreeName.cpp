#include "common/FreeName.h"

#include <algorithm>

namespace add_ons {

namespace {

constexpr size_t kMostBytes = 255;
constexpr int kMostTries = 10'000;

std::string Cut(const std::string& name, size_t most)
{
    size_t end = std::min(name.size(), most);
    while (end > 0 && end < name.size() && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80) {
        end--;
    }
    return name.substr(0, end);
}

} // namespace

std::string FindFreeName(const std::string& name, const std::string& ending,
                         const std::function<bool(const std::string&)>& take)
{
    for (int number = 1; number <= kMostTries; number++) {
        const std::string behind =
            (number > 1 ? " " + std::to_string(number) : std::string()) + ending;
        if (behind.size() >= kMostBytes) {
            return {};
        }
        std::string candidate = Cut(name, kMostBytes - behind.size()) + behind;
        if (take(candidate)) {
            return candidate;
        }
    }
    return {};
}

} // namespace add_ons
