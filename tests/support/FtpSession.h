#pragma once

#include <atomic>
#include <chrono>
#include <string>
#include <string_view>

/// The server's side of one FTP connection on loopback: what a script, or the tree of FtpTree,
/// talks through.
///
/// Every wait ends at the latest after twenty seconds, or when the server is destroyed; the call
/// then returns false.
class FtpSession
{
public:
    /// Adopts the control connection's socket; borrows `stop`.
    FtpSession(int socket, const std::atomic<bool>& stop);
    ~FtpSession();
    FtpSession(const FtpSession&) = delete;
    FtpSession& operator=(const FtpSession&) = delete;

    // The control connection.
    /// The next command, without its line end; false when there is none.
    bool ReadLine(std::string* line);
    /// As it stands; Reply() adds the line end.
    bool Send(std::string_view text);
    bool Reply(std::string_view text) { return Send(std::string(text) + "\r\n"); }
    /// Waits until the client closes the connection, dropping what it says.
    bool AwaitEnd();
    void Close();
    /// Closes it so that the client sees it broken.
    void Reset();

    // Data connections.
    /// Waits for one: the numbers for a reply to PASV ("127,0,0,1,19,137"); the port alone by
    /// DataPort().
    std::string ListenForData();
    int DataPort() const { return fDataPort; }
    /// Takes the address of a PORT or EPRT command; false when it is none.
    bool SetActive(const std::string& command);
    /// Connects to it, or accepts, whichever was prepared; `from`: by this address of loopback.
    bool OpenData(const char* from = nullptr);
    bool SendData(std::string_view data);
    /// All that comes until the client's end.
    bool ReadData(std::string* data);
    /// So many bytes of it, at least.
    bool ReadSomeData(size_t bytes, std::string* data);
    void CloseData();
    void ResetData();
    /// Of an abandoned preparation.
    void CloseListening();
    bool HasData() const { return fData >= 0; }

    /// Pauses; false when the server is destroyed meanwhile.
    bool Pause(std::chrono::milliseconds time);

private:
    bool Await(int socket, short events, std::chrono::milliseconds longest) const;
    bool SendAll(int socket, std::string_view data);
    bool Accept();
    bool Connect(const char* from);

    const std::atomic<bool>& fStop;
    int fControl;
    int fListening = -1;
    int fData = -1;
    int fFamily = 0;
    std::string fReceived; // of the control connection, not read yet
    std::string fActiveHost;
    int fActivePort = 0;
    int fDataPort = 0;
};
