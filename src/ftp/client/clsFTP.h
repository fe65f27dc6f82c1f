#pragma once

#include "ftp/client/FtpReplies.h"
#include "ftp/client/FtpSocket.h"
#include "ftp/client/FtpStop.h"
#include "ftp/client/HostLookup.h"
#include "ftp/client/RemoteEntry.h"

#include <SupportDefs.h>

#include <atomic>
#include <functional>
#include <string>
#include <utility>
#include <vector>

class BDataIO;

namespace norvane {

/// What a client's calls return besides 0 for the expected reply and the server's own codes.
enum FtpLocalCode : int {
    kFtpNoDataConnection = 1,
    kFtpTimedOut = 2,
    kFtpCancelled = 3, // by Cancel() or ShutDown()
    kFtpNoSuchHost = 4,
    kFtpNoSocket = 5,
    kFtpNotConnected = 6,
    kFtpLocalFile = 7,
    kFtpBadName = 8, // of a file: it would break the command line; nothing was sent
    kFtpTooMuch = 9, // the server sends more than anybody can mean
};

class FtpSink;

/// A client of FTP servers: one control connection, one command at a time.
///
/// Whatever is sent and whatever is replied is handed, as text, to the callback, the password
/// masked. Each wait is bounded by the timeout.
/// Thread: one at a time, which blocks for the length of a call; Cancel() and ShutDown(): any.
class clsFTP // NOLINT(readability-identifier-naming): it is called so everywhere
{
public:
    /// Told of each line (percent is -1) and of how far a transfer came; returns 0 to abandon it.
    /// `text` is lent for the call. Bytes beyond INT_MAX are told as that; BytesMoved() has all.
    using Callback = int (*)(int percent, int bytes, char* text, void* user);

    /// Units: milliseconds.
    clsFTP(unsigned int timeout, Callback callback, void* user);
    clsFTP(const char* host, unsigned int port, const char* proxyHost, unsigned int proxyPort,
           unsigned int timeout, Callback callback, void* user);
    ~clsFTP();
    clsFTP(const clsFTP&) = delete;
    clsFTP& operator=(const clsFTP&) = delete;

    /// `proxyHost` may be null.
    void SetHost(const char* host, unsigned int port, const char* proxyHost,
                 unsigned int proxyPort);
    /// What is beyond whole seconds counts as microseconds, not as milliseconds.
    void SetTimeout(unsigned int milliseconds);
    /// Units: microseconds.
    bigtime_t Timeout() const { return fTimeout; }
    /// Finds hosts from now on, in place of the system; called on threads of its own.
    void SetResolver(HostResolver resolver) { fResolver = std::move(resolver); }
    /// Lists and downloads into memory give up beyond so many bytes, with kFtpTooMuch.
    void SetMemoryLimit(size_t bytes) { fMemoryLimit = bytes; }

    // The control connection; 0 is success unless something else is said.
    /// A null `pass` is not sent: 331 then says that the server wants one.
    int Connect(const char* user, const char* pass, const char* account);
    int SendUser(const char* user);
    int SendPass(const char* pass);
    int SendAcct(const char* account);
    /// 221 when the server said so, else 0.
    int Disconnect();
    /// 0 on 257 alone; a server's usual answer is another 2xx.
    int ChangeDir(const char* dir);
    /// Succeeds when the command before it ended with 250 or 257, whatever it did: after a login it
    /// returns 230. A server that refuses, or does not answer, is told by its code.
    /// Ownership: `*path` is the caller's (free); "" when the server named none.
    int PrintDir(char** path);
    int DeleteFile(const char* name);
    int RenameFile(const char* from, const char* to);
    int MakeDir(const char* name);
    int RemoveDir(const char* name);
    bool IsConnected() const;
    /// The text of the last reply. Valid until the next call.
    const char* ReplyText() const;

    // Transfers. The last argument of each changes nothing.
    /// Ownership: `*listing` is the caller's (free), or null when nothing came. Its last character
    /// is cut off, line feed or not; before that it had BytesMoved() bytes, zeros among them.
    int List(const char* path, char** listing, bool passive, bool = false);
    int Upload(const char* localPath, const char* remoteName, bool binary, bool passive,
               bool = false);
    int UploadBuffer(const char* data, int length, const char* remoteName, bool binary,
                     bool passive, bool = false);
    int Download(const char* remoteName, const char* localDir, const char* localName, bool binary,
                 bool passive, bool = false);
    /// Grows `*data`, which is null or a block of malloc(), and stays the caller's.
    int DownloadBuffer(char** data, int* length, const char* remoteName, bool binary, bool passive,
                       bool = false);
    /// Whether the last listing held a line feed before its last character was cut off.
    bool ListingHasLineFeed() const { return fListingHasLineFeed; }
    /// What that character was, for ParseListing().
    ListingEnd EndOfListing() const { return fListingEnd; }
    void DisposeBuffer(unsigned char** data);

