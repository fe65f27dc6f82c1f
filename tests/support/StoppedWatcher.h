#pragma once

#include <cstdlib>
#include <dirent.h>
#include <fstream>
#include <semaphore.h>
#include <signal.h>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>

/// Keeps the thread that reads the kernel's notices from reading, as a busy machine may. One at a
/// time.
class StoppedWatcher
{
public:
    StoppedWatcher()
    {
        sem_init(&sGate, 0, 0);
        struct sigaction action = {};
        action.sa_handler = WaitAtGate;
        sigaction(SIGUSR1, &action, nullptr);
        fIsStopped = syscall(SYS_tgkill, getpid(), WatcherThread(), SIGUSR1) == 0;
    }
    ~StoppedWatcher() { sem_post(&sGate); }
    StoppedWatcher(const StoppedWatcher&) = delete;
    StoppedWatcher& operator=(const StoppedWatcher&) = delete;

    /// False when there was no such thread.
    bool IsStopped() const { return fIsStopped; }

private:
    static void WaitAtGate(int)
    {
        while (sem_wait(&sGate) != 0) {
        }
    }

    static pid_t WatcherThread()
    {
        pid_t found = 0;
        DIR* tasks = opendir("/proc/self/task");
        while (const dirent* entry = readdir(tasks)) {
            std::ifstream file("/proc/self/task/" + std::string(entry->d_name) + "/comm");
            std::string name;
            if (std::getline(file, name) && name == "node watcher") {
                found = static_cast<pid_t>(std::atoi(entry->d_name));
            }
        }
        closedir(tasks);
        return found;
    }

    static inline sem_t sGate;
    bool fIsStopped = false;
};
