#pragma once

#include <Font.h>

#include <QFont>
#include <QFontMetricsF>
#include <QString>

#include <deque>
#include <string>

namespace kits {

/// A font as this thread draws and measures with it.
struct ThreadFont
{
    QFont font;
    QFontMetricsF metrics;
};

/// Turns font values into what draws them.
class FontAccess
{
public:
    /// Lends the calling thread's own font for these values, until the thread's next call.
    static const ThreadFont& For(const BFont& font);
    /// Lets go of the calling thread's fonts.
    static void ForgetThisThreads();

    struct Key
    {
        std::string family;
        int32 size;
        uint16 face;
        SystemFont system;

        bool operator==(const Key& other) const = default;
    };

private:
    struct Entry
    {
        Key key;
        ThreadFont font;
    };

    // Fonts that have drawn belong to the thread that drew with them.
    static std::deque<Entry>& ThisThreads();
    static Key KeyOf(const BFont& font);
};

/// What the desktop says of one face of a system font.
struct SystemFace
{
    std::string family;
    int32 size = 12; // pixels: the largest at which a line is 15 units high
    int32 descent = 3;
};

/// Found out when first asked for while the server runs, and kept.
const SystemFace& FaceOf(SystemFont system, bool isBold);

} // namespace kits
