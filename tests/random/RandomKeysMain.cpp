// Sends the program keys, clicks, drags and wheel turns at random. The script `run` beside this
// tells of the options and of what is judged.

#include "Events.h"
#include "Program.h"
#include "Sandbox.h"
#include "Scene.h"

#include "app/Stacks.h"
#include "kernel/Stack.h"

#include <OS.h>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr int kSkipped = 77;
constexpr int kEventsBetweenRests = 500;
constexpr int kEventsBetweenChanges = 20;
constexpr bigtime_t kHangLimit = 150'000'000;
constexpr long kAllowedGrowthKib = 16 * 1024;

struct Arguments
{
    uint32 seed = 1;
    int events = 50'000;
};

// Read by whoever tells of a failure.
uint32 gSeed = 0;
std::atomic<int> gEvents{0};
std::atomic<bigtime_t> gProgress{0};

void Print(const std::string& text)
{
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
}

void PrintPlace()
{
    char line[160];
    const int length =
        std::snprintf(line, sizeof(line), "FAILED with seed %u after event %d; the last events:\n",
                      static_cast<unsigned>(gSeed), gEvents.load());
    [[maybe_unused]] const ssize_t written =
        write(STDERR_FILENO, line, static_cast<size_t>(length));
    Events::PrintLast();
}

void Crashed(int signal)
{
    static std::atomic_flag isTelling;
    if (!isTelling.test_and_set()) {
        kits::PrintStack();
        PrintPlace();
    }
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void CatchCrashes()
{
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT}) {
        std::signal(signal, Crashed);
    }
}

/// Ends the program with all stacks when nothing moves for long.
void WatchForHang()
{
    gProgress = system_time();
    std::thread([] {
        for (;;) {
            snooze(1'000'000);
            if (system_time() - gProgress > kHangLimit) {
                Print("nothing moves; all stacks:\n");
#ifdef KITS_GUARDS
                kits::PrintAllStacks();
#endif
                std::abort();
            }
        }
    }).detach();
}

