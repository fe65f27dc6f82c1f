#include "ftp/client/FtpReplies.h"

#include <algorithm>
#include <cstdlib>

namespace norvane {

namespace {

/// The number that a line begins with; 0 without one.
long NumberOf(const std::string& line)
{
    return std::strtol(line.c_str(), nullptr, 10);
}

bool IsDigit(char byte)
{
    return byte >= '0' && byte <= '9';
}

/// The code of a line that begins a reply: three digits, the first no zero; 0 for any other line.
int CodeOf(const std::string& line)
{
    const bool isCode = line.size() >= 3 && line[0] != '0' && IsDigit(line[0]) &&
                        IsDigit(line[1]) && IsDigit(line[2]) &&
                        (line.size() == 3 || !IsDigit(line[3]));
    return isCode ? static_cast<int>(NumberOf(line)) : 0;
}

/// Whether more lines follow the one that begins a reply.
bool HasMore(const std::string& line)
{
    return line.size() > 3 && line[3] == '-';
}

} // namespace

size_t FtpReplies::Add(std::string_view bytes)
{
    size_t ended = 0;
    for (const char byte : bytes) {
        if (byte == '\n') {
            ended += EndLine() ? 1 : 0;
        } else if (fPart.size() < kMaxLine) {
            fPart += byte == '\0' ? ' ' : byte;
        } else {
            fIsCutting = true;
        }
    }
    return ended;
}

void FtpReplies::AddEnd()
{
    EndLine();
}

/// Whether it was a line: empty ones say nothing.
bool FtpReplies::EndLine()
{
    fIsCutting = false;
    std::string line;
    line.swap(fPart);
    if (line.empty() || line == "\r") {
        return false;
    }
    if (fLines.size() >= kMaxLines || fBytes + line.size() > kMaxBytes) {
        fIsTooMuch = true;
        return true;
    }
    fBytes += line.size();
    fLines.push_back(std::move(line));
    return true;
}

FtpReplies::Found FtpReplies::Take(Reply* reply)
{
    *reply = {};
    if (fLines.empty()) {
        return fIsTooMuch ? Found::kTooMuch : Found::kNothing;
    }
    reply->code = CodeOf(fLines.front());
    if (reply->code == 0) {
        reply->text = fLines.front().substr(0, kMaxText);
        Pop();
        return Found::kNoReply;
    }
    if (HasMore(fLines.front()) && !HasLastLine()) {
        return fIsTooMuch ? Found::kTooMuch : Found::kNothing;
    }
    TakeLines(reply);
    return Found::kReply;
}

/// Whether the last line of the reply that stands first has come: its code and no hyphen.
bool FtpReplies::HasLastLine() const
{
    const int code = CodeOf(fLines.front());
    return std::any_of(fLines.begin() + 1, fLines.end(), [code](const std::string& line) {
        return CodeOf(line) == code && !HasMore(line);
    });
}

void FtpReplies::TakeLines(Reply* reply)
{
    // What came alone keeps its line feed.
    const bool isAlone = fLines.size() == 1 && fPending == 0 && !HasPart();
    const bool isWalked = HasMore(fLines.front()) && fPending == 0;
    reply->text = (fLines.front() + (isAlone ? "\n" : "")).substr(0, kMaxText);
    const bool wasPending = fPending > 0;
    Pop();
    for (bool isLast = !isWalked; !isLast && !fLines.empty(); Pop()) {
        const std::string& line = fLines.front();
        isLast = NumberOf(line) == reply->code;
        if (reply->text.size() + line.size() <= kMaxText) {
            reply->text += line;
        }
    }
    if (!wasPending) {
        fPending = fLines.size();
    }
}

bool FtpReplies::TakeLine(std::string* line)
{
    if (fLines.empty()) {
        return false;
    }
    *line = fLines.front();
    Pop();
    return true;
}

void FtpReplies::Pop()
{
    fBytes -= fLines.front().size();
    fLines.pop_front();
    fPending -= fPending > 0 ? 1 : 0;
}

void FtpReplies::Clear()
{
    fLines.clear();
    fBytes = 0;
    fPending = 0;
    fPart.clear();
    fIsCutting = false;
    fIsTooMuch = false;
}

} // namespace norvane
