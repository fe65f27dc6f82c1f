#include "common/Problems.h"

#include "common/StatusText.h"

#include <Alert.h>

#include <algorithm>

namespace add_ons {

namespace {

constexpr size_t kShownLines = 20;
constexpr size_t kShownBytes = 80;

} // namespace

std::string CutName(const std::string& name)
{
    size_t end = std::min(name.size(), kShownBytes);
    while (end > 0 && end < name.size() && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80) {
        end--; // never in the middle of a letter
    }
    return ShownName(name.substr(0, end)) + (end < name.size() ? "..." : "");
}

void Problems::Add(const std::string& name, const std::string& reason)
{
    fCount++;
    if (fLines.size() < kShownLines) {
        fLines.push_back(CutName(name) + ": " + reason);
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

void Say(const char* title, const std::string& text)
{
    // It deletes itself once it is answered.
    auto* alert =
        new BAlert(title, text.c_str(), "OK", nullptr, nullptr, B_WIDTH_AS_USUAL, B_INFO_ALERT);
    alert->Go();
}

} // namespace add_ons
