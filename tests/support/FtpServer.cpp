#include "FtpServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <memory>
#include <utility>

namespace {

/// Which server a session belongs to: a session is served by one thread, which knows.
thread_local FtpServer* gServer = nullptr;

/// The address of `host` with any port.
socklen_t Wildcard(const std::string& host, sockaddr_storage* address)
{
    *address = {};
    if (host.find(':') != std::string::npos) {
        auto* six = reinterpret_cast<sockaddr_in6*>(address);
        six->sin6_family = AF_INET6;
        inet_pton(AF_INET6, host.c_str(), &six->sin6_addr);
        return sizeof(sockaddr_in6);
    }
    auto* four = reinterpret_cast<sockaddr_in*>(address);
    four->sin_family = AF_INET;
    inet_pton(AF_INET, host.c_str(), &four->sin_addr);
    return sizeof(sockaddr_in);
}

FtpServer::Handler Player(FtpScript script)
{
    return [step = ftp_script::All(std::move(script))](FtpSession& session) {
        step(session);
    };
}

FtpServer::Handler Player(std::vector<FtpScript> scripts)
{
    auto next = std::make_shared<std::atomic<size_t>>(0);
    return [scripts = std::move(scripts), next](FtpSession& session) {
        const size_t mine = (*next)++;
        if (mine < scripts.size()) {
            ftp_script::All(scripts[mine])(session);
        }
    };
}

} // namespace

FtpServer::FtpServer(Handler handler, std::string_view host) : fHandler(std::move(handler))
{
    Start(host);
}

FtpServer::FtpServer(FtpScript script, std::string_view host)
    : FtpServer(Player(std::move(script)), host)
{
}

FtpServer::FtpServer(std::vector<FtpScript> scripts) : FtpServer(Player(std::move(scripts))) {}

