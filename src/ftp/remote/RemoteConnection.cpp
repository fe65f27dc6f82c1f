#include "ftp/remote/RemoteConnection.h"

#include "DetachedThread.h"
#include "MessageCodes.h"
#include "ftp/client/clsFTP.h"

#include <Message.h>
#include <OS.h>

#include <condition_variable>
#include <cstdlib>
#include <deque>
#include <mutex>
#include <utility>

namespace norvane {

namespace {

constexpr unsigned int kTimeout = 60'000;
constexpr unsigned int kTimeoutForGoodbye = 2'000;
constexpr int kWantsPassword = 331;
constexpr int kNotLoggedIn = 530;

ConnectionAnswer NotConnected(int code)
{
    using Kind = ConnectionAnswer::Kind;
    switch (code) {
    case kFtpCancelled:
        return {Kind::kNotConnected, "", ""};
    case kFtpTimedOut:
        return {Kind::kNotConnected, "Connect Failed", "Timed out trying to connect."};
    case kNotLoggedIn:
        return {Kind::kNotConnected, "Connect Failed",
                "The username or password supplied is incorrect.\nCheck your settings and try to "
                "reconnect."};
    default:
        return {Kind::kNotConnected, "Connect Failed",
                "Failed to connect to ftp server.\nPlease check your internet connection"};
    }
}

const char* StatusAfter(int code)
{
    switch (code) {
    case 0:
        return "ftp: Connected!";
    case kFtpTimedOut:
        return "ftp: Failed to connect.  Please check you internet connection.";
    case kNotLoggedIn:
        return "ftp: Bad username or password.";
    default:
        return "ftp: Failed to connect.";
    }
}

} // namespace

int FtpCallback(int percent, int, char* text, void* user)
{
    if (user == nullptr) {
        return 0;
    }
    if (percent == -1) {
        BMessage line(MSG_FTP_STATUS);
        line.AddString("status", text);
        static_cast<const BMessenger*>(user)->SendMessage(&line);
    }
    return 1;
}

/// What the handle and the thread share.
class RemoteConnection::Work
{
public:
    Work(std::string sessionFile, const ConnectionListeners& listeners)
        : fFile(std::move(sessionFile)), fListeners(listeners),
          fClient(kTimeout, &FtpCallback, &fListeners.pane)
    {
    }

    // The handle's
    void Add(Kind kind, const char* doing, Command command);
    void AddFirst();
    void GivePassword(const std::optional<std::string>& password);
    bool Cancel();
    void LetGo();
    std::optional<ConnectionAnswer> TakeAnswer();
    std::string Doing();
    std::string Status();
    FtpSession Session();

    // The thread's
    void Run();
    void Answer(ConnectionAnswer answer);

private:
    struct Order
    {
        Kind kind;
        const char* doing;
        Command command;
    };

    std::optional<Order> Next();
    ConnectionAnswer Connect();
    int LogIn(const FtpSession& session);
    std::optional<std::string> AskPassword();
    void SetStatus(const std::string& status);
    void TellNews() const;

    const std::string fFile;
    ConnectionListeners fListeners;        // set once
    clsFTP fClient;                        // the thread's, but for what any thread may call
    RemoteFolder fFolder{fClient, false};  // the thread's
    std::atomic<bool> fIsCancelled{false}; // what runs

