#include "ftp/client/clsFTP.h"

#include <OS.h>
#include <socket.h>

#include <algorithm>
#include <cctype>
#include <cstring>

namespace norvane {

namespace {

// Lines in place of a reply that are none, and preliminary replies in a row, before it is nonsense.
constexpr int kMaxNonsense = 64;
// What a server may have sent unasked, before a command.
constexpr int kMaxUnread = 64;
constexpr size_t kReceived = 4096;
constexpr int kBrokenOff = 426;

bool IsPreliminary(int code)
{
    return code >= 100 && code < 200;
}

/// Whether a reply can only be about a transfer.
bool IsOfTransfer(int code)
{
    return code == 225 || code == 226 || code == 426;
}

bool IsPassword(const std::string& line)
{
    constexpr char kVerb[] = "PASS";
    return line.size() >= 4 && std::equal(kVerb, kVerb + 4, line.begin(), [](char one, char other) {
               return one == std::toupper(static_cast<unsigned char>(other));
           });
}

} // namespace

bool clsFTP::IsStopped() const
{
    return fStop.IsShutDown() || (fStop.IsCancelled() && system_time() >= fGraceEnd);
}

clsFTP::Wait clsFTP::WaitFor(int sock, Direction direction, bigtime_t end) const
{
    const socket_readiness readiness =
        direction == Direction::kRead ? B_SOCKET_READABLE : B_SOCKET_WRITABLE;
    for (;;) {
        if (IsStopped()) {
            return Wait::kStopped;
        }
        // Before the look: what never ceases to come would be ready for ever.
        const bigtime_t left = end - system_time();
        if (left < 0) {
            return Wait::kTimedOut;
        }
        if (wait_for_socket(sock, readiness, std::min(left, FtpStop::kSlice)) != B_TIMED_OUT) {
            return IsStopped() ? Wait::kStopped : Wait::kReady;
        }
        if (left <= FtpStop::kSlice) {
            return Wait::kTimedOut;
        }
    }
}

/// Waits as long as the time-out lets it; whether the socket is ready.
bool clsFTP::TimeoutIfNotReady(int sock, bool forRead) const
{
    return WaitCode(sock, forRead ? Direction::kRead : Direction::kWrite) == 0;
}

/// The same as a code: 0, kFtpTimedOut or kFtpCancelled.
int clsFTP::WaitCode(int sock, Direction direction) const
{
    switch (WaitFor(sock, direction, system_time() + fTimeout)) {
    case Wait::kReady:
        return 0;
    case Wait::kTimedOut:
        return kFtpTimedOut;
    case Wait::kStopped:
        break;
    }
    return kFtpCancelled;
}

void clsFTP::Report(std::string text) const
{
    if (fCallback != nullptr && !text.empty()) {
        fCallback(-1, 0, text.data(), fUser);
    }
}

int clsFTP::FTPWriteString(int sock, const std::string& text)
{
    const int code = SendAll(sock, text);
    Report(IsPassword(text) ? "PASS ******\r\n" : text);
    if (code == kFtpNotConnected) {
        LoseControl();
    }
    return code;
}

int clsFTP::SendAll(int sock, const std::string& text) const
{
    for (size_t sent = 0; sent < text.size();) {
        const int code = WaitCode(sock, Direction::kWrite);
        if (code != 0) {
            // Half a command cannot be taken back: nothing may follow it.
            if (sent > 0) {
                shutdown(sock, SHUT_RDWR);
            }
            return code;
        }
        const ssize_t count = send_socket(sock, text.data() + sent, text.size() - sent);
        if (count < 0 && count != B_WOULD_BLOCK) {
            return kFtpNotConnected;
        }
        sent += static_cast<size_t>(std::max<ssize_t>(count, 0));
    }
    return 0;
}

/// Reads one reply, and returns its code.
int clsFTP::FTPReadString(int sock, char* buffer, int size)
{
    FtpReplies::Reply reply;
    int code = ReadReply(sock, &reply);
    if (code == kFtpTimedOut) {
        reply.text = "TIMEOUT";
    } else if (code == kFtpNotConnected) {
        reply.text = "Connection lost";
    }
    std::memset(buffer, 0, static_cast<size_t>(size));
    reply.text.copy(buffer, static_cast<size_t>(size) - 1);
    Report(buffer);
    return code;
}

int clsFTP::ReadReply(int sock, FtpReplies::Reply* reply)
{
    bigtime_t end = system_time() + fTimeout;
    for (int nonsense = 0; nonsense < kMaxNonsense;) {
        switch (fReplies.Take(reply)) {
        case FtpReplies::Found::kReply:
            return reply->code;
        case FtpReplies::Found::kNoReply:
            Report(reply->text);
            nonsense++;
            continue;
        case FtpReplies::Found::kTooMuch:
            nonsense = kMaxNonsense;
            continue;
        case FtpReplies::Found::kNothing:
            break;
        }
        const int code = ReceiveLines(sock, &end);
        if (code != 0) {
            *reply = {};
            return code;
        }
    }
    // Nobody could tell which of its lines will answer what.
    LoseControl();
    *reply = {};
    return kFtpTooMuch;
}

/// Waits for something, until `*end`, which is set anew when a line came to its end: so a server
/// may take its time for many lines, but not for one.
int clsFTP::ReceiveLines(int sock, bigtime_t* end)
{
    switch (WaitFor(sock, Direction::kRead, *end)) {
    case Wait::kTimedOut:
        return kFtpTimedOut;
    case Wait::kStopped:
        return kFtpCancelled;
    case Wait::kReady:
        break;
    }
    char received[kReceived];
    const ssize_t count = receive_socket(sock, received, sizeof(received));
    if (count > 0) {
        if (fReplies.Add({received, static_cast<size_t>(count)}) > 0) {
            *end = system_time() + fTimeout;
        }
        return 0;
    }
    if (count == B_WOULD_BLOCK) {
        return 0;
    }
    if (count == 0 && fReplies.HasPart()) {
        fReplies.AddEnd();
        return 0;
    }
    LoseControl();
    return kFtpNotConnected;
}

/// Reads a reply from the control connection.
int clsFTP::NextReply()
{
    if (!fControl.IsOpen()) {
        return kFtpNotConnected;
    }
    const int code = FTPReadString(fControl.Number(), fReply, sizeof(fReply));
    if (code >= 200 && fOwed > 0) {
        fOwed--;
    }
    return code;
}

/// Reads the reply that ends a transfer. Of one that was broken off servers tell it in a reply like
/// that of its begin, and then nothing more.
int clsFTP::FinalReply()
{
    int code = NextReply();
    for (int i = 0; i < kMaxNonsense && IsPreliminary(code) && !fIsBroken; i++) {
        code = NextReply();
    }
    if (IsPreliminary(code) && fIsBroken) {
        fIsBroken = false;
        fOwed = std::max(fOwed - 1, 0);
        fMayBeStale = true;
        return kBrokenOff;
    }
    return code;
}

/// Reads over the replies to commands that were given up. While one is missing nothing can be
/// sent, for it would be taken for the answer.
int clsFTP::SettleReplies()
{
    while (fOwed > 0) {
        const int code = FinalReply();
        if (IsPreliminary(code)) {
            LoseControl();
            return kFtpTooMuch;
        }
        if (code < 100) {
            return code;
        }
    }
    return 0;
}

/// Takes what the server has said without being asked off the connection, into the log.
int clsFTP::DropUnread()
{
    int code = DropArrived();
    // It is in the middle of a line: that belongs to none of ours.
    for (bigtime_t end = system_time() + fTimeout; code == 0 && fReplies.HasPart();) {
        code = ReceiveLines(fControl.Number(), &end);
        DropLines();
    }
    return code;
}

int clsFTP::DropArrived()
{
    DropLines();
    bigtime_t end = system_time() + fTimeout;
    for (int i = 0; i < kMaxUnread; i++) {
        if (wait_for_socket(fControl.Number(), B_SOCKET_READABLE, 0) != B_OK) {
            return 0;
        }
        const int code = ReceiveLines(fControl.Number(), &end);
        DropLines();
        if (code != 0) {
            return code;
        }
    }
    LoseControl();
    return kFtpTooMuch;
}

void clsFTP::DropLines()
{
    std::string line;
    while (fReplies.TakeLine(&line)) {
        Report(line);
    }
}

void clsFTP::LoseControl()
{
    fControl.Close();
    fReplies.Clear();
    fOwed = 0;
    fMayBeStale = false;
}

/// Sends a line and reads the reply to it, which is kept as the last one.
int clsFTP::Command(const std::string& line)
{
    fReply[0] = '\0';
    if (IsStopped()) {
        return fLastCode = kFtpCancelled;
    }
    if (!fControl.IsOpen()) {
        return fLastCode = kFtpNotConnected;
    }
    int code = SettleReplies();
    fHasBegun = fIsBroken = false;
    if (code == 0) {
        code = DropUnread();
    }
    if (code == 0) {
        code = FTPWriteString(fControl.Number(), line);
    }
    if (code == 0) {
        fOwed++;
        code = NextReply();
        for (int i = 0; i < 2 && fMayBeStale && IsOfTransfer(code); i++) {
            fOwed++; // that was the other's
            code = NextReply();
        }
        fMayBeStale = fMayBeStale && code < 100;
    }
    return fLastCode = code;
}

} // namespace norvane
