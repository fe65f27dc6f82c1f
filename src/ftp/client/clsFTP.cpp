#include "ftp/client/clsFTP.h"

#include "ftp/client/FtpLines.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace norvane {

namespace {

int ZeroFor(int code, int expected, int alsoExpected)
{
    return code == expected || code == alsoExpected ? 0 : code;
}

/// The path in the reply to PWD, `257 "/path" and more`: from the sixth character to the last
/// quote. One that is not there whole is none.
std::string QuotedPath(const std::string& reply)
{
    const size_t end = reply.rfind('"');
    if (reply.size() < 6 || reply[4] != '"' || end < 5) {
        return "";
    }
    const std::string path = reply.substr(5, end - 5);
    return path.find('\r') == std::string::npos ? path : "";
}

bool IsServerCode(int code)
{
    return code >= 100;
}

} // namespace

clsFTP::clsFTP(unsigned int timeout, Callback callback, void* user)
    : fCallback(callback), fUser(user)
{
    SetTimeout(timeout);
}

clsFTP::clsFTP(const char* host, unsigned int port, const char* proxyHost, unsigned int proxyPort,
               unsigned int timeout, Callback callback, void* user)
    : clsFTP(timeout, callback, user)
{
    SetHost(host, port, proxyHost, proxyPort);
}

clsFTP::~clsFTP() = default;

void clsFTP::SetHost(const char* host, unsigned int port, const char* proxyHost,
                     unsigned int proxyPort)
{
    fHost = host != nullptr ? host : "";
    fPort = port;
    fHasProxy = proxyHost != nullptr;
    fProxyHost = fHasProxy ? proxyHost : "";
    fProxyPort = fHasProxy ? proxyPort : 0;
}

void clsFTP::SetTimeout(unsigned int milliseconds)
{
    fTimeout = bigtime_t{milliseconds / 1000} * 1'000'000 + milliseconds % 1000;
}

int clsFTP::SendUser(const char* user)
{
    const FtpStop::Call call(fStop);
    const std::string proxied = fHasProxy ? "@" + fHost + ":" + std::to_string(fPort) : "";
    if (!IsOneLine(user) || !IsOneLine(proxied.c_str())) {
        return kFtpBadName;
    }
    return ZeroFor(Command(CommandLine("USER", (user + proxied).c_str())), 230, 202);
}

int clsFTP::SendPass(const char* pass)
{
    const FtpStop::Call call(fStop);
    return IsOneLine(pass) ? ZeroFor(Command(CommandLine("PASS", pass)), 230, 202) : kFtpBadName;
}

int clsFTP::SendAcct(const char* account)
{
    const FtpStop::Call call(fStop);
    return IsOneLine(account) ? ZeroFor(Command(CommandLine("ACCT", account)), 230, 202)
                              : kFtpBadName;
}

int clsFTP::Disconnect()
{
    const FtpStop::Call call(fStop);
    if (fControl.IsOpen() && !IsStopped()) {
        DropArrived();
    }
    if (fControl.IsOpen() && !IsStopped() && FTPWriteString(fControl.Number(), "QUIT\r\n") == 0) {
        // Replies that the server still owed come first.
        int unread = fOwed + 1;
        do {
            fLastCode = NextReply();
        } while (IsServerCode(fLastCode) && fLastCode != 221 && --unread > 0);
    }
    LoseControl();
    return fLastCode == 221 ? 221 : 0;
}

int clsFTP::ChangeDir(const char* dir)
{
    const FtpStop::Call call(fStop);
    if (!IsOneLine(dir)) {
        return kFtpBadName;
    }
    const bool isUp = std::strcmp(dir, "..") == 0;
    return ZeroFor(Command(isUp ? "CDUP\r\n" : CommandLine("CWD", dir)), 257, 257);
}

int clsFTP::PrintDir(char** path)
{
    const FtpStop::Call call(fStop);
    const int codeBefore = fLastCode;
    const int code = Command("PWD\r\n");
    fLastCode = codeBefore;
    const std::string told = code / 100 == 2 ? QuotedPath(fReply) : "";
    *path = strdup(told.c_str());
    return code / 100 == 2 ? ZeroFor(codeBefore, 257, 250) : code;
}

int clsFTP::DeleteFile(const char* name)
{
    const FtpStop::Call call(fStop);
    return IsOneLine(name) ? ZeroFor(Command(CommandLine("DELE", name)), 250, 250) : kFtpBadName;
}

int clsFTP::RenameFile(const char* from, const char* to)
{
    const FtpStop::Call call(fStop);
    if (!IsOneLine(from) || !IsOneLine(to)) {
        return kFtpBadName;
    }
    const int code = Command(CommandLine("RNFR", from));
    return code == 350 ? ZeroFor(Command(CommandLine("RNTO", to)), 250, 250) : code;
}

int clsFTP::MakeDir(const char* name)
{
    const FtpStop::Call call(fStop);
    return IsOneLine(name) ? ZeroFor(Command(CommandLine("MKD", name)), 257, 257) : kFtpBadName;
}

int clsFTP::RemoveDir(const char* name)
{
    const FtpStop::Call call(fStop);
    return IsOneLine(name) ? ZeroFor(Command(CommandLine("RMD", name)), 250, 250) : kFtpBadName;
}

bool clsFTP::IsConnected() const
{
    SocketAddress peer;
    return fControl.IsOpen() && peer.SetToPeer(fControl.Number());
}

const char* clsFTP::ReplyText() const
{
    return fReply;
}

void clsFTP::DisposeBuffer(unsigned char** data)
{
    std::free(*data);
    *data = nullptr;
}

void clsFTP::Cancel()
{
    fStop.Cancel();
}

void clsFTP::ShutDown()
{
    fStop.ShutDown();
    for (FtpSocket* socket : {&fControl, &fListening, &fData}) {
        socket->ShutDown();
    }
}

} // namespace norvane
