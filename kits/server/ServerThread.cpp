#include "ServerThread.h"

#include "HasDisplay.h"
#include "ServerState.h"
#include "ToolkitUse.h"

#include "app/Guards.h"

#include <fontconfig/fontconfig.h>

#include <QGuiApplication>
#include <QObject>
#include <QtGlobal>

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>

namespace kits {

namespace {

std::atomic<bool> sIsUp{false};

thread_local bool sIsServer = false;

Mutex sHeldBackLock;
std::string sHeldBack GUARDED_BY(sHeldBackLock); // what the toolkit said before it was up

// The display was looked for before. When the toolkit cannot use it all the same, it would print a
// page and dump core; one line says as much.
void MessageFromToolkit(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type == QtFatalMsg && !sIsUp) {
        std::fprintf(stderr, "%s: the display cannot be used\n", program_invocation_short_name);
        _exit(1);
    }
    if (type == QtDebugMsg || type == QtInfoMsg) {
        return;
    }
    const std::string line = text.toStdString() + "\n";
    if (!sIsUp) {
        MutexLock lock(sHeldBackLock);
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
    MutexLock lock(sHeldBackLock);
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

// The toolkit gives the data of its first thread back twice when that is not the process's own: as
// the thread ends, and as the process does. Its plugins, which still have to go then, read what is
// freed. An object that is never deleted holds them once more; a pointer to it alone would be
// optimised away, and it taken for a leak.
void KeepThreadData()
{
    alignas(QObject) static std::byte place[sizeof(QObject)];
    [[maybe_unused]] static const QObject* const kept = new (place) QObject;
}

} // namespace

status_t ServerThread::Start()
{
    if (!HasDisplay()) {
        return B_ERROR;
    }
    // Before any thread may read the environment. Assistive programs that start later are missed
    // otherwise.
    setenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1", 0);
    const status_t status = fThread.Start("window server", [this] { Run(); });
    if (status != B_OK) {
        return status;
    }
    // Every start reads the list of the system's fonts; now it does while the toolkit gets ready,
    // which looks for fonts only when it is asked for one, and then finds what was read.
    FcInit();
    MutexLock lock(fLock);
    while (!fIsUp) {
        fStarted.Wait(fLock);
    }
    return B_OK;
}

ServerThread::~ServerThread()
{
    // Not quit(): that asks the windows first, and those say no for themselves.
    fQueue.Add([] { QCoreApplication::exit(0); });
    fThread.Join();
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
        Mutex mutex;
        Condition done;
        bool isDone GUARDED_BY(mutex) = false;
    };
    Ticket ticket;
    const bool isQueued = fQueue.Add([&ticket, &task] {
        task();
        // Notified under the lock: the ticket is gone as soon as its owner can take it.
        MutexLock lock(ticket.mutex);
        ticket.isDone = true;
        ticket.done.Signal();
    });
    if (!isQueued) {
        return;
    }
    MutexLock lock(ticket.mutex);
    while (!ticket.isDone) {
        ticket.done.Wait(ticket.mutex);
    }
}

void ServerThread::Run()
{
    sIsServer = true;
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
    KeepThreadData();
    {
        ServerState state;
        fQueue.Open();
        sIsUp = true;
        PrintHeldBack();
        ToolkitUse::Open();
        {
            MutexLock lock(fLock);
            fIsUp = true;
        }
        fStarted.Signal();
        application.exec();
        fQueue.Close();
        ToolkitUse::Close();
    }
    sIsUp = false;
}

} // namespace kits