    /// The same from and to an open file, from where it stands. Ownership: borrows `file`.
    /// A read or write that fails ends it with kFtpLocalFile. What is sent is what the file has;
    /// `bytes`, of which percents are told, changes nothing.
    int UploadFrom(BDataIO& file, int64 bytes, const char* remoteName, bool binary, bool passive);
    int DownloadTo(BDataIO& file, const char* remoteName, bool binary, bool passive);
    /// Of the transfer that runs, or ran last.
    int64 BytesMoved() const { return fBytesMoved; }

    // From any thread.
    /// Ends what is running, within a tenth of a second where the server lets it: it returns
    /// kFtpCancelled, and the connection can be used further where that can be. Does nothing when
    /// nothing runs.
    void Cancel();
    /// Ends what is running, and all that comes until the object is destroyed, at once.
    void ShutDown();

private:
    enum class Wait { kReady, kTimedOut, kStopped };
    enum class Type { kUnset = 0, kAscii = 1, kBinary = 2 };
    enum class Direction { kRead, kWrite };
    /// What is transferred, and what is told when it fails.
    struct Order
    {
        std::string command;
        Type type;
        bool isPassive;
        const char* failure;
    };
    using Move = std::function<int()>;
    static Type TypeFor(bool binary) { return binary ? Type::kBinary : Type::kAscii; }

    // Waiting and talking: clsFTPReplies.cpp
    bool IsStopped() const;
    Wait WaitFor(int sock, Direction direction, bigtime_t end) const;
    bool TimeoutIfNotReady(int sock, bool forRead) const;
    int WaitCode(int sock, Direction direction) const;
    void Report(std::string text) const;
    int FTPWriteString(int sock, const std::string& text);
    int SendAll(int sock, const std::string& text) const;
    int FTPReadString(int sock, char* buffer, int size);
    int ReadReply(int sock, FtpReplies::Reply* reply);
    int ReceiveLines(int sock, bigtime_t* end);
    int NextReply();
    int FinalReply();
    int SettleReplies();
    int DropUnread();
    int DropArrived();
    void DropLines();
    void LoseControl();
    int Command(const std::string& line);

    // Connecting: clsFTPConnect.cpp
    int OpenControl();
    int FindHost(const std::string& host, std::vector<SocketAddress>* addresses);
    int ConnectToAny(const std::vector<SocketAddress>& addresses, unsigned int port);
    int ConnectSocket(FtpSocket* into, const SocketAddress& address, bigtime_t end);
    int ReadGreeting();
    int LogIn(const char* user, const char* pass, const char* account);
    int FailToConnect(int code);

    // Data connections: clsFTPData.cpp
    int FTPInitDataConnection(SocketAddress* address);
    int Listen(int sock, SocketAddress* address);
    int FTPSendPort(const SocketAddress& address);
    int FTPSendPASV(SocketAddress* address);
    int FTPSendEPSV(SocketAddress* address);
    int SetType(Type type);
    int OpenData(const Order& order, bool* isTold);
    int PrepareActive();
    int ConnectData(SocketAddress address);
    int StartTransfer(const std::string& line);
    int AcceptData();
    int EndData();
    int AbandonData(int code);

    // Moving bytes: clsFTPTransfers.cpp
    int Transfer(const Order& order, const Move& move);
    int Receive(FtpSink& sink);
    int ReceiveSome(char* buffer, size_t size, ssize_t* received) const;
    int HandOver(FtpSink& sink, const char* data, size_t size, bool* isWanted);
    int Send(BDataIO& file, int64 bytes);
    int SendBlock(const char* data, size_t size);
    int Store(const char* remoteName, bool binary, bool passive, const Move& move);
    int Retrieve(const char* remoteName, bool binary, bool passive, const Move& move);
    int ReceiveFile(const std::string& path);
    int AbortForFile(const std::string& path);
    void ExpectByReply();
    bool Progress(size_t bytes);

    std::string fHost;
    unsigned int fPort = 0;
    std::string fProxyHost;
    unsigned int fProxyPort = 0;
    bool fHasProxy = false;
    bigtime_t fTimeout = 0;
    HostResolver fResolver = &ResolveHost;
    const Callback fCallback;
    void* const fUser;

    FtpStop fStop;
    bigtime_t fGraceEnd = 0; // until then a cancelled call still waits
    FtpSocket fControl;
    FtpSocket fListening;
    FtpSocket fData;

    FtpReplies fReplies;
    char fReply[FtpReplies::kMaxText + 1] = {};
    int fLastCode = 0;
    int fOwed = 0;            // replies that the server has not given yet
    bool fMayBeStale = false; // an aborted transfer may be answered once or twice
    bool fHasBegun = false;   // the server has told the begin of the transfer
    bool fIsBroken = false;   // then the client broke it off
    Type fType = Type::kUnset;

    size_t fMemoryLimit = size_t{256} * 1024 * 1024;
    bool fListingHasLineFeed = false;
    ListingEnd fListingEnd = ListingEnd::kOther;
    int64 fExpected = 0; // bytes of the transfer; 0 when nobody knows
    bool fIsProgressTold = false;
    std::atomic<int64> fBytesMoved = 0;
};

} // namespace norvane
