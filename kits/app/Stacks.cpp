#include "app/Stacks.h"

#ifdef KITS_GUARDS

#include "kernel/Stack.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <dirent.h>
#include <semaphore.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace kits {

namespace {

sem_t gIsPrinted;

void PrintOwnStack()
{
    char header[32];
    const int length =
        std::snprintf(header, sizeof(header), "thread %d:\n", static_cast<int>(::gettid()));
    [[maybe_unused]] const ssize_t written =
        ::write(STDERR_FILENO, header, static_cast<size_t>(length));
    PrintStack();
}

void OnSignal(int /*signal*/)
{
    const int savedError = errno;
    PrintOwnStack();
    ::sem_post(&gIsPrinted);
    errno = savedError;
}

void WaitForPrint()
{
    timespec end{};
    ::clock_gettime(CLOCK_REALTIME, &end);
    end.tv_sec += 1; // a thread may have ended meanwhile, or blocks the signal
    while (::sem_timedwait(&gIsPrinted, &end) != 0 && errno == EINTR) {
    }
}

} // namespace

void PrintAllStacks()
{
    PrintOwnStack(); // also makes backtrace() load what it needs, which a signal handler must not
    ::sem_init(&gIsPrinted, 0, 0);
    const int signal = SIGRTMIN + 7;
    struct sigaction action
    {
    };
    action.sa_handler = &OnSignal;
    action.sa_flags = SA_RESTART;
    ::sigaction(signal, &action, nullptr);
    DIR* tasks = ::opendir("/proc/self/task");
    while (const dirent* task = tasks != nullptr ? ::readdir(tasks) : nullptr) {
        const pid_t thread = std::atoi(task->d_name);
        if (thread > 0 && thread != ::gettid() &&
            ::syscall(SYS_tgkill, ::getpid(), thread, signal) == 0) {
            WaitForPrint();
        }
    }
    if (tasks != nullptr) {
        ::closedir(tasks);
    }
    // The handler stays: a thread that was too slow may still get its signal, which would end the
    // program.
}

} // namespace kits

#endif
