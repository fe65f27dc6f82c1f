#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

namespace norvane {

/// What a server sends on the control connection, cut into lines and replies. Whatever comes, it
/// keeps no more than a bounded part of it.
class FtpReplies
{
public:
    /// What Take() found.
    enum class Found {
        kReply,
        kNoReply, // a line that is none: "code" is 0
        kNothing, // more must come first
        kTooMuch, // the reply is longer than any can be; nothing that follows has a meaning
    };
    struct Reply
    {
        int code = 0;
        std::string text;
    };

    /// The longest text of a reply, and of a line; what is beyond is dropped.
    static constexpr size_t kMaxText = 1023;
    static constexpr size_t kMaxLine = 4096;
    /// What may wait to be taken.
    static constexpr size_t kMaxBytes = size_t{256} * 1024;
    static constexpr size_t kMaxLines = 4096;

    /// Adds what was received; returns how many lines it ended. A zero byte becomes a blank.
    size_t Add(std::string_view bytes);
    /// The connection has ended: a line that was not ended counts as one.
    void AddEnd();

    /// Takes the next reply once it has come whole. One of several lines is handed out up to the
    /// first line that follows with the same number; the lines behind that, which came with it, are
    /// handed out one by one as replies of their own.
    Found Take(Reply* reply);
    /// Takes the next whole line, whatever it is. False when there is none.
    bool TakeLine(std::string* line);
    /// Whether a line has begun and not ended.
    bool HasPart() const { return !fPart.empty() || fIsCutting; }
    void Clear();

private:
    bool EndLine();
    void Pop();
    bool HasLastLine() const;
    void TakeLines(Reply* reply);

    std::deque<std::string> fLines; // whole ones, without their line feeds; never empty ones
    size_t fBytes = 0;              // of fLines
    size_t fPending = 0;            // how many of the first lines came with a reply that was taken
    std::string fPart;              // of a line whose end has not come
    bool fIsCutting = false;        // the rest of that line is dropped
    bool fIsTooMuch = false;
};

} // namespace norvane
