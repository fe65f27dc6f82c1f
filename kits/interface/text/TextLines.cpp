#include "TextLines.h"

namespace kits {

namespace {

using Measure = std::function<float(const std::string&)>;

// A byte that continues a UTF-8 character: no line breaks before it.
bool IsContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xc0) == 0x80;
}

std::string WithoutTabs(const std::string& line)
{
    std::string plain;
    for (char c : line) {
        if (c == '\t') {
            plain += "    ";
        } else {
            plain += c;
        }
    }
    return plain;
}

// How many bytes of `text` fit, at least one character: by halving, as measuring is dear.
size_t FittingBytes(const std::string& text, float width, const Measure& measure)
{
    size_t fits = 0;
    size_t tooLong = text.size() + 1;
    while (fits + 1 < tooLong) {
        const size_t middle = fits + (tooLong - fits) / 2;
        if (measure(text.substr(0, middle)) <= width) {
            fits = middle;
        } else {
            tooLong = middle;
        }
    }
    while (fits > 0 && fits < text.size() && IsContinuation(text[fits])) {
        fits--;
    }
    if (fits == 0) {
        fits = 1;
        while (fits < text.size() && IsContinuation(text[fits])) {
            fits++;
        }
    }
    return fits;
}

void WrapLine(std::string line, float width, const Measure& measure,
              std::vector<std::string>& lines)
{
    while (measure(line) > width) {
        size_t end = FittingBytes(line, width, measure);
        // A break at a blank is better, unless the line begins with blanks only up to there.
        const size_t blank = line.rfind(' ', end);
        const size_t firstLetter = line.find_first_not_of(' ');
        if (blank != std::string::npos && blank > firstLetter) {
            end = blank;
        }
        if (end >= line.size()) {
            break;
        }
        lines.push_back(line.substr(0, line.find_last_not_of(' ', end - 1) + 1));
        const size_t next = line.find_first_not_of(' ', end);
        line = next == std::string::npos ? std::string() : line.substr(next);
    }
    lines.push_back(line);
}

} // namespace

std::vector<std::string> WrapText(const std::string& text, float width, const Measure& measure)
{
    std::vector<std::string> lines;
    size_t begin = 0;
    while (true) {
        const size_t end = text.find('\n', begin);
        const bool isLast = end == std::string::npos;
        WrapLine(WithoutTabs(text.substr(begin, isLast ? end : end - begin)), width, measure,
                 lines);
        if (isLast) {
            return lines;
        }
        begin = end + 1;
    }
}

} // namespace kits