void FtpServer::Start(std::string_view host)
{
    fHost = host;
    sockaddr_storage address = {};
    socklen_t length = Wildcard(fHost, &address);
    fListening = socket(address.ss_family, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (bind(fListening, reinterpret_cast<sockaddr*>(&address), length) != 0 ||
        listen(fListening, 16) != 0) {
        close(fListening); // a machine without this family
        fListening = -1;
        return;
    }
    getsockname(fListening, reinterpret_cast<sockaddr*>(&address), &length);
    fPort = ntohs(reinterpret_cast<sockaddr_in*>(&address)->sin_port);
    fAcceptor = std::thread([this] { AcceptAll(); });
}

FtpServer::~FtpServer()
{
    fStop = true;
    if (fAcceptor.joinable()) {
        fAcceptor.join();
    }
    // Nobody adds any more.
    for (std::thread& session : fSessions) {
        session.join();
    }
    if (fListening >= 0) {
        close(fListening);
    }
}

void FtpServer::AcceptAll()
{
    while (!fStop) {
        pollfd asked = {fListening, POLLIN, 0};
        if (poll(&asked, 1, 10) <= 0) {
            continue;
        }
        const int connection = accept4(fListening, nullptr, nullptr, SOCK_CLOEXEC);
        if (connection >= 0) {
            ++fConnections;
            const std::lock_guard lock(fMutex);
            fSessions.emplace_back([this, connection] { Serve(connection); });
        }
    }
}

void FtpServer::Serve(int socket)
{
    gServer = this;
    FtpSession session(socket, fStop);
    fHandler(session);
}

void FtpServer::Note(const FtpSession& /*session*/, const std::string& command)
{
    const std::lock_guard lock(gServer->fMutex);
    gServer->fCommands.push_back(command);
}

void FtpServer::NoteSurprise(const FtpSession& /*session*/, const std::string& text)
{
    const std::lock_guard lock(gServer->fMutex);
    gServer->fSurprise += text + "\n";
}

std::string FtpServer::Surprise() const
{
    const std::lock_guard lock(fMutex);
    return fSurprise;
}

std::vector<std::string> FtpServer::Commands() const
{
    const std::lock_guard lock(fMutex);
    return fCommands;
}

std::string FtpServer::CommandLog() const
{
    std::string log;
    for (const std::string& command : Commands()) {
        log += command + "\n";
    }
    return log;
}

bool FtpServer::AwaitCommand(std::string_view command) const
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (std::chrono::steady_clock::now() < end) {
        for (const std::string& one : Commands()) {
            if (one.compare(0, command.size(), command) == 0) {
                return true;
            }
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return false;
}

namespace ftp_script {

namespace {

bool ReadExpected(FtpSession& session, const std::string& command, std::string* line)
{
    if (!session.ReadLine(line)) {
        return false;
    }
    FtpServer::Note(session, *line);
    if (line->compare(0, command.size(), command) != 0) {
        FtpServer::NoteSurprise(session, *line + " came in place of " + command);
        return false;
    }
    return true;
}

void Replace(std::string* text, const std::string& what, const std::string& by)
{
    const size_t at = text->find(what);
    if (at != std::string::npos) {
        text->replace(at, what.size(), by);
    }
}

} // namespace

FtpStep Say(std::string line)
{
    return SayRaw(line + "\r\n");
}

FtpStep SayRaw(std::string text)
{
    return [text = std::move(text)](FtpSession& session) {
        return session.Send(text);
    };
}

FtpStep SayInPieces(std::string text, size_t piece, std::chrono::milliseconds pause)
{
    return [=](FtpSession& session) {
        for (size_t at = 0; at < text.size(); at += piece) {
            if (!session.Send(text.substr(at, piece)) || !session.Pause(pause)) {
                return false;
            }
        }
        return true;
    };
}

FtpStep Pause(std::chrono::milliseconds time)
{
    return [time](FtpSession& session) {
        return session.Pause(time);
    };
}

FtpStep Expect(std::string command)
{
    return [command = std::move(command)](FtpSession& session) {
        std::string line;
        return ReadExpected(session, command, &line);
    };
}

FtpStep Answer(std::string command, std::string line)
{
    return All({Expect(std::move(command)), Say(std::move(line))});
}

FtpStep LogIn()
{
    return All({Say("220 Here"), Answer("USER ", "331 Password"), Answer("PASS ", "230 In")});
}

FtpStep TakePort()
{
    return [](FtpSession& session) {
        std::string line;
        return ReadExpected(session, "", &line) && session.SetActive(line) &&
               session.Reply("200 Taken");
    };
}

FtpStep Passive(std::string reply)
{
    return [reply = std::move(reply)](FtpSession& session) {
        std::string line;
        if (!ReadExpected(session, "", &line)) {
            return false;
        }
        session.ListenForData();
        const std::string port = std::to_string(session.DataPort());
        const std::string numbers = std::to_string(session.DataPort() / 256) + "," +
                                    std::to_string(session.DataPort() % 256);
        std::string text = reply;
        if (text.empty()) {
            text = line == "EPSV" ? "229 Here (|||" + port + "|)" : "227 Here (%h,%p)";
        }
        Replace(&text, "%h", "127,0,0,1");
        Replace(&text, "%p", numbers);
        return session.Reply(text);
    };
}

FtpStep OpenData(std::string from)
{
    return [from = std::move(from)](FtpSession& session) {
        return session.OpenData(from.empty() ? nullptr : from.c_str());
    };
}

FtpStep SendData(std::string data)
{
    return [data = std::move(data)](FtpSession& session) {
        return session.SendData(data);
    };
}

FtpStep TakeData(std::string* into)
{
    return [into](FtpSession& session) {
        std::string data;
        const bool isWhole = session.ReadData(&data);
        if (into != nullptr) {
            *into = data;
        }
        return isWhole;
    };
}

FtpStep TakeSomeData(size_t bytes)
{
    return [bytes](FtpSession& session) {
        std::string data;
        return session.ReadSomeData(bytes, &data);
    };
}

FtpStep CloseData()
{
    return [](FtpSession& session) {
        session.CloseData();
        return true;
    };
}

FtpStep ResetData()
{
    return [](FtpSession& session) {
        session.ResetData();
        return true;
    };
}

FtpStep Close()
{
    return [](FtpSession& session) {
        session.Close();
        return true;
    };
}

FtpStep Reset()
{
    return [](FtpSession& session) {
        session.Reset();
        return true;
    };
}

FtpStep Hang()
{
    return [](FtpSession& session) {
        return session.AwaitEnd();
    };
}

FtpStep All(FtpScript steps)
{
    return [steps = std::move(steps)](FtpSession& session) {
        for (const FtpStep& step : steps) {
            if (!step(session)) {
                return false;
            }
        }
        return true;
    };
}

} // namespace ftp_script
