#include "app/ApplicationThreads.h"

#include "app/ProgramEnd.h"

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
    sigemptyset(&fAwaited);
    AddUnlessIgnored(fAwaited, SIGINT);
    AddUnlessIgnored(fAwaited, SIGTERM);
    AddUnlessIgnored(fAwaited, SIGHUP);
    sigaddset(&fAwaited, SIGRTMIN + 6); // ends the thread
    ::pthread_sigmask(SIG_BLOCK, &fAwaited, &fFormerMask);
    fThread = std::thread([this] { Run(); });
}

SignalThread::~SignalThread()
{
    fEnds = true;
    ::pthread_kill(fThread.native_handle(), SIGRTMIN + 6);
    fThread.join();
    ::pthread_sigmask(SIG_SETMASK, &fFormerMask, nullptr);
}

void SignalThread::Run()
{
    while (true) {
        int signal = 0;
        const int error = ::sigwait(&fAwaited, &signal);
        if (fEnds) {
            return;
        }
        if (error == 0) {
            ProgramEnd::Request();
        }
    }
}

} // namespace kits
