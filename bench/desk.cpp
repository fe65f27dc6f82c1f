// Measures what a person in front of the screen sees. All times are printed in milliseconds.
//
//   desk start COMMAND...     from the start of the command to its last change of the screen;
//                             leaves the command running and prints its process id first
//   desk key NAME [QUIET]     from a key press to the last change of the screen, after which it was
//                             still for QUIET milliseconds
//   desk keys NAME COUNT      from a key press to the first frame that answers it, COUNT times: the
//   50th,
//                             99th and 100th of a hundred
//   desk operation NAME TITLE [FOLDER]
//                             from a key press until the window of that title, once shown, is gone;
//                             and until the first entry came into FOLDER

#include "ScreenWatch.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <future>
#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr double kQuietMs = 700;
constexpr double kLimitMs = 300000;

int Fail(const char* text)
{
    std::fprintf(stderr, "desk: %s\n", text);
    return 1;
}

int Start(ScreenWatch& screen, char** command)
{
    screen.Drain();
    const double begin = ScreenWatch::Now();
    const pid_t child = fork();
    if (child == 0) {
        // The measured command must not hold the pipe that this program's output goes to.
        if (std::freopen("/dev/null", "w", stdout) == nullptr ||
            std::freopen("/dev/null", "w", stderr) == nullptr) {
            _exit(126);
        }
        execvp(command[0], command);
        _exit(127);
    }
    const double end = screen.LastChange(kQuietMs, kLimitMs);
    std::printf("%d %.1f\n", static_cast<int>(child), end < 0 ? -1.0 : end - begin);
    return end < 0 ? 1 : 0;
}

int Key(ScreenWatch& screen, const char* name, double quietMs)
{
    screen.Drain();
    const double begin = ScreenWatch::Now();
    if (!screen.Press(name)) {
        return Fail("no such key");
    }
    const double end = screen.LastChange(quietMs, kLimitMs);
    std::printf("%.1f\n", end < 0 ? -1.0 : end - begin);
    return end < 0 ? 1 : 0;
}

int Keys(ScreenWatch& screen, const char* name, int count)
{
    std::vector<double> times;
    for (int i = 0; i < count; i++) {
        screen.Drain();
        const double begin = ScreenWatch::Now();
        if (!screen.Press(name)) {
            return Fail("no such key");
        }
        const double end = screen.FirstChange(2000);
        if (end >= 0) {
            times.push_back(end - begin);
            screen.LastChange(60, 2000); // the footer follows a frame later
        }
    }
    if (times.empty()) {
        return Fail("the screen never changed");
    }
    std::sort(times.begin(), times.end());
    const size_t last = times.size() - 1;
    std::printf("%.1f %.1f %.1f of %zu\n", times[last / 2], times[last * 99 / 100], times[last],
                times.size());
    return 0;
}

/// Notes when the first entry comes into a folder.
class FirstEntry
{
public:
    /// From here on; `folder` may be null: nothing is noted.
    explicit FirstEntry(const char* folder)
    {
        if (folder != nullptr &&
            inotify_add_watch(fNotices, folder, IN_CREATE | IN_MOVED_TO) >= 0) {
            fTime = std::async(std::launch::async, [this] { return Wait(); });
        }
    }
    ~FirstEntry()
    {
        Time();
        close(fNotices);
    }
    FirstEntry(const FirstEntry&) = delete;
    FirstEntry& operator=(const FirstEntry&) = delete;

    /// When it came; -1 when none has come so far.
    double Time()
    {
        fIsOver = true;
        return fTime.valid() ? fTime.get() : -1.0;
    }

private:
    double Wait() const
    {
        pollfd ready{fNotices, POLLIN, 0};
        for (;;) {
            const bool isLast = fIsOver;
            if (poll(&ready, 1, 50) > 0) {
                return ScreenWatch::Now();
            }
            if (isLast) {
                return -1;
            }
        }
    }

    const int fNotices = inotify_init1(IN_CLOEXEC);
    std::atomic<bool> fIsOver{false};
    std::future<double> fTime;
};

int Operation(ScreenWatch& screen, const char* name, const char* title, const char* folder)
{
    FirstEntry first(folder);
    const double begin = ScreenWatch::Now();
    if (!screen.Press(name)) {
        return Fail("no such key");
    }
    const Window window = screen.WaitForWindow(title, 5000);
    if (window == None) {
        return Fail("the window never came");
    }
    if (!screen.WaitForEnd(window, kLimitMs)) {
        return Fail("the window never went");
    }
    const double end = ScreenWatch::Now();
    if (folder == nullptr) {
        std::printf("%.1f\n", end - begin);
    } else {
        std::printf("%.1f %.1f\n", end - begin, first.Time() - begin);
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    ScreenWatch screen;
    if (!screen.IsOpen()) {
        return Fail("no display");
    }
    if (argc >= 3 && std::strcmp(argv[1], "start") == 0) {
        return Start(screen, argv + 2);
    }
    if ((argc == 3 || argc == 4) && std::strcmp(argv[1], "key") == 0) {
        return Key(screen, argv[2], argc == 4 ? std::atof(argv[3]) : kQuietMs);
    }
    if (argc == 4 && std::strcmp(argv[1], "keys") == 0) {
        return Keys(screen, argv[2], std::atoi(argv[3]));
    }
    if ((argc == 4 || argc == 5) && std::strcmp(argv[1], "operation") == 0) {
        return Operation(screen, argv[2], argv[3], argc == 5 ? argv[4] : nullptr);
    }
    return Fail("start COMMAND... | key NAME [QUIET] | keys NAME COUNT | "
                "operation NAME TITLE [FOLDER]");
}
