#include "panes/PatternHistory.h"

#include <algorithm>

namespace norvane {

void PatternHistory::Add(const std::string& pattern)
{
    std::erase(fPatterns, pattern);
    fPatterns.insert(fPatterns.begin(), pattern);
    fPatterns.resize(std::min(fPatterns.size(), kMost));
}

std::string HistoryWalk::Older(const std::string& shown)
{
    if (fPlace == 0) {
        fTyped = shown;
        // The newest stands in the field at first.
        const bool isNewest = !fPatterns.empty() && shown == fPatterns.front();
        fPlace = isNewest && fPatterns.size() > 1 ? 1 : 0;
    }
    if (fPlace == fPatterns.size()) {
        return shown;
    }
    return fPatterns[fPlace++];
}

std::string HistoryWalk::Newer(const std::string& shown)
{
    if (fPlace == 0) {
        return shown;
    }
    fPlace--;
    return fPlace == 0 ? fTyped : fPatterns[fPlace - 1];
}

} // namespace norvane
