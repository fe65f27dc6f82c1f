#include "Extract/LinkPlan.h"

#include <algorithm>
#include <deque>

namespace add_ons {

namespace {

constexpr int kMostLinks = 40; // that the system follows in one path
constexpr size_t kMostWaiting = 10'000;

/// The steps of a link's text, ".." among them; false for one from the system's root.
bool ReadText(const std::string& text, std::deque<std::string>* steps)
{
    if (text.empty() || text.front() == '/') {
        return false;
    }
    std::deque<std::string> read;
    for (size_t at = 0; at <= text.size();) {
        const size_t end = std::min(text.find('/', at), text.size());
        const std::string step = text.substr(at, end - at);
        if (!step.empty() && step != ".") {
            read.push_back(step);
        }
        at = end + 1;
    }
    steps->insert(steps->begin(), read.begin(), read.end());
    return steps->size() <= kMostWaiting;
}

} // namespace

bool LinkPlan::Add(const Steps& path, const std::string& text)
{
    return fLinks.try_emplace(path, text).second;
}

bool LinkPlan::StaysInside(const Steps& path) const
{
    const auto link = fLinks.find(path);
    if (link == fLinks.end()) {
        return false;
    }
    Steps place(path.begin(), path.end() - 1);
    std::deque<std::string> waiting;
    if (!ReadText(link->second, &waiting)) {
        return false;
    }
    int links = 1;
    while (!waiting.empty()) {
        const std::string step = waiting.front();
        waiting.pop_front();
        if (step == "..") {
            if (place.empty()) {
                return false;
            }
            place.pop_back();
            continue;
        }
        place.push_back(step);
        const auto next = fLinks.find(place);
        if (next != fLinks.end()) {
            place.pop_back();
            if (++links > kMostLinks || !ReadText(next->second, &waiting)) {
                return false;
            }
        }
    }
    return true;
}

} // namespace add_ons
