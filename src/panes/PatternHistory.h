#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace norvane {

/// The last patterns that a person typed, the newest first, each once. Plain data.
class PatternHistory
{
public:
    static constexpr std::size_t kMost = 10;

    void Add(const std::string& pattern);
    const std::vector<std::string>& Patterns() const { return fPatterns; }

private:
    std::vector<std::string> fPatterns;
};

/// Goes through a history from a text that was not in it yet, and back to that. Plain data.
class HistoryWalk
{
public:
    explicit HistoryWalk(std::vector<std::string> patterns) : fPatterns(std::move(patterns)) {}

    /// The pattern before the one shown, or after; `shown` itself at the ends. What was typed is
    /// there again behind the newest.
    std::string Older(const std::string& shown);
    std::string Newer(const std::string& shown);

private:
    std::vector<std::string> fPatterns;
    std::string fTyped;
    std::size_t fPlace = 0; // 0: what is typed; else one more than the pattern's
};

} // namespace norvane
