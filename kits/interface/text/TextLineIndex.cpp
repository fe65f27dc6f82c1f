#include "TextLineIndex.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace kits {

namespace {

void AppendStarts(std::string_view text, int64 offset, std::vector<int64>& starts)
{
    size_t place = 0;
    while (place < text.size()) {
        const void* found = std::memchr(text.data() + place, '\n', text.size() - place);
        if (found == nullptr) {
            return;
        }
        place = static_cast<size_t>(static_cast<const char*>(found) - text.data()) + 1;
        starts.push_back(offset + static_cast<int64>(place));
    }
}

} // namespace

void TextLineIndex::Build(std::string_view text)
{
    // Counted first: growing would take twice the room, and more time.
    std::vector<int64> starts;
    starts.reserve(static_cast<size_t>(std::count(text.begin(), text.end(), '\n')) + 1);
    starts.push_back(0);
    fStarts = std::move(starts);
    AppendStarts(text, 0, fStarts);
}

void TextLineIndex::Replace(int64 offset, int64 removed, std::string_view inserted)
{
    // The lines that began behind a removed '\n' are gone.
    const auto first = std::upper_bound(fStarts.begin(), fStarts.end(), offset);
    const auto last = std::upper_bound(first, fStarts.end(), offset + removed);
    const int64 shift = static_cast<int64>(inserted.size()) - removed;
    for (auto start = last; start != fStarts.end(); ++start) {
        *start += shift;
    }
    const auto place = fStarts.erase(first, last);
    std::vector<int64> added;
    AppendStarts(inserted, offset, added);
    fStarts.insert(place, added.begin(), added.end());
}

int64 TextLineIndex::LineStart(int64 line) const
{
    const int64 last = CountLines() - 1;
    return fStarts[static_cast<size_t>(std::clamp<int64>(line, 0, last))];
}

int64 TextLineIndex::LineOf(int64 offset) const
{
    const auto behind = std::upper_bound(fStarts.begin() + 1, fStarts.end(), offset);
    return behind - fStarts.begin() - 1;
}

} // namespace kits
