#include <Font.h>

#include "FontAccess.h"
#include "VisibleText.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <deque>

using kits::FaceOf;
using kits::FontAccess;
using kits::SystemFont;

namespace {

constexpr int32 kSystemHeight = 15;
// Text in more fonts than this at once makes some of them anew.
constexpr size_t kFontsPerThread = 12;

BFont MakeFont(const char* family, uint16 face)
{
    BFont font;
    font.SetFamilyAndStyle(family, nullptr);
    font.SetFace(face);
    return font;
}

/// Without an end of its own where `length` says so.
std::string_view BytesOf(const char* string, int32 length)
{
    if (string == nullptr) {
        return {};
    }
    return {string,
            length < 0 ? std::strlen(string) : ::strnlen(string, static_cast<size_t>(length))};
}

const BFont gPlainFont;
const BFont gBoldFont = MakeFont(nullptr, B_BOLD_FACE);
const BFont gFixedFont = MakeFont("monospace", B_REGULAR_FACE);

} // namespace

const BFont* const be_plain_font = &gPlainFont;
const BFont* const be_bold_font = &gBoldFont;
const BFont* const be_fixed_font = &gFixedFont;

namespace kits {

FontAccess::Key FontAccess::KeyOf(const BFont& font)
{
    return {font.fFamily, static_cast<int32>(std::lround(font.Size())), font.fFace, font.fSystem};
}

std::deque<FontAccess::Entry>& FontAccess::ThisThreads()
{
    thread_local std::deque<Entry> entries;
    return entries;
}

void FontAccess::ForgetThisThreads()
{
    ThisThreads().clear();
}

const ThreadFont& FontAccess::For(const BFont& font)
{
    std::deque<Entry>& entries = ThisThreads();
    Key key = KeyOf(font);
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&key](const Entry& entry) { return entry.key == key; });
    if (found != entries.end()) {
        return found->font;
    }
    const bool isBold = (key.face & B_BOLD_FACE) != 0;
    QFont made(QString::fromStdString(
        key.system == SystemFont::kNone ? key.family : FaceOf(key.system, isBold).family));
    made.setPixelSize(std::max(1, key.size));
    made.setBold(isBold);
    made.setItalic((key.face & B_ITALIC_FACE) != 0);
    made.setUnderline((key.face & B_UNDERSCORE_FACE) != 0);
    made.setStrikeOut((key.face & B_STRIKEOUT_FACE) != 0);
    if (entries.size() == kFontsPerThread) {
        entries.pop_back();
    }
    entries.push_front({std::move(key), {made, QFontMetricsF(made)}});
    return entries.front().font;
}

} // namespace kits

BFont::BFont() = default;

BFont::BFont(const BFont* font)
{
    if (font != nullptr) {
        *this = *font;
    }
}

status_t BFont::SetFamilyAndStyle(const char* family, const char* style)
{
    if (family != nullptr) {
        if (std::strlen(family) > B_FONT_FAMILY_LENGTH) {
            return B_NAME_TOO_LONG;
        }
        fFamily = family;
        fSystem = fFamily == "monospace" ? SystemFont::kFixed : SystemFont::kNone;
        if (fSystem == SystemFont::kFixed) {
            fFamily.clear();
        } else {
            fIsFitted = false;
        }
    }
    if (style != nullptr) {
        const bool isBold = std::strstr(style, "Bold") != nullptr;
        const bool isItalic = std::strstr(style, "Italic") != nullptr;
        const int face = (isBold ? B_BOLD_FACE : 0) | (isItalic ? B_ITALIC_FACE : 0);
        SetFace(static_cast<uint16>(face != 0 ? face : B_REGULAR_FACE));
    }
    return B_OK;
}

void BFont::SetSize(float size)
{
    fSize = std::max(1.0f, size);
    fIsFitted = false;
}

void BFont::SetFace(uint16 face)
{
    fFace = face;
}

void BFont::GetFamilyAndStyle(font_family* family, font_style* style) const
{
    if (family != nullptr) {
        const bool isBold = (fFace & B_BOLD_FACE) != 0;
        const std::string& name =
            fSystem == SystemFont::kNone ? fFamily : FaceOf(fSystem, isBold).family;
        const size_t length = std::min<size_t>(name.size(), B_FONT_FAMILY_LENGTH);
        std::memcpy(*family, name.data(), length);
        (*family)[length] = '\0';
    }
    if (style != nullptr) {
        const bool isBold = (fFace & B_BOLD_FACE) != 0;
        const bool isItalic = (fFace & B_ITALIC_FACE) != 0;
        const char* name =
            isBold ? (isItalic ? "Bold Italic" : "Bold") : (isItalic ? "Italic" : "Regular");
        std::snprintf(*style, sizeof(*style), "%s", name);
    }
}

float BFont::Size() const
{
    if (!fIsFitted) {
        return fSize;
    }
    return static_cast<float>(FaceOf(fSystem, (fFace & B_BOLD_FACE) != 0).size);
}

uint16 BFont::Face() const
{
    return fFace;
}

bool BFont::IsFixed() const
{
    return fSystem == SystemFont::kFixed;
}

void BFont::GetHeight(font_height* height) const
{
    if (fIsFitted) {
        const int32 descent = FaceOf(fSystem, (fFace & B_BOLD_FACE) != 0).descent;
        *height = {static_cast<float>(kSystemHeight - descent), static_cast<float>(descent), 0};
        return;
    }
    // Lists ask the same font for each of a million rows.
    thread_local BFont last;
    thread_local font_height lastHeight = {};
    if (last != *this) { // at first a fitted one, which this is not
        const QFontMetricsF& metrics = FontAccess::For(*this).metrics;
        lastHeight.ascent = static_cast<float>(std::ceil(metrics.ascent()));
        lastHeight.descent = static_cast<float>(std::ceil(metrics.descent()));
        lastHeight.leading = static_cast<float>(std::round(metrics.leading()));
        last = *this;
    }
    *height = lastHeight;
}

float BFont::StringWidth(const char* string) const
{
    return StringWidth(string, -1);
}

float BFont::StringWidth(const char* string, int32 length) const
{
    if (string == nullptr || length == 0 || string[0] == '\0') {
        return 0;
    }
    return static_cast<float>(FontAccess::For(*this).metrics.horizontalAdvance(
        kits::VisibleText(BytesOf(string, length))));
}

BString BFont::VisibleText(const char* string, int32 length)
{
    return kits::VisibleText(BytesOf(string, length)).toUtf8().constData();
}

void BFont::GetStringWidths(const char* strings[], const int32 lengths[], int32 count,
                            float widths[]) const
{
    for (int32 i = 0; i < count; ++i) {
        widths[i] = StringWidth(strings[i], lengths != nullptr ? lengths[i] : -1);
    }
}

void BFont::TruncateString(BString* text, uint32 mode, float width) const
{
    const QFontMetricsF& metrics = FontAccess::For(*this).metrics;
    const QString whole = kits::VisibleText(BytesOf(text->String(), text->Length()));
    // Widths handed over as floats are rounded: half a hundredth decides nothing.
    const double room = static_cast<double>(width) + 0.005;
    if (metrics.horizontalAdvance(whole) <= room) {
        return;
    }
    const Qt::TextElideMode side = mode == B_TRUNCATE_END         ? Qt::ElideRight
                                   : mode == B_TRUNCATE_BEGINNING ? Qt::ElideLeft
                                                                  : Qt::ElideMiddle;
    const QString cut = metrics.elidedText(whole, side, room);
    const bool fits = metrics.horizontalAdvance(cut) <= room;
    text->SetTo(fits ? cut.toUtf8().constData() : "");
}
