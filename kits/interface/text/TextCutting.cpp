#include "TextCutting.h"

#include "TextDecoding.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace kits {

namespace {

// How far back a blank is near enough.
constexpr int32 kBlankReach = 512;
// How much before a place is read to tell whether it is inside of what is seen as one character;
// the longest families of emoji have 35 bytes.
constexpr int32 kClusterReach = 256;
constexpr size_t kLookAhead = 32;

bool IsAscii(char byte)
{
    return static_cast<uint8>(byte) < 0x80;
}

bool IsContinuation(char byte)
{
    return (static_cast<uint8>(byte) & 0xc0) == 0x80;
}

// The last border between characters as seen, at or before `wanted` and behind `from`; `from` when
// there is none.
int32 ClusterBorder(std::string_view line, int32 from, int32 wanted)
{
    // A tab counts as its sign here, to which accents can be attached.
    const DecodedText shown(
        line.substr(static_cast<size_t>(from), static_cast<size_t>(wanted - from) + kLookAhead),
        TextShowing::kSingleLine);
    const int32 unit = shown.UnitOf(wanted - from);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, shown.Text());
    finder.setPosition(unit);
    if (shown.ByteOf(unit) == wanted - from && finder.isAtBoundary()) {
        return wanted;
    }
    const qsizetype before = finder.toPreviousBoundary();
    return from + (before > 0 ? shown.ByteOf(static_cast<int32>(before)) : 0);
}

// A character's first byte, at or before a place.
int32 CharacterAt(std::string_view line, int32 place)
{
    for (int32 back = 0; back < 3 && place > 0 && IsContinuation(line[static_cast<size_t>(place)]);
         ++back) {
        --place;
    }
    return place;
}

} // namespace

int32 SafeCut(std::string_view line, int32 wanted)
{
    if (wanted <= 0 || wanted >= static_cast<int32>(line.size())) {
        return std::clamp(wanted, 0, static_cast<int32>(line.size()));
    }
    const auto at = [line](int32 place) {
        return line[static_cast<size_t>(place)];
    };
    const int32 leastBlank = std::max(1, wanted - kBlankReach);
    for (int32 place = wanted; place > leastBlank; --place) {
        // An accent may be attached to the blank itself.
        const bool isBehindBlank = at(place - 1) == ' ';
        if (isBehindBlank &&
            (IsAscii(at(place)) || ClusterBorder(line, place - 1, place) == place)) {
            return place;
        }
    }
    if (IsAscii(at(wanted - 1)) && IsAscii(at(wanted))) {
        return wanted;
    }
    const int32 from = CharacterAt(line, std::max(0, wanted - kClusterReach));
    const int32 border = ClusterBorder(line, from, wanted);
    return border > from ? border : CharacterAt(line, wanted);
}

} // namespace kits
