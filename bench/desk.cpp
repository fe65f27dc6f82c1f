// Measures what a person in front of the screen sees. All times are printed in milliseconds.
//
//   desk start COMMAND...     from the start of the command to its last change of the screen;
//                             leaves the command running and prints its process id first
//   desk key NAME [QUIET]     from a key press to the last change of the screen, after which it was
//                             still for QUIET milliseconds
//   desk keys NAME COUNT      from a key press to the first frame that answers it, COUNT times: the
//   50th,
//                             99th and 100th of a hundred
//   desk keys-beside NAME COUNT WINDOW OTHER
//                             from a key press to the first frame of WINDOW after it, up to COUNT
//                             times while the window OTHER is there: as above; and how often OTHER
//                             was painted in the busiest second of that time
//   desk files FOLDER COUNT   from the making of a file there to the first frame that shows it,
//   COUNT
//                             times: the 50th, 99th and 100th of a hundred
//   desk creations FOLDER COUNT
//                             from the making of the first of so many files, at once, to the last
//                             change of the screen
//   desk operation NAME TITLE [FOLDER]
//                             from a key press until the window of that title, once shown, is gone;
//                             and until the first entry came into FOLDER. What is over before its
//                             window can be seen: until the last change in FOLDER
//   desk frames WINDOW MILLISECONDS held NAME
//   desk frames WINDOW MILLISECONDS wheel X Y
//   desk frames WINDOW MILLISECONDS drag X Y ALONG-X ALONG-Y STEPS
//   desk frames WINDOW MILLISECONDS carry X Y ALONG-X ALONG-Y STEPS
//                             how many frames a second the window shows in so many milliseconds
//                             while a key is held, the wheel is turned, or a held pointer goes to
//                             and fro between a place of the window and one so many steps further;
//                             each asks for something new every 1/60 s. What is carried has a
//                             picture: how many of its places are shown a second

#include "Frames.h"
#include "Paintings.h"
#include "ScreenWatch.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <future>
#include <poll.h>
#include <sys/inotify.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

constexpr double kQuietMs = 700;
constexpr double kLimitMs = 300000;
constexpr double kWindowMs = 5000;

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

int Print(std::vector<double> times)
{
    if (times.empty()) {
        return Fail("the screen never changed");
    }
    std::sort(times.begin(), times.end());
    const size_t last = times.size() - 1;
    std::printf("%.1f %.1f %.1f of %zu\n", times[last / 2], times[last * 99 / 100], times[last],
                times.size());
    return 0;
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
    return Print(std::move(times));
}

int KeysBeside(ScreenWatch& screen, char** arguments)
{
    const char* name = arguments[0];
    const int count = std::atoi(arguments[1]);
    const auto never = [] {
        return false;
    };
    const Window window = screen.WaitForWindow(arguments[2], kWindowMs, never);
    const Window other = screen.WaitForWindow(arguments[3], kWindowMs, never);
    if (window == None || other == None) {
        return Fail("no such window");
    }
    screen.WatchOnly(window);
    Paintings paintings(other);
    std::vector<double> times;
    for (int i = 0; i < count && screen.IsShown(other); i++) {
        screen.Drain();
        const double begin = ScreenWatch::Now();
        if (!screen.Press(name)) {
            return Fail("no such key");
        }
        const double end = screen.FirstChange(2000);
        if (end < 0) {
            return Fail("a key was not answered");
        }
        times.push_back(end - begin);
        screen.LastChange(40, 2000);
    }
    const size_t painted = paintings.MostInASecond();
    std::printf("%zu ", painted);
    return Print(std::move(times));
}

bool MakeFile(const char* folder, const char* prefix, int number)
{
    char path[4096];
    std::snprintf(path, sizeof(path), "%s/%s-%08d", folder, prefix, number);
    const int file = open(path, O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0644);
    return file >= 0 && close(file) == 0;
}

int Files(ScreenWatch& screen, const char* folder, int count)
{
    std::vector<double> times;
    for (int i = 0; i < count; i++) {
        screen.Drain();
        const double begin = ScreenWatch::Now();
        if (!MakeFile(folder, "a", count - i)) { // each before the one before: all are in sight
            return Fail("no file can be made there");
        }
        const double end = screen.FirstChange(2000);
        if (end >= 0) {
            times.push_back(end - begin);
            screen.LastChange(60, 2000);
        }
    }
    return Print(std::move(times));
}

