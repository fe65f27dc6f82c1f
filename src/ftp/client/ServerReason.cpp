#include "ftp/client/ServerReason.h"

#include "ftp/client/RemoteFolder.h"
#include "ftp/client/clsFTP.h"

#include <algorithm>

namespace norvane {

namespace {

constexpr size_t kShownReplyBytes = 100;
constexpr int kFirstServerCode = 100;

/// What a server writes is cut, and has no line breaks in it.
std::string ShownReply(const char* text)
{
    std::string shown = text;
    shown.resize(std::min(shown.find_last_not_of("\r\n ") + 1, kShownReplyBytes));
    for (char& letter : shown) {
        if (static_cast<unsigned char>(letter) < ' ') {
            letter = ' ';
        }
    }
    return shown;
}

} // namespace

std::string ServerReason(const clsFTP& client, int code)
{
    switch (code) {
    case kFtpNoDataConnection:
    case kFtpNoSocket:
        return "the connection for the data failed";
    case kFtpTimedOut:
        return "the server does not answer";
    case kFtpCancelled:
        return "it was stopped";
    case kFtpNoSuchHost:
        return "there is no such host";
    case kFtpNotConnected:
        return "there is no connection to the server";
    case kFtpLocalFile:
        return "the file here failed";
    case kFtpBadName:
        return "its name cannot be sent to a server";
    case kFtpTooMuch:
        return "the server sends more than anybody can mean";
    case kFtpStaysWhereItIs:
        return "the server stays where it is";
    default:
        break;
    }
    const std::string reply = ShownReply(client.ReplyText());
    return code < kFirstServerCode || reply.empty() ? "the server breaks off"
                                                    : "the server says \"" + reply + "\"";
}

} // namespace norvane
