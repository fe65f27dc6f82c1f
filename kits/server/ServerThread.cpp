#include "ServerThread.h"

#include "ServerState.h"

#include "app/Guards.h"

#include <QGuiApplication>
#include <QtGlobal>

#include <pthread.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>

namespace kits {

namespace {

std::atomic<bool> sIsUp{false};

thread_local bool sIsServer = false;

std::mutex sHeldBackLock;
std::string sHeldBack; // what the toolkit said before it was up; guarded by sHeldBackLock

// Without a display the toolkit prints a page and dumps core; one line says the same.
void MessageFromToolkit(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type == QtFatalMsg && !sIsUp) {
        std::fprintf(stderr, "%s: there is no display to open windows on\n",
                     program_invocation_short_name);
        _exit(1);
    }
    if (type == QtDebugMsg || type == QtInfoMsg) {
        return;
    }
    const std::string line = text.toStdString() + "\n";
    if (!sIsUp) {
        std::lock_guard<std::mutex> lock(sHeldBackLock);
        sHeldBack += line;
        return;
    }
    std::fputs(line.c_str(), stderr);
    if (type == QtFatalMsg) {
        std::abort();
    }
}

void PrintHeldBack()
{
    std::lock_guard<std::mutex> lock(sHeldBackLock);
    std::fputs(sHeldBack.c_str(), stderr);
    sHeldBack.clear();
}

// When the display goes away the toolkit calls exit() on the server's thread while all others run:
// destructors of statics would pull the ground from under them.
void LeaveAtOnce(int status, void*)
{
    if (sIsUp) {
        std::fflush(stdout);
        std::fflush(stderr);
        _exit(status);
    }
}

} // namespace

ServerThread::ServerThread()
{
    // Before any thread may read the environment. Assistive programs that start later are missed
    // otherwise.
    setenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1", 0);
    fThread = std::thread([this] { Run(); });
    std::unique_lock<std::mutex> lock(fLock);
    fStarted.wait(lock, [this] { return fIsUp; });
}

ServerThread::~ServerThread()
{
    // Not quit(): that asks the windows first, and those say no for themselves.
    fQueue.Add([] { QCoreApplication::exit(0); });
    fThread.join();
}

bool ServerThread::IsCurrent()
{
    return sIsServer;
}

void ServerThread::Call(const std::function<void()>& task)
{
    GuardNotServer("The window server's thread waits for itself");
    struct Ticket
    {
        std::mutex lock;
        std::condition_variable done;
        bool isDone = false; // guarded by lock
    };
    Ticket ticket;
    const bool isQueued = fQueue.Add([&ticket, &task] {
        task();
        // Notified under the lock: the ticket is gone as soon as its owner can take it.
        std::lock_guard<std::mutex> lock(ticket.lock);
        ticket.isDone = true;
        ticket.done.notify_one();
    });
    if (!isQueued) {
        return;
    }
    std::unique_lock<std::mutex> lock(ticket.lock);
    ticket.done.wait(lock, [&ticket] { return ticket.isDone; });
}

void ServerThread::Run()
{
    sIsServer = true;
    pthread_setname_np(pthread_self(), "window server");
    // They outlive the application object, which keeps them by reference.
    static int argumentCount = 1;
    static char* arguments[] = {program_invocation_short_name, nullptr};
    qInstallMessageHandler(MessageFromToolkit);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QGuiApplication application(argumentCount, arguments);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QGuiApplication::setDesktopFileName(QString::fromLocal8Bit(program_invocation_short_name));
    static const int isRegistered = on_exit(LeaveAtOnce, nullptr);
    (void)isRegistered;
    {
        ServerState state;
        fQueue.Open();
        sIsUp = true;
        PrintHeldBack();
        {
            std::lock_guard<std::mutex> lock(fLock);
            fIsUp = true;
        }
        fStarted.notify_one();
        application.exec();
        fQueue.Close();
    }
    sIsUp = false;
}

} // namespace kits