int Creations(ScreenWatch& screen, const char* folder, int count)
{
    screen.Drain();
    const double begin = ScreenWatch::Now();
    for (int i = 0; i < count; i++) {
        if (!MakeFile(folder, "m", i)) {
            return Fail("no file can be made there");
        }
    }
    const double end = screen.LastChange(kQuietMs, kLimitMs);
    std::printf("%.1f\n", end < 0 ? -1.0 : end - begin);
    return end < 0 ? 1 : 0;
}

/// Notes when the first entry comes into a folder, and when one was changed last.
class FolderClock
{
public:
    /// From here on; `folder` may be null: nothing is noted.
    explicit FolderClock(const char* folder)
    {
        if (folder != nullptr &&
            inotify_add_watch(fNotices, folder,
                              IN_CREATE | IN_MOVED_TO | IN_ATTRIB | IN_CLOSE_WRITE) >= 0) {
            fEnd = std::async(std::launch::async, [this] { Watch(); });
        }
    }
    ~FolderClock()
    {
        fIsOver = true;
        if (fEnd.valid()) {
            fEnd.get();
        }
        close(fNotices);
    }
    FolderClock(const FolderClock&) = delete;
    FolderClock& operator=(const FolderClock&) = delete;

    /// -1 when nothing has come so far.
    double First() const { return fFirst; }
    double Last() const { return fLast; }
    /// Whether something came, and nothing more since.
    bool IsQuiet() const { return fLast > 0 && ScreenWatch::Now() - fLast > kQuietMs; }

private:
    void Watch()
    {
        pollfd ready{fNotices, POLLIN, 0};
        while (!fIsOver) {
            char bytes[65536];
            if (poll(&ready, 1, 20) > 0 && read(fNotices, bytes, sizeof(bytes)) > 0) {
                fLast = ScreenWatch::Now();
                fFirst = fFirst < 0 ? fLast.load() : fFirst.load();
            }
        }
    }

    const int fNotices = inotify_init1(IN_CLOEXEC);
    std::atomic<bool> fIsOver{false};
    std::atomic<double> fFirst{-1};
    std::atomic<double> fLast{-1};
    std::future<void> fEnd;
};

int Operation(ScreenWatch& screen, const char* name, const char* title, const char* folder)
{
    FolderClock clock(folder);
    const double begin = ScreenWatch::Now();
    if (!screen.Press(name)) {
        return Fail("no such key");
    }
    const Window window =
        screen.WaitForWindow(title, kWindowMs, [&clock] { return clock.IsQuiet(); });
    if (window == None && clock.Last() < 0) {
        return Fail("the window never came");
    }
    if (window != None && !screen.WaitForEnd(window, kLimitMs)) {
        return Fail("the window never went");
    }
    // What is over before its window was seen ended with the last change of what it made.
    const double end = window != None ? ScreenWatch::Now() : clock.Last();
    if (folder == nullptr) {
        std::printf("%.1f\n", end - begin);
    } else {
        std::printf("%.1f %.1f\n", end - begin, clock.First() - begin);
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
    if (argc == 6 && std::strcmp(argv[1], "keys-beside") == 0) {
        return KeysBeside(screen, argv + 2);
    }
    if (argc == 4 && std::strcmp(argv[1], "files") == 0) {
        return Files(screen, argv[2], std::atoi(argv[3]));
    }
    if (argc == 4 && std::strcmp(argv[1], "creations") == 0) {
        return Creations(screen, argv[2], std::atoi(argv[3]));
    }
    if ((argc == 4 || argc == 5) && std::strcmp(argv[1], "operation") == 0) {
        return Operation(screen, argv[2], argv[3], argc == 5 ? argv[4] : nullptr);
    }
    if (argc >= 6 && std::strcmp(argv[1], "frames") == 0) {
        const Window window = screen.WaitForWindow(argv[2], kWindowMs, [] { return false; });
        const double frames = FramesASecond(window, std::atof(argv[3]), argv + 4, argc - 4);
        if (frames < 0) {
            return Fail("no such window, input or key");
        }
        std::printf("%.1f\n", frames);
        return 0;
    }
    return Fail("start COMMAND... | key NAME [QUIET] | keys NAME COUNT | keys-beside NAME COUNT "
                "WINDOW OTHER | "
                "files|creations FOLDER COUNT | operation NAME TITLE [FOLDER] | "
                "frames WINDOW MILLISECONDS INPUT...");
}
