#include "viewer/TextSearch.h"

#include <algorithm>
#include <cstring>

namespace norvane {

namespace {

bool IsCapital(char letter)
{
    return letter >= 'A' && letter <= 'Z';
}

} // namespace

TextSearch::TextSearch(const std::string& sought) : fSought(sought)
{
    const bool isExact = std::any_of(sought.begin(), sought.end(), IsCapital);
    for (size_t byte = 0; byte < fFold.size(); byte++) {
        const bool isFolded = !isExact && IsCapital(static_cast<char>(byte));
        fFold[byte] = static_cast<uint8>(isFolded ? byte - 'A' + 'a' : byte);
    }
    fSteps.fill(std::max<size_t>(1, sought.size()));
    for (size_t i = 0; i + 1 < sought.size(); i++) {
        fSteps[Folded(sought[i])] = sought.size() - 1 - i;
    }
}

bool TextSearch::IsAt(std::string_view text, size_t place) const
{
    return std::equal(fSought.begin(), fSought.end(), text.begin() + static_cast<ptrdiff_t>(place),
                      [this](char one, char other) { return Folded(one) == Folded(other); });
}

size_t TextSearch::Find(std::string_view text, size_t from) const
{
    if (fSought.empty()) {
        return kNowhere;
    }
    const size_t length = fSought.size();
    const uint8 last = Folded(fSought.back());
    for (size_t end = from + length; end <= text.size();) {
        const uint8 found = Folded(text[end - 1]);
        if (found == last && IsAt(text, end - length)) {
            return end - length;
        }
        end += fSteps[found];
    }
    return kNowhere;
}

size_t TextSearch::FindBefore(std::string_view text, size_t before) const
{
    if (fSought.empty() || fSought.size() > text.size()) {
        return kNowhere;
    }
    for (size_t place = std::min(before, text.size() - fSought.size() + 1); place > 0; place--) {
        if (IsAt(text, place - 1)) {
            return place - 1;
        }
    }
    return kNowhere;
}

size_t StartOfLine(std::string_view text, int64 line)
{
    size_t start = 0;
    for (int64 i = 1; i < line; i++) {
        const size_t end = text.find('\n', start);
        if (end == std::string_view::npos) {
            break;
        }
        start = end + 1;
    }
    return start;
}

} // namespace norvane
