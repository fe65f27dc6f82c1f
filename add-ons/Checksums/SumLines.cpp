#include "Checksums/SumLines.h"

#include "Checksums/Sha256.h"

#include <algorithm>
#include <cctype>

namespace checksums {

namespace {

constexpr std::string_view kTag = "SHA256 (";
constexpr std::string_view kBehindTagged = ") = ";

bool IsBlank(char byte)
{
    return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r';
}

bool IsHexDigit(char byte)
{
    return std::isxdigit(static_cast<unsigned char>(byte)) != 0;
}

/// The digits in small letters; empty when the text is no sum.
std::string SumOf(std::string_view text)
{
    if (text.size() != kSumDigits || !std::all_of(text.begin(), text.end(), IsHexDigit)) {
        return {};
    }
    std::string sum(text);
    for (char& digit : sum) {
        digit = static_cast<char>(std::tolower(static_cast<unsigned char>(digit)));
    }
    return sum;
}

bool NeedsEscape(std::string_view name)
{
    return name.find_first_of("\\\n\r") != std::string_view::npos;
}

std::string Escaped(std::string_view name)
{
    std::string escaped;
    for (const char byte : name) {
        switch (byte) {
        case '\\':
            escaped += "\\\\";
            break;
        case '\n':
            escaped += "\\n";
            break;
        case '\r':
            escaped += "\\r";
            break;
        default:
            escaped += byte;
        }
    }
    return escaped;
}

/// Nothing when there is an escape that nobody writes.
std::optional<std::string> Unescaped(std::string_view name)
{
    std::string plain;
    for (size_t place = 0; place < name.size(); place++) {
        if (name[place] != '\\') {
            plain += name[place];
            continue;
        }
        const char next = ++place < name.size() ? name[place] : '\0';
        if (next != '\\' && next != 'n' && next != 'r') {
            return std::nullopt;
        }
        plain += next == 'n' ? '\n' : next == 'r' ? '\r' : '\\';
    }
    return plain;
}

std::optional<SumLine> Made(std::string_view name, std::string_view sum, bool isEscaped)
{
    SumLine line;
    line.sum = SumOf(sum);
    const std::optional<std::string> plain = isEscaped ? Unescaped(name) : std::string(name);
    if (line.sum.empty() || !plain || plain->empty() || plain->find('\0') != std::string::npos) {
        return std::nullopt;
    }
    line.name = *plain;
    return line;
}

/// "SHA256 (NAME) = SUM"; the name may hold what follows it, the sum cannot.
std::optional<SumLine> ReadTagged(std::string_view line, bool isEscaped)
{
    const size_t end = line.rfind(kBehindTagged);
    if (end == std::string_view::npos || end < kTag.size()) {
        return std::nullopt;
    }
    return Made(line.substr(kTag.size(), end - kTag.size()),
                line.substr(end + kBehindTagged.size()), isEscaped);
}

std::string_view WithoutReturn(std::string_view line)
{
    return !line.empty() && line.back() == '\r' ? line.substr(0, line.size() - 1) : line;
}

std::vector<std::string_view> SplitLines(std::string_view text)
{
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    const auto hasReturn = [](std::string_view line) {
        return !line.empty() && line.back() == '\r';
    };
    if (std::all_of(lines.begin(), lines.end(), hasReturn)) {
        std::transform(lines.begin(), lines.end(), lines.begin(), WithoutReturn);
    }
    return lines;
}

} // namespace

std::string LineOf(const SumLine& line)
{
    const bool escapes = NeedsEscape(line.name);
    return (escapes ? "\\" : "") + line.sum + "  " + (escapes ? Escaped(line.name) : line.name) +
           "\n";
}

std::optional<SumLine> ReadLine(std::string_view line)
{
    const bool isEscaped = !line.empty() && line[0] == '\\';
    if (isEscaped) {
        line.remove_prefix(1);
    }
    if (line.substr(0, kTag.size()) == kTag) {
        return ReadTagged(line, isEscaped);
    }
    constexpr size_t kMarkBytes = 2; // " " or "*" behind a blank
    if (line.size() <= kSumDigits + kMarkBytes || line[kSumDigits] != ' ' ||
        (line[kSumDigits + 1] != ' ' && line[kSumDigits + 1] != '*')) {
        return std::nullopt;
    }
    return Made(line.substr(kSumDigits + kMarkBytes), line.substr(0, kSumDigits), isEscaped);
}

SumFile ReadSums(std::string_view text)
{
    SumFile file;
    for (const std::string_view line : SplitLines(text)) {
        std::optional<SumLine> read = ReadLine(line);
        if (read) {
            file.lines.push_back(std::move(*read));
        } else if (!std::all_of(line.begin(), line.end(), IsBlank) && line[0] != '#') {
            file.others++;
        }
    }
    return file;
}

bool IsSumFileName(std::string_view name)
{
    constexpr std::string_view kEnding = ".sha256";
    return name.find("SHA256SUMS") != std::string_view::npos ||
           (name.size() > kEnding.size() && name.substr(name.size() - kEnding.size()) == kEnding);
}

std::string ReadPastedSum(std::string_view text)
{
    std::string digits(text);
    digits.erase(std::remove_if(digits.begin(), digits.end(), IsBlank), digits.end());
    std::string sum = SumOf(digits);
    if (!sum.empty()) {
        return sum;
    }
    const size_t start = std::min(text.find_first_not_of(" \t\r\n"), text.size());
    text.remove_prefix(start);
    const std::optional<SumLine> line = ReadLine(WithoutReturn(text.substr(0, text.find('\n'))));
    return line ? line->sum : std::string();
}

std::optional<std::vector<std::string>> StepsBelow(std::string_view name)
{
    if (name.empty() || name[0] == '/' || name.back() == '/') {
        return std::nullopt;
    }
    std::vector<std::string> steps;
    while (!name.empty()) {
        const size_t end = std::min(name.find('/'), name.size());
        const std::string_view step = name.substr(0, end);
        if (step == "..") {
            return std::nullopt;
        }
        if (!step.empty() && step != ".") {
            steps.emplace_back(step);
        }
        name.remove_prefix(std::min(end + 1, name.size()));
    }
    if (steps.empty()) {
        return std::nullopt;
    }
    return steps;
}

} // namespace checksums