std::string TextOf(const char* path)
{
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

/// Folders of its own, no programs for any type, no session's bus, one font.
void SetEnvironment(const std::string& fonts)
{
    const std::string home = kSandboxHome;
    std::ofstream(home + "/fonts.conf") << fonts;
    for (const char* folder : {"/share", "/run", "/etc"}) {
        mkdir((home + folder).c_str(), 0700);
    }
    for (const char* folder : {"mime", "icons"}) {
        [[maybe_unused]] const int status = symlink((std::string("/usr/share/") + folder).c_str(),
                                                    (home + "/share/" + folder).c_str());
    }
    const std::pair<const char*, std::string> variables[] = {
        {"HOME", home},
        {"TMPDIR", home + "/run"},
        {"XDG_CONFIG_HOME", home + "/.config"},
        {"XDG_DATA_HOME", home + "/.local/share"},
        {"XDG_CACHE_HOME", home + "/.cache"},
        {"XDG_STATE_HOME", home + "/.local/state"},
        {"XDG_RUNTIME_DIR", home + "/run"},
        {"XDG_DATA_DIRS", home + "/share"},
        {"XDG_CONFIG_DIRS", home + "/etc"},
        {"DBUS_SESSION_BUS_ADDRESS", "disabled:"},
        {"FONTCONFIG_FILE", home + "/fonts.conf"},
        {"QT_QPA_PLATFORM", "offscreen"},
        {"KITS_WATCHDOG", "abort"},
        {"LC_ALL", "C.UTF-8"},
        {"TZ", "UTC"},
    };
    for (const auto& [name, value] : variables) {
        setenv(name, value.c_str(), 1);
    }
    for (const char* name : {"VISUAL", "EDITOR", "TERMINAL", "DISPLAY", "WAYLAND_DISPLAY"}) {
        unsetenv(name);
    }
}

long ResidentKib()
{
    std::ifstream file("/proc/self/statm");
    long pages = 0;
    file >> pages >> pages;
    return pages * (sysconf(_SC_PAGESIZE) / 1024);
}

/// All events with one seed.
class Run
{
public:
    explicit Run(const Arguments& arguments)
        : fArguments(arguments), fScene(kSandboxHome, arguments.seed + 1), fProgram(fScene),
          fEvents(arguments.seed)
    {
    }

    /// What is wrong; empty when nothing is.
    std::string Go()
    {
        const bigtime_t start = system_time();
        std::string fault = fProgram.Start();
        for (int i = 0; i < fArguments.events && fault.empty(); i++) {
            const bigtime_t before = system_time();
            fEvents.DoOne();
            fEventTime += system_time() - before;
            gEvents++;
            gProgress = system_time();
            if (gEvents % kEventsBetweenChanges == 0) {
                fScene.AskForChanges(1 + gEvents / kEventsBetweenChanges % 3);
            }
            if (gEvents % kEventsBetweenRests == 0 || gEvents == fArguments.events) {
                fault = Rest();
            }
        }
        fTime = system_time() - start;
        return fault.empty() ? JudgeMemory() : fault;
    }

    void Report() const
    {
        const auto seconds = [](bigtime_t time) {
            return static_cast<double>(std::max<bigtime_t>(time, 1)) / 1e6;
        };
        const Program::Tally& compared = fProgram.Compared();
        std::printf(
            "seed %u: %d events in %.0f s, %.0f per second (%.0f with rests); %d starts, "
            "%lld changes beside it, %d renewals; %lld rows of %lld panes compared "
            "(%lld with the folder moved, %lld gone); %.1f MB at 20 %%, %.1f MB at the end\n",
            static_cast<unsigned>(gSeed), gEvents.load(), seconds(fTime),
            gEvents / seconds(fEventTime), gEvents / seconds(fTime), fProgram.CountStarts(),
            static_cast<long long>(fScene.CountChanges()), fScene.CountRenewals(),
            static_cast<long long>(compared.rows), static_cast<long long>(compared.panes),
            static_cast<long long>(compared.moved), static_cast<long long>(compared.gone),
            static_cast<double>(fEarlyKib) / 1024, static_cast<double>(fLateKib) / 1024);
        std::fflush(stdout);
    }

private:
    std::string Rest()
    {
        fScene.AwaitChanges();
        std::string fault = fProgram.ComeToRest();
        gProgress = system_time();
        if (fault.empty()) {
            fault = fProgram.ComparePanes();
        }
        if (!fault.empty()) {
            return fault;
        }
        fLateKib = ResidentKib();
        if (gEvents <= std::max(fArguments.events / 5, kEventsBetweenRests)) {
            fEarlyKib = fLateKib;
        }
        if (std::getenv("RANDOM_KEYS_MEMORY") != nullptr) {
            std::fprintf(stderr, "%d: %ld KiB\n", gEvents.load(), fLateKib);
        }
        fScene.Renew();
        fProgram.LeadBack(static_cast<uint32>(gEvents / kEventsBetweenRests) + fArguments.seed);
        gProgress = system_time();
        return {};
    }

    std::string JudgeMemory() const
    {
        return fLateKib > fEarlyKib + fEarlyKib * 3 / 10 + kAllowedGrowthKib ? "memory grows"
                                                                             : std::string();
    }

    const Arguments fArguments;
    Scene fScene;
    Program fProgram;
    Events fEvents;
    bigtime_t fTime = 0;
    bigtime_t fEventTime = 0;
    long fEarlyKib = 0;
    long fLateKib = 0;
};

int RunInSandbox(const Arguments& arguments, const std::string& place)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const std::string fonts = TextOf(TEST_FONTS);
    const std::string refusal = EnterSandbox(place);
    if (!refusal.empty()) {
        Print("refused: " + refusal + "\n");
        return kSkipped;
    }
    prctl(PR_SET_PDEATHSIG, SIGKILL); // a change of the user forgets it
    gSeed = arguments.seed;
    SetEnvironment(fonts);
    CatchCrashes();
    WatchForHang();
    std::string fault;
    {
        Run run(arguments);
        fault = run.Go();
        run.Report();
        if (!fault.empty()) {
            Print(fault + "\n");
            PrintPlace();
            _exit(1); // the program may be in no state to end
        }
    }
    return 0;
}

/// True when the arguments are understood.
bool Read(int count, char** values, Arguments* arguments)
{
    for (int i = 1; i < count; i += 2) {
        const bool hasValue = i + 1 < count;
        if (hasValue && std::strcmp(values[i], "--seed") == 0) {
            arguments->seed = static_cast<uint32>(std::atoi(values[i + 1]));
        } else if (hasValue && std::strcmp(values[i], "--events") == 0) {
            arguments->events = std::atoi(values[i + 1]);
        } else {
            return false;
        }
    }
    return arguments->events > 0;
}

} // namespace

int main(int count, char** values)
{
    Arguments arguments;
    if (!Read(count, values, &arguments)) {
        std::fprintf(stderr, "usage: see the script `run`\n");
        return 2;
    }
    const char* temporary = std::getenv("TMPDIR");
    std::string place = std::string(temporary != nullptr ? temporary : "/tmp") + "/random-XXXXXX";
    if (mkdtemp(place.data()) == nullptr) {
        std::perror("refused: no folder for the sandbox");
        return kSkipped;
    }
    const pid_t child = fork();
    if (child == 0) {
        std::exit(RunInSandbox(arguments, place));
    }
    int status = 0;
    const bool hasEnded = child > 0 && waitpid(child, &status, 0) == child;
    rmdir(place.c_str());
    if (hasEnded && WIFEXITED(status)) {
        return WEXITSTATUS(status);
    }
    std::fprintf(stderr, "seed %u: ended by signal %d\n", static_cast<unsigned>(arguments.seed),
                 WTERMSIG(status));
    return 1;
}
