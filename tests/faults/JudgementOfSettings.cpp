// The settings' file.

#include "Judgement.h"

namespace {

constexpr const char* kFile = "one/home/.config/Norvane/Norvane.pref";
constexpr const char* kNewLine = "First=a value that is longer\n";

/// The value of the first line of a key; "" when there is none.
std::string ValueOf(const std::string& text, const std::string& key)
{
    for (size_t start = 0; start < text.size();) {
        const size_t end = std::min(text.find('\n', start), text.size());
        if (text.compare(start, key.size() + 1, key + "=") == 0) {
            return text.substr(start + key.size() + 1, end - start - key.size() - 1);
        }
        start = end + 1;
    }
    return std::string();
}

/// Writes over the line of a key, as long as the new one is, or at the end.
std::string WithLine(const std::string& text, const std::string& line, size_t writtenBytes)
{
    const std::string key = line.substr(0, line.find('=') + 1);
    const size_t found = text.starts_with(key) ? 0 : text.find("\n" + key);
    const size_t place = found == std::string::npos ? text.size() : found == 0 ? 0 : found + 1;
    std::string written = text.substr(0, place) + line.substr(0, writtenBytes);
    if (written.size() < text.size()) {
        written += text.substr(written.size());
    }
    return written;
}

} // namespace

/// Whether the file can look so at a moment of being written. It is written in place, so that a
/// longer line takes the place of what follows; the writer then sets again what that hit.
bool Judgement::IsStepOnTheWay(const std::string& text) const
{
    std::string state = fBefore.at(kFile).text;
    std::vector<std::string> lines = {kNewLine};
    for (const char* key : {"Kept", "Last"}) {
        const std::string value = ValueOf(state, key);
        if (!value.empty()) {
            lines.push_back(std::string(key) + "=" + value + "\n");
        }
    }
    for (const std::string& line : lines) {
        const size_t equals = line.find('=');
        if (ValueOf(state, line.substr(0, equals)) ==
            line.substr(equals + 1, line.size() - equals - 2)) {
            continue;
        }
        for (size_t bytes = 0; bytes <= line.size(); ++bytes) {
            if (text == WithLine(state, line, bytes)) {
                return true;
            }
        }
        state = WithLine(state, line, line.size());
    }
    return text == state;
}

void Judgement::CheckSettings()
{
    const auto now = fAfter.find(kFile);
    if (now == fAfter.end()) {
        Say(kFile, "is gone");
        return;
    }
    const std::string& text = now->second.text;
    const std::string& old = fBefore.at(kFile).text;
    if ((now->second.mode & 077) != 0) {
        Say(kFile, "is open to others");
    }
    // They are written in place. A disk that loses all it is given leaves less; the writer reads
    // that and says so.
    const bool canBeCut = fEnding.losesAllWritten && !fEnding.saysWhole;
    if (old.size() > text.size() && !canBeCut) {
        Say(kFile, "was cut");
    }
    const bool isKept = ValueOf(text, "Kept") == ValueOf(old, "Kept") &&
                        ValueOf(text, "Last") == ValueOf(old, "Last");
    const bool isSet = "First=" + ValueOf(text, "First") + "\n" == kNewLine;
    if (fEnding.saysWhole && (!isKept || !isSet)) {
        Say(kFile, "is said to be written, and is not");
    }
    if (fEnding.wasKilled && !IsStepOnTheWay(text)) {
        Say(kFile, "holds what was never to be written");
    }
    if (!isKept && !fEnding.hadFault) {
        Say(kFile, "lost a key");
    }
}
