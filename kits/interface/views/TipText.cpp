#include "TipText.h"

namespace kits {

namespace {

bool IsWithinLetter(const std::string& text, size_t place)
{
    return place < text.size() && (static_cast<unsigned char>(text[place]) & 0xC0) == 0x80;
}

/// How many bytes of the line's rest fit, at least one letter.
size_t Fitting(const BFont& font, const std::string& line, size_t from, float width)
{
    size_t fits = 0;
    size_t atMost = line.size() - from;
    while (fits < atMost) { // halving: the width grows with the text
        size_t middle = fits + (atMost - fits + 1) / 2;
        if (font.StringWidth(line.c_str() + from, static_cast<int32>(middle)) <= width) {
            fits = middle;
        } else {
            atMost = middle - 1;
        }
    }
    while (fits > 0 && IsWithinLetter(line, from + fits)) {
        fits--;
    }
    if (fits == 0) {
        do {
            fits++;
        } while (IsWithinLetter(line, from + fits));
    }
    return fits;
}

void Wrap(const BFont& font, const std::string& line, float width, std::vector<std::string>* lines)
{
    size_t from = 0;
    do {
        size_t length = Fitting(font, line, from, width);
        size_t next = from + length;
        if (next < line.size()) {
            const size_t blank = line.rfind(' ', next);
            if (blank != std::string::npos && blank > from) {
                length = blank - from;
                next = blank + 1;
            }
        }
        lines->push_back(line.substr(from, length));
        from = next;
    } while (from < line.size());
}

} // namespace

std::vector<std::string> TipLines(const BFont& font, const std::string& text, float width)
{
    std::vector<std::string> lines;
    for (size_t begin = 0; begin <= text.size();) {
        const size_t end = std::min(text.find('\n', begin), text.size());
        const std::string line = text.substr(begin, end - begin);
        if (line.empty()) {
            lines.emplace_back();
        } else {
            Wrap(font, line, width, &lines);
        }
        begin = end + 1;
    }
    return lines;
}

} // namespace kits
