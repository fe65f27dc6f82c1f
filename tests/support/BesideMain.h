#pragma once

#include <csignal>
#include <functional>
#include <thread>

/// Runs `run` beside the main thread and returns its result.
///
/// What a toolkit keeps for each thread is given back when a thread ends, and only the main thread
/// never does: so what is left at the end has been leaked. Signals that ask the program to end go
/// to the other threads, which block them or not as the program's own main thread would.
inline int RunBesideMain(const std::function<int()>& run)
{
    int result = 1;
    std::thread thread([&] { result = run(); });
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        sigaddset(&signals, signal);
    }
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    thread.join();
    return result;
}
