#pragma once

#include <SupportDefs.h>

#include <array>
#include <string>
#include <string_view>

namespace norvane {

/// Finds a text in a larger one. Latin letters stand for capital ones, too, unless there is a
/// capital one in what is sought.
class TextSearch
{
public:
    static constexpr size_t kNowhere = std::string_view::npos;

    explicit TextSearch(const std::string& sought);

    const std::string& Sought() const { return fSought; }
    /// Where it is found first at or behind `from`; kNowhere when it is not, or nothing is sought.
    size_t Find(std::string_view text, size_t from) const;
    /// Where it is found last, beginning before `before`.
    size_t FindBefore(std::string_view text, size_t before) const;

private:
    uint8 Folded(char letter) const { return fFold[static_cast<uint8>(letter)]; }
    bool IsAt(std::string_view text, size_t place) const;

    std::string fSought;
    std::array<uint8, 256> fFold;   // what stands for each byte
    std::array<size_t, 256> fSteps; // how far on it may be, by the byte at its end
};

/// Where a line begins, counted from 1; the last one's beginning for one that is not there.
size_t StartOfLine(std::string_view text, int64 line);

} // namespace norvane