    std::mutex fMutex; // guards all below
    std::condition_variable fChange;
    std::deque<Order> fOrders;
    std::deque<ConnectionAnswer> fAnswers;
    FtpSession fSession;
    std::string fStatus;
    const char* fDoing = "";
    std::optional<std::optional<std::string>> fPassword; // of the person, once there is an answer
    bool fIsBusy = false;
    bool fIsAsking = false; // for a password
    bool fIsLetGo = false;
};

// The handle

RemoteConnection::RemoteConnection(std::string sessionFile, const ConnectionListeners& listeners)
    : fWork(std::make_shared<Work>(std::move(sessionFile), listeners))
{
}

RemoteConnection::~RemoteConnection()
{
    fWork->LetGo();
}

void RemoteConnection::Connect()
{
    fWork->AddFirst();
    if (!StartDetached("ftp", B_NORMAL_PRIORITY, [work = fWork] { work->Run(); })) {
        fWork->Answer(NotConnected(kFtpNotConnected));
    }
}

void RemoteConnection::Do(Kind kind, const char* doing, Command command)
{
    fWork->Add(kind, doing, std::move(command));
}

void RemoteConnection::GivePassword(const std::optional<std::string>& password)
{
    fWork->GivePassword(password);
}

bool RemoteConnection::Cancel()
{
    return fWork->Cancel();
}

std::optional<ConnectionAnswer> RemoteConnection::TakeAnswer()
{
    return fWork->TakeAnswer();
}

std::string RemoteConnection::Doing() const
{
    return fWork->Doing();
}

std::string RemoteConnection::Status() const
{
    return fWork->Status();
}

FtpSession RemoteConnection::Session() const
{
    return fWork->Session();
}

// What both share

void RemoteConnection::Work::Add(Kind kind, const char* doing, Command command)
{
    {
        const std::lock_guard lock(fMutex);
        if (kind == Kind::kList) {
            std::erase_if(fOrders, [](const Order& order) { return order.kind == Kind::kList; });
        }
        fOrders.push_back({kind, doing, std::move(command)});
    }
    fChange.notify_all();
}

void RemoteConnection::Work::AddFirst()
{
    Add(Kind::kChange, "connecting", [this](Desk&) { return Connect(); });
}

void RemoteConnection::Work::GivePassword(const std::optional<std::string>& password)
{
    {
        const std::lock_guard lock(fMutex);
        if (!fIsAsking) {
            return;
        }
        fPassword = password;
    }
    fChange.notify_all();
}

bool RemoteConnection::Work::Cancel()
{
    {
        const std::lock_guard lock(fMutex);
        if (!fIsBusy && fOrders.empty()) {
            return false;
        }
        fOrders.clear();
        fIsCancelled = fIsBusy;
        if (fIsAsking) {
            fPassword.emplace(std::nullopt);
        }
    }
    fChange.notify_all();
    fClient.Cancel();
    return true;
}

void RemoteConnection::Work::LetGo()
{
    bool isBusy = false;
    {
        const std::lock_guard lock(fMutex);
        fIsLetGo = true;
        isBusy = fIsBusy;
        fOrders.clear();
    }
    fChange.notify_all();
    if (isBusy) {
        fClient.ShutDown();
    }
}

std::optional<ConnectionAnswer> RemoteConnection::Work::TakeAnswer()
{
    const std::lock_guard lock(fMutex);
    if (fAnswers.empty()) {
        return std::nullopt;
    }
    ConnectionAnswer answer = std::move(fAnswers.front());
    fAnswers.pop_front();
    return answer;
}

std::string RemoteConnection::Work::Doing()
{
    const std::lock_guard lock(fMutex);
    return fDoing;
}

std::string RemoteConnection::Work::Status()
{
    const std::lock_guard lock(fMutex);
    return fStatus;
}

FtpSession RemoteConnection::Work::Session()
{
    const std::lock_guard lock(fMutex);
    return fSession;
}

// The thread

void RemoteConnection::Work::Run()
{
    Desk desk{fClient, fFolder, fIsCancelled};
    while (const std::optional<Order> order = Next()) {
        TellNews();
        if (std::optional<ConnectionAnswer> answer = order->command(desk)) {
            Answer(std::move(*answer));
        }
    }
    if (fClient.IsConnected()) {
        fClient.SetTimeout(kTimeoutForGoodbye);
        fClient.Disconnect();
    }
}

/// The next command; nothing once nobody wants any more.
std::optional<RemoteConnection::Work::Order> RemoteConnection::Work::Next()
{
    std::unique_lock lock(fMutex);
    const bool wasBusy = std::exchange(fIsBusy, false);
    fDoing = "";
    if (wasBusy && fOrders.empty()) {
        lock.unlock();
        TellNews();
        lock.lock();
    }
    fChange.wait(lock, [this] { return fIsLetGo || !fOrders.empty(); });
    if (fIsLetGo) {
        return std::nullopt;
    }
    Order order = std::move(fOrders.front());
    fOrders.pop_front();
    fIsBusy = true;
    fIsCancelled = false;
    fDoing = order.doing;
    return order;
}

ConnectionAnswer RemoteConnection::Work::Connect()
{
    FtpSession session;
    session.name = SessionFile(fFile).Name();
    SetStatus("Setting up Host information");
    const status_t status = SessionFile(fFile).Read(&session);
    {
        const std::lock_guard lock(fMutex);
        fSession = session;
    }
    fFolder.SetPassive(session.isPassive);
    fClient.SetHost(session.host.c_str(),
                    static_cast<unsigned int>(std::atoi(session.port.c_str())), nullptr, 0);
    SetStatus("ftp: Connecting...");
    const int code = status == B_OK ? LogIn(session) : int{kFtpNotConnected};
    SetStatus(StatusAfter(code));
    if (code != 0) {
        return NotConnected(code);
    }
    if (!session.remoteDir.empty()) {
        fClient.ChangeDir(
            session.remoteDir.c_str()); // where a server refuses, its own choice stays
    }
    return {ConnectionAnswer::Kind::kConnected, "", ""};
}

int RemoteConnection::Work::LogIn(const FtpSession& session)
{
    const char* saved = session.password.empty() ? nullptr : session.password.c_str();
    const int code = fClient.Connect(session.user.c_str(), saved, nullptr);
    if (code != kWantsPassword || saved != nullptr) {
        return code;
    }
    const std::optional<std::string> password = AskPassword();
    if (!password.has_value()) {
        return kFtpCancelled;
    }
    {
        const std::lock_guard lock(fMutex);
        fSession.password = *password; // kept here alone
    }
    return fClient.SendPass(password->c_str());
}

/// Waits for the person, whom the server may wait for less long.
std::optional<std::string> RemoteConnection::Work::AskPassword()
{
    {
        const std::lock_guard lock(fMutex);
        fIsAsking = true;
        fPassword.reset();
    }
    Answer({ConnectionAnswer::Kind::kWantsPassword, "", ""});
    std::unique_lock lock(fMutex);
    fChange.wait(lock, [this] { return fIsLetGo || fPassword.has_value(); });
    fIsAsking = false;
    return fPassword.has_value() ? std::exchange(fPassword, std::nullopt).value() : std::nullopt;
}

void RemoteConnection::Work::Answer(ConnectionAnswer answer)
{
    {
        const std::lock_guard lock(fMutex);
        fAnswers.push_back(std::move(answer));
    }
    TellNews();
}

void RemoteConnection::Work::SetStatus(const std::string& status)
{
    {
        const std::lock_guard lock(fMutex);
        fStatus = status;
    }
    TellNews();
}

void RemoteConnection::Work::TellNews() const
{
    fListeners.list.SendMessage(kSourceNews);
}

} // namespace norvane
