#include "ftp/client/FtpLines.h"
#include "ftp/client/FtpSink.h"
#include "ftp/client/clsFTP.h"

#include <DataIO.h>
#include <File.h>
#include <OS.h>
#include <socket.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace norvane {

namespace {

constexpr size_t kBlock = 8192;        // what a callback is told of at once
constexpr size_t kMoved = 32 * kBlock; // what a call of the system moves
constexpr uint32 kNewFile = B_WRITE_ONLY | B_CREATE_FILE | B_ERASE_FILE | B_NO_TRAVERSE;

constexpr const char* kListFailure = " - Error retrieving list.";
constexpr const char* kUploadFailure = " - Error uploading file.";
constexpr const char* kDownloadFailure = " - Error downloading file.";

/// Whether a name can be one in a folder of this machine, and in no other folder.
bool IsLocalName(const char* name)
{
    return name != nullptr && *name != '\0' && std::strchr(name, '/') == nullptr &&
           std::strcmp(name, ".") != 0 && std::strcmp(name, "..") != 0;
}

std::string CountText(const char* before, int64 bytes, const char* behind)
{
    std::string text = before;
    text += std::to_string(bytes);
    text += behind;
    return text;
}

int Saturated(double number)
{
    return static_cast<int>(std::clamp(number, 0.0, double{INT_MAX}));
}

} // namespace

/// Carries a transfer out from the data connection's opening to its end; `move` moves the bytes.
int clsFTP::Transfer(const Order& order, const Move& move)
{
    fBytesMoved = 0;
    fExpected = 0;
    fIsProgressTold = fCallback != nullptr;
    bool isTold = false;
    int code = OpenData(order, &isTold);
    if (code == 0) {
        code = move();
        if (code == 0) {
            return EndData();
        }
    }
    code = AbandonData(code);
    fListening.Close();
    fLastCode = code;
    if (!isTold) {
        Report(CountText("Exception: ", code, order.failure));
    }
    return code;
}

int clsFTP::List(const char* path, char** listing, bool passive, bool)
{
    const FtpStop::Call call(fStop);
    *listing = nullptr;
    fListingHasLineFeed = false;
    fListingEnd = ListingEnd::kOther;
    if (path != nullptr && !IsOneLine(path)) {
        return kFtpBadName;
    }
    MemorySink sink(listing, fMemoryLimit);
    bool isWhole = false;
    const int code =
        Transfer({CommandLine("LIST", path), Type::kAscii, passive, kListFailure}, [&] {
            fIsProgressTold = false;
            const int received = Receive(sink);
            isWhole = received == 0;
            return received;
        });
    if (!isWhole) {
        std::free(*listing);
        *listing = nullptr;
    } else if (sink.Length() > 0) {
        fListingHasLineFeed = std::memchr(*listing, '\n', sink.Length()) != nullptr;
        char& last = (*listing)[sink.Length() - 1];
        fListingEnd = last == '\n' ? ListingEnd::kLineFeed : ListingEnd::kOther;
        last = '\0';
    }
    return code;
}

int clsFTP::Store(const char* remoteName, bool binary, bool passive, const Move& move)
{
    const FtpStop::Call call(fStop);
    if (!IsOneLine(remoteName)) {
        return kFtpBadName;
    }
    return Transfer({CommandLine("STOR", remoteName), TypeFor(binary), passive, kUploadFailure},
                    move);
}

int clsFTP::Upload(const char* localPath, const char* remoteName, bool binary, bool passive, bool)
{
    const FtpStop::Call call(fStop);
    if (!IsOneLine(remoteName)) {
        return kFtpBadName;
    }
    // Before the command: with it the server empties a file that it has under that name.
    BFile file;
    off_t size = 0;
    if (localPath == nullptr || file.SetTo(localPath, B_READ_ONLY) != B_OK ||
        file.GetSize(&size) != B_OK) {
        Report("Error opening local file.");
        Report(CountText("Exception: ", kFtpLocalFile, kUploadFailure));
        return kFtpLocalFile;
    }
    return UploadFrom(file, size, remoteName, binary, passive);
}

int clsFTP::UploadBuffer(const char* data, int length, const char* remoteName, bool binary,
                         bool passive, bool)
{
    BMemoryIO file(static_cast<const void*>(data), static_cast<size_t>(std::max(length, 0)));
    return UploadFrom(file, std::max(length, 0), remoteName, binary, passive);
}

int clsFTP::UploadFrom(BDataIO& file, int64 bytes, const char* remoteName, bool binary,
                       bool passive)
{
    return Store(remoteName, binary, passive, [&] { return Send(file, bytes); });
}

int clsFTP::Retrieve(const char* remoteName, bool binary, bool passive, const Move& move)
{
    const FtpStop::Call call(fStop);
    if (!IsOneLine(remoteName)) {
        return kFtpBadName;
    }
    return Transfer({CommandLine("RETR", remoteName), TypeFor(binary), passive, kDownloadFailure},
                    [&] {
                        ExpectByReply();
                        return move();
                    });
}

int clsFTP::Download(const char* remoteName, const char* localDir, const char* localName,
                     bool binary, bool passive, bool)
{
    if (localDir == nullptr || !IsLocalName(localName)) {
        return kFtpBadName;
    }
    std::string path = localDir;
    if (!path.empty() && path.back() == '/') {
        path.pop_back();
    }
    path += '/';
    path += localName;
    return Retrieve(remoteName, binary, passive, [&] { return ReceiveFile(path); });
}

int clsFTP::DownloadTo(BDataIO& file, const char* remoteName, bool binary, bool passive)
{
    return Retrieve(remoteName, binary, passive, [&] {
        FileSink sink(file);
        return Receive(sink);
    });
}

