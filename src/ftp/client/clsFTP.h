#pragma once

#include <SupportDefs.h>

#include <atomic>
#include <memory>
#include <string>

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
};

/// A client of FTP servers: one control connection, one command at a time.
///
/// Whatever is sent and whatever is replied is handed, as text, to the callback, the password
/// masked. Each wait is bounded by the timeout.
/// Thread: one at a time, which blocks for the length of a call; Cancel() and ShutDown(): any.
class clsFTP
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
    void SetTimeout(unsigned int milliseconds);

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
    /// Ownership: `*path` is the caller's (free).
    int PrintDir(char** path);
    int DeleteFile(const char* name);
    int RenameFile(const char* from, const char* to);
    int MakeDir(const char* name);
    int RemoveDir(const char* name);
    bool IsConnected() const;
    /// The text of the last reply. Valid until the next call.
    const char* ReplyText() const;

    // Transfers. The last argument of each changes nothing.
    /// Ownership: `*listing` is the caller's (free), or null when nothing came.
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
    void DisposeBuffer(unsigned char** data);

    /// The same from and to an open file, from where it stands. Ownership: borrows `file`.
    /// A write that fails ends it with kFtpLocalFile.
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
};

} // namespace norvane
