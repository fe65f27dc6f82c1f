#pragma once

#include <InterfaceDefs.h>
#include <Rect.h>

#include <String.h>

#include <string>

namespace kits {
class FontAccess;
/// Which of the system's fonts a font stands for.
enum class SystemFont : uint8 { kNone, kPlain, kFixed };
} // namespace kits

/// The names of a family and of a style, ended by a zero.
using font_family = char[64];
using font_style = char[64];

/// The longest of such names, in bytes.
constexpr int32 B_FONT_FAMILY_LENGTH = 63;
constexpr int32 B_FONT_STYLE_LENGTH = 63;

/// How letters look, as bits: for SetFace().
enum : uint16 {
    B_ITALIC_FACE = 0x0001,
    B_UNDERSCORE_FACE = 0x0002,
    B_STRIKEOUT_FACE = 0x0010,
    B_BOLD_FACE = 0x0020,
    B_REGULAR_FACE = 0x0040,
};

/// What to set: for BView::SetFont().
enum : uint32 {
    B_FONT_FAMILY_AND_STYLE = 0x01,
    B_FONT_SIZE = 0x02,
    B_FONT_FACE = 0x20,
    B_FONT_ALL = 0xff,
};

/// Where TruncateString() cuts.
enum : uint32 { B_TRUNCATE_END, B_TRUNCATE_BEGINNING, B_TRUNCATE_MIDDLE, B_TRUNCATE_SMART };

/// How far a font reaches from its base line, and the gap between two lines; whole units.
struct font_height
{
    float ascent;  // above the base line
    float descent; // below it
    float leading; // between two lines
};

/// A font's description: family, style and size. A value; copies share nothing.
///
/// Thread: a font belongs to whoever holds it; measuring works on any thread.
/// Units: sizes and widths are view units. Strings are UTF-8; a byte that is not is measured as
/// U+FFFD.
class BFont
{
public:
    /// Makes a copy of the plain font, or of `font`; null stands for the plain one.
    BFont();
    explicit BFont(const BFont* font);
    BFont(const BFont& font) = default;
    BFont& operator=(const BFont& font) = default;

    /// Takes a family by name; null keeps the family and sets the style only ("Bold", "Italic",
    /// "Bold Italic", anything else is regular).
    status_t SetFamilyAndStyle(const char* family, const char* style);
    /// Sets the size: the height of the letters' square, at least 1.
    void SetSize(float size);
    /// Sets the style by B_*_FACE bits.
    void SetFace(uint16 face);

    /// Tells the names; a null argument is left out.
    void GetFamilyAndStyle(font_family* family, font_style* style) const;
    /// What SetSize() and SetFace() set.
    float Size() const;
    uint16 Face() const;
    /// Whether all letters are equally wide, as the fixed font's are.
    bool IsFixed() const;
    /// Tells ascent, descent and leading; the plain, the bold and the fixed font are 15 units high.
    void GetHeight(font_height* height) const;

    /// How far the pen moves when the text is drawn, whole or its first `length` bytes; may be
    /// fractional. Null has no width.
    float StringWidth(const char* string) const;
    float StringWidth(const char* string, int32 length) const;
    /// Tells the widths of `count` texts of those lengths in bytes.
    void GetStringWidths(const char* strings[], const int32 lengths[], int32 count,
                         float widths[]) const;

    /// Shortens the text so that it is at most `width` wide, an ellipsis in place of what was cut.
    /// Leaves it alone when it fits; empties it when not even the ellipsis does.
    void TruncateString(BString* text, uint32 mode, float width) const;
    /// Extension. The text (its first `length` bytes; -1: all) as views draw and measure it, so
    /// that different names are not drawn alike: control characters, line ends, direction marks and
    /// what else has no shape are their numbers ("\u2039202E\u203A"); joiners stay between letters
    /// that are joined. Bytes that are not UTF-8 are U+FFFD. For names in texts that are shown
    /// otherwise, as in an alert.
    static BString VisibleText(const char* string, int32 length = -1);

    /// Whether both are drawn alike, being set alike.
    bool operator==(const BFont& other) const = default;

private:
    friend class kits::FontAccess;

    std::string fFamily; // empty: the system's own, as fSystem says
    float fSize = 12;
    uint16 fFace = B_REGULAR_FACE;
    kits::SystemFont fSystem = kits::SystemFont::kPlain;
    // Whether the size is the one at which the system's font is 15 units high.
    bool fIsFitted = true;
};

/// The desktop's sans font, at the size where a line is 15 units high.
extern const BFont* const be_plain_font;
/// The bold face of be_plain_font.
extern const BFont* const be_bold_font;
/// The desktop's font of equally wide letters.
extern const BFont* const be_fixed_font;
