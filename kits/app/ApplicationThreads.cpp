#include "app/ApplicationThreads.h"

#include "app/ProgramEnd.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace kits {

namespace {

void AddUnlessIgnored(sigset_t& set, int signal)
{
    struct sigaction current
    {
    };
    if (::sigaction(signal, nullptr, &current) == 0 && current.sa_handler != SIG_IGN) {
        sigaddset(&set, signal);
    }
}

} // namespace

SignalThread::SignalThread()
{
    sigset_t awaited;
    sigemptyset(&awaited);
    AddUnlessIgnored(awaited, SIGINT);
    AddUnlessIgnored(awaited, SIGTERM);
    AddUnlessIgnored(awaited, SIGHUP);
    ::pthread_sigmask(SIG_BLOCK, &awaited, &fFormerMask);
    fSignals = ::signalfd(-1, &awaited, SFD_CLOEXEC | SFD_NONBLOCK);
    fEnd = ::eventfd(0, EFD_CLOEXEC);
    status_t status = fSignals >= 0 && fEnd >= 0 ? B_OK : B_NO_MORE_FDS;
    if (status == B_OK) {
        status = fThread.Start("signals", [this] { Run(); });
    }
    if (status != B_OK) {
        ::pthread_sigmask(SIG_SETMASK, &fFormerMask, nullptr);
    }
}

SignalThread::~SignalThread()
{
    const uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = ::write(fEnd, &one, sizeof(one));
    fThread.Join();
    ::close(fSignals);
    ::close(fEnd);
    ::pthread_sigmask(SIG_SETMASK, &fFormerMask, nullptr);
}

void SignalThread::Run()
{
    pollfd awaited[] = {{fSignals, POLLIN, 0}, {fEnd, POLLIN, 0}};
    while (awaited[1].revents == 0) {
        if (::poll(awaited, 2, -1) < 0) {
            continue; // interrupted
        }
        signalfd_siginfo signal;
        if (awaited[0].revents != 0 && ::read(fSignals, &signal, sizeof(signal)) > 0) {
            ProgramEnd::Request();
        }
    }
}

} // namespace kits
