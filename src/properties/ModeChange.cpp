#include "properties/ModeChange.h"

#include <sys/stat.h>

namespace norvane {

namespace {

constexpr mode_t kPermissions = 07777;
constexpr mode_t kExecute = 0111;
constexpr mode_t kSpecial = 07000;

} // namespace

void ModeMix::Add(mode_t mode, bool isFirst)
{
    const mode_t bits = mode & kPermissions;
    if (isFirst) {
        *this = {bits, 0};
        return;
    }
    const mode_t some = set | mixed | bits;
    set &= bits;
    mixed = some & ~set;
}

std::string ModeMix::Octal() const
{
    std::string digits;
    for (int shift = 9; shift >= 0; shift -= 3) {
        const bool differs = ((mixed >> shift) & 7) != 0;
        digits += differs ? '?' : static_cast<char>('0' + ((set >> shift) & 7));
    }
    return digits;
}

std::string ModeMix::Letters() const
{
    struct Special
    {
        mode_t bit;
        char with;    // the right to execute
        char without; // it
    };
    constexpr Special kSpecials[] = {{04000, 's', 'S'}, {02000, 's', 'S'}, {01000, 't', 'T'}};
    std::string letters;
    for (int bit = 8; bit >= 0; bit--) {
        const mode_t mask = mode_t{1} << bit;
        const Special& special = kSpecials[(8 - bit) / 3];
        const bool isExecute = bit % 3 == 0;
        if ((mixed & mask) != 0 || (isExecute && (mixed & special.bit) != 0)) {
            letters += '?';
        } else if (isExecute && (set & special.bit) != 0) {
            letters += (set & mask) != 0 ? special.with : special.without;
        } else {
            letters += (set & mask) != 0 ? "xwr"[bit % 3] : '-';
        }
    }
    return letters;
}

mode_t ModeChange::For(mode_t mode) const
{
    return S_ISLNK(mode) ? mode : (mode | given) & ~taken;
}

mode_t ModeChange::ForInside(mode_t mode) const
{
    mode_t allowed = given;
    if (!S_ISDIR(mode)) {
        allowed &= ~kSpecial;
        allowed &= (mode & kExecute) != 0 ? ~mode_t{0} : ~kExecute;
    }
    return ModeChange{allowed, taken}.For(mode);
}

} // namespace norvane
