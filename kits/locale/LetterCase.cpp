#include <LetterCase.h>

#include <QChar>

#include <algorithm>

namespace {

struct Letter
{
    char32_t code = 0;
    size_t bytes = 0; // 0: a byte that is not UTF-8
};

/// How long the sequence is that a first byte begins.
size_t LengthFor(uint8_t first)
{
    if (first < 0x80) {
        return 1;
    }
    return first >= 0xf0 ? 4 : first >= 0xe0 ? 3 : 2;
}

Letter LetterAt(std::string_view text)
{
    const auto first = static_cast<uint8_t>(text[0]);
    const size_t length = LengthFor(first);
    if (length == 1) {
        return {first, 1};
    }
    if (first < 0xc2 || first > 0xf4 || text.size() < length) {
        return {};
    }
    char32_t code = first & (0xffu >> (length + 1));
    for (size_t place = 1; place < length; place++) {
        const auto byte = static_cast<uint8_t>(text[place]);
        if ((byte & 0xc0) != 0x80) {
            return {};
        }
        code = code << 6 | (byte & 0x3fu);
    }
    constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = code >= 0xd800 && code <= 0xdfff;
    return code < kLeast[length] || code > 0x10ffff || isSurrogate ? Letter{}
                                                                   : Letter{code, length};
}

void Append(char32_t code, std::string* text)
{
    const auto add = [text](char32_t byte) {
        *text += static_cast<char>(byte);
    };
    if (code < 0x80) {
        add(code);
    } else if (code < 0x800) {
        add(0xc0 | code >> 6);
        add(0x80 | (code & 0x3f));
    } else if (code < 0x10000) {
        add(0xe0 | code >> 12);
        add(0x80 | (code >> 6 & 0x3f));
        add(0x80 | (code & 0x3f));
    } else {
        add(0xf0 | code >> 18);
        add(0x80 | (code >> 12 & 0x3f));
        add(0x80 | (code >> 6 & 0x3f));
        add(0x80 | (code & 0x3f));
    }
}

template<typename Change>
std::string Changed(std::string_view text, Change change)
{
    std::string changed;
    changed.reserve(text.size());
    while (!text.empty()) {
        const Letter letter = LetterAt(text);
        const size_t length = std::max<size_t>(1, letter.bytes);
        if (letter.bytes == 0) {
            changed += text[0];
            change(U'\0');
        } else {
            Append(change(letter.code), &changed);
        }
        text.remove_prefix(length);
    }
    return changed;
}

bool IsApostrophe(char32_t code)
{
    return code == U'\'' || code == U'\u2019';
}

} // namespace

std::string to_lower_case(std::string_view text)
{
    return Changed(text, [](char32_t code) { return QChar::toLower(code); });
}

std::string to_upper_case(std::string_view text)
{
    return Changed(text, [](char32_t code) { return QChar::toUpper(code); });
}

std::string to_title_case(std::string_view text)
{
    bool isInWord = false;
    return Changed(text, [&isInWord](char32_t code) {
        const bool goesOn = QChar::isLetterOrNumber(code) || QChar::isMark(code);
        const char32_t changed = isInWord ? QChar::toLower(code) : QChar::toTitleCase(code);
        isInWord = goesOn || (isInWord && IsApostrophe(code));
        return changed;
    });
}
