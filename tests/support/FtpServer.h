#pragma once

#include "FtpSession.h"

#include <atomic>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

/// One thing that a scripted server does; false ends the script. Any lambda will do.
using FtpStep = std::function<bool(FtpSession& session)>;
using FtpScript = std::vector<FtpStep>;

/// Steps of scripts, as in
///
///     FtpServer server({Say("220 Here"), Answer("USER anna", "230 In"), Answer("PWD", "257
///     \"/\""), Hang()});
namespace ftp_script {

/// Says lines, each with its line end; SayRaw() what stands there.
FtpStep Say(std::string line);
FtpStep SayRaw(std::string text);
/// The same a few bytes at a time.
FtpStep SayInPieces(std::string text, size_t piece, std::chrono::milliseconds pause);
FtpStep Pause(std::chrono::milliseconds time);
/// Reads a command, which must begin like this; else the script ends, and the connection with it.
FtpStep Expect(std::string command);
FtpStep Answer(std::string command, std::string line);
/// Takes a client that may say and hear whatever a login needs: the greeting, USER, PASS.
FtpStep LogIn();
/// Expects PORT or EPRT, and answers 200.
FtpStep TakePort();
/// Expects PASV (or EPSV), and answers with where it waits; in `reply`, "%h" stands for the address
/// and "%p" for the port's two numbers, as in "227 Here (%h,%p)".
FtpStep Passive(std::string reply = "");
/// Brings the data connection about; `from`: from this address of loopback.
FtpStep OpenData(std::string from = "");
FtpStep SendData(std::string data);
/// Reads all data, or so many bytes of it, into `*into` (may be null).
FtpStep TakeData(std::string* into = nullptr);
FtpStep TakeSomeData(size_t bytes);
FtpStep CloseData();
FtpStep ResetData();
FtpStep Close();
FtpStep Reset();
/// Waits until the client goes away.
FtpStep Hang();
/// Several as one.
FtpStep All(FtpScript steps);

} // namespace ftp_script

/// An FTP server on a loopback address, at a port that is free, on threads of its own.
///
/// It ends with its destructor, whatever it does and whatever clients do. Thread: any.
class FtpServer
{
public:
    using Handler = std::function<void(FtpSession&)>;

    /// Serves each connection with `handler`, on a thread of its own; several at once. `host`:
    /// "127.0.0.1" or "::1".
    explicit FtpServer(Handler handler, std::string_view host = "127.0.0.1");
    /// Plays the script for each connection. Its end closes the connection.
    explicit FtpServer(FtpScript script, std::string_view host = "127.0.0.1");
    /// The first connection gets the first script, and so on; further ones are closed at once.
    explicit FtpServer(std::vector<FtpScript> scripts);
    ~FtpServer();
    FtpServer(const FtpServer&) = delete;
    FtpServer& operator=(const FtpServer&) = delete;

    const char* Host() const { return fHost.c_str(); }
    unsigned int Port() const { return fPort; }
    bool IsListening() const { return fListening >= 0; }

    /// How many connections were made so far.
    int Connections() const { return fConnections; }
    /// Whether a script was left because the client said something else, and what.
    std::string Surprise() const;

    /// The commands that all scripts' and trees' clients have sent so far, in order, passwords
    /// included.
    std::vector<std::string> Commands() const;
    /// The same as one text, a line feed behind each.
    std::string CommandLog() const;
    /// Waits until a command that begins like this has come; false when it does not within ten
    /// seconds.
    bool AwaitCommand(std::string_view command) const;

    // For handlers and steps.
    static void Note(const FtpSession& session, const std::string& command);
    static void NoteSurprise(const FtpSession& session, const std::string& text);

private:
    void Start(std::string_view host);
    void AcceptAll();
    void Serve(int socket);

    const Handler fHandler;
    std::string fHost;
    unsigned int fPort = 0;
    int fListening = -1;
    std::atomic<int> fConnections = 0;
    std::atomic<bool> fStop = false;

    mutable std::mutex fMutex; // guards what follows
    std::vector<std::string> fCommands;
    std::string fSurprise;
    std::vector<std::thread> fSessions;

    std::thread fAcceptor;
};
