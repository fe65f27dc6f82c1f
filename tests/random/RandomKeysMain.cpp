// Sends the program keys, clicks, drags and wheel turns at random. The script `run` beside this
// tells of the options and of what is judged.

#include "Events.h"
#include "Program.h"
#include "Sandbox.h"
#include "Scene.h"

#include "app/Stacks.h"
#include "kernel/Stack.h"

#include <OS.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

constexpr int kSkipped = 77;
constexpr int kQuit = 75;          // the program was told to, and has
constexpr size_t kLeastRests = 10; // before it means anything that memory grows
constexpr int kEventsBetweenRests = 500;
constexpr int kEventsBetweenChanges = 20;
constexpr bigtime_t kHangLimit = 150'000'000;
constexpr long kAllowedGrowthKib = 16 * 1024;

struct Arguments
{
    uint32 seed = 1;
    int events = 50'000;
    bool isVerbose = false;
    int done = 0; // by processes before this one
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
void SetEnvironment()
{
    const std::string home = kSandboxHome;
    mkdir((home + "/run").c_str(), 0700);
    const std::pair<const char*, std::string> variables[] = {
        {"HOME", home},
        {"TMPDIR", home + "/run"},
        {"XDG_CONFIG_HOME", home + "/.config"},
        {"XDG_DATA_HOME", home + "/.local/share"},
        {"XDG_CACHE_HOME", home + "/.cache"},
        {"XDG_STATE_HOME", home + "/.local/state"},
        {"XDG_RUNTIME_DIR", home + "/run"},
        {"XDG_DATA_DIRS", kSandboxShare},
        {"XDG_CONFIG_DIRS", "/none"},
        {"DBUS_SESSION_BUS_ADDRESS", "disabled:"},
        {"FONTCONFIG_FILE", kSandboxFonts},
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
        : fArguments(arguments),
          fScene(kSandboxHome, arguments.seed + 1 + static_cast<uint32>(arguments.done)),
          fProgram(fScene), fEvents(arguments.seed, arguments.done)
    {
    }

    /// What is wrong; empty when nothing is.
    std::string Go()
    {
        const bigtime_t start = system_time();
        gEvents = fArguments.done;
        std::string fault = fProgram.Start();
        while (gEvents < fArguments.events && fault.empty() && fProgram.IsRunning()) {
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
        if (fault.empty() && HasQuit()) {
            fault = fProgram.AwaitEnd();
        }
        fTime = system_time() - start;
        return fault.empty() ? JudgeMemory() : fault;
    }

    bool HasQuit() const { return !fProgram.IsRunning(); }

    void Report() const
    {
        const auto seconds = [](bigtime_t time) {
            return static_cast<double>(std::max<bigtime_t>(time, 1)) / 1e6;
        };
        const Program::Tally& compared = fProgram.Compared();
        const int events = gEvents - fArguments.done;
        std::printf("seed %u: %d events (to %d%s) in %.0f s, %.0f per second, %.0f with rests; "
                    "%lld changes beside it, %d renewals; %lld rows of %lld panes compared, %lld "
                    "with their folder gone; %.1f MB at 20 %%, %.1f MB at the "
                    "end\n",
                    static_cast<unsigned>(gSeed), events, gEvents.load(), HasQuit() ? ", quit" : "",
                    seconds(fTime), events / seconds(fEventTime), events / seconds(fTime),
                    static_cast<long long>(fScene.CountChanges()), fScene.CountRenewals(),
                    static_cast<long long>(compared.rows), static_cast<long long>(compared.panes),
                    static_cast<long long>(compared.gone), static_cast<double>(EarlyKib()) / 1024,
                    static_cast<double>(LateKib()) / 1024);
        for (const auto& [title, count] : fProgram.Dismissed()) {
            if (fArguments.isVerbose) {
                std::printf("%6d times dismissed: %s\n", count, title.c_str());
            }
        }
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
        if (HasQuit()) {
            return {};
        }
        fMemoryKib.push_back(ResidentKib());
        if (fArguments.isVerbose) {
            std::printf("%d: %ld KiB\n", gEvents.load(), LateKib());
        }
        fScene.Renew();
        fProgram.LeadBack(static_cast<uint32>(gEvents / kEventsBetweenRests) + fArguments.seed);
        gProgress = system_time();
        return {};
    }

    long EarlyKib() const { return fMemoryKib.empty() ? 0 : fMemoryKib[fMemoryKib.size() / 5]; }
    long LateKib() const { return fMemoryKib.empty() ? 0 : fMemoryKib.back(); }

    std::string JudgeMemory() const
    {
        const bool grows = LateKib() > EarlyKib() + EarlyKib() * 3 / 10 + kAllowedGrowthKib;
        return grows && fMemoryKib.size() >= kLeastRests ? "memory grows" : std::string();
    }

    const Arguments fArguments;
    Scene fScene;
    Program fProgram;
    Events fEvents;
    bigtime_t fTime = 0;
    bigtime_t fEventTime = 0;
    std::vector<long> fMemoryKib; // at every rest
};

int RunInSandbox(const Arguments& arguments, const std::string& place, int* done)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const std::string refusal = EnterSandbox(place, TextOf(TEST_FONTS));
    if (!refusal.empty()) {
        Print("refused: " + refusal + "\n");
        return kSkipped;
    }
    prctl(PR_SET_PDEATHSIG, SIGKILL); // a change of the user forgets it
    gSeed = arguments.seed;
    SetEnvironment();
    CatchCrashes();
    WatchForHang();
    Run run(arguments);
    const std::string fault = run.Go();
    run.Report();
    *done = gEvents;
    if (!fault.empty()) {
        Print(fault + "\n");
        PrintPlace();
        _exit(1); // the program may be in no state to end
    }
    return run.HasQuit() ? kQuit : 0;
}

/// True when the arguments are understood.
bool Read(int count, char** values, Arguments* arguments)
{
    for (int i = 1; i < count; i++) {
        const bool hasValue = i + 1 < count;
        if (std::strcmp(values[i], "--verbose") == 0) {
            arguments->isVerbose = true;
        } else if (hasValue && std::strcmp(values[i], "--seed") == 0) {
            arguments->seed = static_cast<uint32>(std::atoi(values[++i]));
        } else if (hasValue && std::strcmp(values[i], "--events") == 0) {
            arguments->events = std::atoi(values[++i]);
        } else {
            return false;
        }
    }
    return arguments->events > 0;
}

/// Runs the program once, in a process and a sandbox of its own; the process's exit code.
int RunOnce(Arguments* arguments, int* done)
{
    const char* temporary = std::getenv("TMPDIR");
    std::string place = std::string(temporary != nullptr ? temporary : "/tmp") + "/random-XXXXXX";
    if (mkdtemp(place.data()) == nullptr) {
        std::perror("refused: no folder for the sandbox");
        return kSkipped;
    }
    const pid_t child = fork();
    if (child == 0) {
        std::exit(RunInSandbox(*arguments, place, done));
    }
    int status = 0;
    const bool hasEnded = child > 0 && waitpid(child, &status, 0) == child;
    rmdir(place.c_str());
    arguments->done = *done;
    if (hasEnded && WIFEXITED(status)) {
        return WEXITSTATUS(status);
    }
    std::fprintf(stderr, "seed %u: ended by signal %d\n", static_cast<unsigned>(arguments->seed),
                 WTERMSIG(status));
    return 1;
}

} // namespace

int main(int count, char** values)
{
    Arguments arguments;
    if (!Read(count, values, &arguments)) {
        std::fprintf(stderr, "usage: see the script `run`\n");
        return 2;
    }
    void* shared =
        mmap(nullptr, sizeof(int), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (shared == MAP_FAILED) {
        std::perror("no memory");
        return 1;
    }
    // What was told to quit is started again, as a process of its own.
    int status = kQuit;
    while (status == kQuit && arguments.done < arguments.events) {
        status = RunOnce(&arguments, static_cast<int*>(shared));
    }
    return status == kQuit ? 0 : status;
}