int clsFTP::DownloadBuffer(char** data, int* length, const char* remoteName, bool binary,
                           bool passive, bool)
{
    *length = 0;
    MemorySink sink(data, std::min(fMemoryLimit, size_t{INT_MAX} - 1));
    const int code = Retrieve(remoteName, binary, passive, [&] {
        fIsProgressTold = fIsProgressTold && fExpected != 0;
        return Receive(sink);
    });
    *length = static_cast<int>(sink.Length());
    return code;
}

/// The size of what comes, as the server's first reply tells it: "150 ... (12345 bytes)".
void clsFTP::ExpectByReply()
{
    const char* bracket = std::strrchr(fReply, '(');
    const int64 told = bracket != nullptr ? std::strtoll(bracket + 1, nullptr, 10) : 0;
    fExpected = std::max<int64>(told, 0);
}

/// Notes bytes that were moved; false when the callback wants no more.
bool clsFTP::Progress(size_t bytes)
{
    fBytesMoved += static_cast<int64>(bytes);
    if (!fIsProgressTold) {
        return true;
    }
    const auto moved = static_cast<double>(fBytesMoved);
    const double percent = fExpected > 0 ? moved * 100.0 / static_cast<double>(fExpected) : 0;
    return fCallback(Saturated(percent), Saturated(moved), fReply, fUser) != 0;
}

int clsFTP::ReceiveFile(const std::string& path)
{
    BFile file;
    if (file.SetTo(path.c_str(), kNewFile) != B_OK) {
        return AbortForFile(path);
    }
    FileSink sink(file);
    const int code = Receive(sink);
    const bool isWritten = file.Close() == B_OK;
    return code == 0 && !isWritten ? kFtpLocalFile : code;
}

/// Has the server end a transfer that there is no file for.
int clsFTP::AbortForFile(const std::string& path)
{
    shutdown(fData.Number(), SHUT_WR);
    FTPWriteString(fControl.Number(), "ABOR\r\n");
    if (TimeoutIfNotReady(fData.Number(), true)) {
        char dropped[kBlock];
        receive_socket(fData.Number(), dropped, sizeof(dropped));
    }
    fData.Close();
    NextReply();
    // Servers answer once, or once for the transfer and once for the command.
    fOwed = 0;
    fMayBeStale = true;
    Report("Error creating file: " + path);
    Report("Error opening local file.");
    return kFtpLocalFile;
}

/// Receives to the end of the data connection.
int clsFTP::Receive(FtpSink& sink)
{
    std::vector<char> buffer(kMoved);
    bool isWanted = true;
    int code = 0;
    for (ssize_t received = 1; isWanted && code == 0 && received > 0;) {
        code = ReceiveSome(buffer.data(), buffer.size(), &received);
        if (code == 0) {
            code = HandOver(sink, buffer.data(), static_cast<size_t>(received), &isWanted);
        }
    }
    if (code == 0) {
        code = sink.End();
    }
    if (code == 0) {
        Report(CountText("Read ", fBytesMoved, " bytes from server."));
    }
    return code;
}

/// Receives what comes next; `*received` is 0 at the end.
int clsFTP::ReceiveSome(char* buffer, size_t size, ssize_t* received) const
{
    for (;;) {
        if (IsStopped()) {
            return kFtpCancelled;
        }
        *received = receive_socket(fData.Number(), buffer, size);
        if (*received != B_WOULD_BLOCK) {
            break;
        }
        const int code = WaitCode(fData.Number(), Direction::kRead);
        if (code != 0) {
            return code;
        }
    }
    if (*received <= 0 && IsStopped()) {
        return kFtpCancelled;
    }
    return *received < 0 ? kFtpNoDataConnection : 0;
}

int clsFTP::HandOver(FtpSink& sink, const char* data, size_t size, bool* isWanted)
{
    for (size_t done = 0; *isWanted && done < size;) {
        const size_t block = std::min(kBlock, size - done);
        const int code = sink.Take(data + done, block);
        if (code != 0) {
            return code;
        }
        done += block;
        *isWanted = Progress(block);
        fIsBroken = !*isWanted;
    }
    return 0;
}

/// Sends what `file` has, to its end.
int clsFTP::Send(BDataIO& file, int64 bytes)
{
    fExpected = bytes;
    Report(CountText("Sending ", bytes, " bytes to server."));
    std::vector<char> buffer(kMoved);
    for (;;) {
        const ssize_t read = file.Read(buffer.data(), buffer.size());
        if (read <= 0) {
            return read < 0 ? kFtpLocalFile : 0;
        }
        const int code = SendBlock(buffer.data(), static_cast<size_t>(read));
        if (code != 0) {
            return code;
        }
    }
}

int clsFTP::SendBlock(const char* data, size_t size)
{
    for (size_t sent = 0; sent < size;) {
        if (IsStopped()) {
            return kFtpCancelled;
        }
        const ssize_t count = send_socket(fData.Number(), data + sent, size - sent);
        if (count == B_WOULD_BLOCK) {
            const int code = WaitCode(fData.Number(), Direction::kWrite);
            if (code != 0) {
                return code;
            }
            continue;
        }
        if (count < 0) {
            return IsStopped() ? kFtpCancelled : kFtpNoDataConnection;
        }
        sent += static_cast<size_t>(count);
        // A callback that wants no more ends a block, and each of them has been sent whole.
        for (size_t left = static_cast<size_t>(count); left > 0;) {
            const size_t block = std::min(kBlock, left);
            Progress(block);
            left -= block;
        }
    }
    return 0;
}

} // namespace norvane
