// What a server says on the control connection, in any pieces: what is kept and handed out is
// bounded, and does not depend on the pieces.

#include "ftp/client/FtpReplies.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

using norvane::FtpReplies;

void Require(bool condition, const char* what)
{
    if (!condition) {
        std::fprintf(stderr, "Broken: %s\n", what);
        std::abort();
    }
}

/// Takes all that there is, as one text.
std::string TakeAll(FtpReplies& replies)
{
    std::string all;
    FtpReplies::Reply reply;
    for (;;) {
        const FtpReplies::Found found = replies.Take(&reply);
        if (found == FtpReplies::Found::kNothing || found == FtpReplies::Found::kTooMuch) {
            break;
        }
        Require(reply.text.size() <= FtpReplies::kMaxText, "a text is short");
        Require(reply.text.find('\0') == std::string::npos, "a text has no zeros");
        const bool isReply = found == FtpReplies::Found::kReply;
        Require(isReply ? reply.code >= 100 && reply.code <= 999 : reply.code == 0, "a code");
        all += std::to_string(reply.code) + " " + reply.text + "|";
    }
    std::string line;
    while (replies.TakeLine(&line)) {
        Require(!line.empty() && line.size() <= FtpReplies::kMaxLine, "a line is bounded");
        all += line;
    }
    return all;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0) {
        return 0;
    }
    const size_t piece = data[0] % 16 + 1;
    const std::string_view said(reinterpret_cast<const char*>(data) + 1, size - 1);

    FtpReplies whole;
    whole.Add(said);
    FtpReplies pieces;
    for (size_t at = 0; at < said.size(); at += piece) {
        pieces.Add(said.substr(at, piece));
    }
    Require(whole.HasPart() == pieces.HasPart(), "the same is left");
    if ((data[0] & 16) != 0) {
        whole.AddEnd();
        pieces.AddEnd();
    }
    Require(TakeAll(whole) == TakeAll(pieces), "the pieces do not matter");

    // Taken as it comes it must stay as sound.
    FtpReplies eager;
    for (size_t at = 0; at < said.size(); at += piece) {
        eager.Add(said.substr(at, piece));
        FtpReplies::Reply reply;
        eager.Take(&reply);
        Require(reply.text.size() <= FtpReplies::kMaxText, "a text is short");
    }
    TakeAll(eager);
    eager.Clear();
    FtpReplies::Reply reply;
    Require(eager.Take(&reply) == FtpReplies::Found::kNothing, "nothing is left");
    return 0;
}
