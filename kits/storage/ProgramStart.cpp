#include "ProgramStart.h"

#include "FolderTable.h"
#include "UniqueFd.h"
#include "support/ErrnoTable.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <linux/close_range.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace kits {

namespace {

/// What a child is started with; all of it is made before the fork.
struct PreparedOrder
{
    const char* path;
    char* const* arguments;
    char* const* environment;
    const char* folder; // null: stay
};

/// What a child tells through its pipe, which closes when the program runs.
struct Report
{
    pid_t process = 0; // of the program
    int error = 0;     // why there is none
};

/// One array of pointers, as exec takes it.
std::vector<char*> Pointers(const std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (const std::string& text : texts) {
        pointers.push_back(const_cast<char*>(text.c_str())); // exec takes them so, and keeps them
    }
    pointers.push_back(nullptr);
    return pointers;
}

// In the children

void Tell(int pipe, const Report& report)
{
    // Nobody is there to be told of a failure, and the reader then knows no error.
    [[maybe_unused]] const ssize_t written = ::write(pipe, &report, sizeof(report));
}

void ResetSignals()
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE, SIGCHLD}) {
        ::signal(signal, SIG_DFL);
    }
}

[[noreturn]] void BecomeProgram(const PreparedOrder& order, int pipe)
{
    const int nothing = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    ::dup2(nothing, STDIN_FILENO);
    ::close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
    ResetSignals();
    PrepareChild(order.folder);
    ::execve(order.path, order.arguments, order.environment);
    Tell(pipe, {0, errno});
    ::_exit(127);
}

/// Has a child of its own run the program: whose parent is gone belongs to the system, which waits
/// for its end.
[[noreturn]] void StartAndLeave(const PreparedOrder& order, int pipe)
{
    const pid_t program = ::fork();
    if (program == 0) {
        BecomeProgram(order, pipe);
    }
    Tell(pipe, {program, program < 0 ? errno : 0});
    ::_exit(0);
}

// In this program

status_t StatusOfExec(int error)
{
    switch (error) {
    case ENOENT:
    case ENOTDIR:
        return B_LAUNCH_FAILED_APP_NOT_FOUND; // or what loads it is missing
    case ENOEXEC:
    case EINVAL:
    case ELIBBAD:
        return B_LAUNCH_FAILED_EXECUTABLE;
    case EAGAIN:
        return B_NO_MORE_TEAMS;
    case ETXTBSY:
        return B_BUSY;
    default:
        return StatusFromErrno(error);
    }
}

/// Reads what the children tell, in whatever order, until the program runs or nobody is left.
status_t ReadReports(int pipe, team_id* team)
{
    Report report;
    pid_t process = 0;
    int error = 0;
    ssize_t length = 0;
    while ((length = ::read(pipe, &report, sizeof(report))) != 0) {
        if (length != sizeof(report) && errno != EINTR) {
            return B_LAUNCH_FAILED;
        }
        if (length == sizeof(report)) {
            process = std::max(process, report.process);
            error = std::max(error, report.error);
        }
    }
    if (error != 0) {
        return StatusOfExec(error);
    }
    if (process <= 0) {
        return B_LAUNCH_FAILED;
    }
    if (team != nullptr) {
        *team = process;
    }
    return B_OK;
}

} // namespace

const char* const kVariablesOfOwnStart[] = {"DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN",
                                            "GIO_LAUNCHED_DESKTOP_FILE",
                                            "GIO_LAUNCHED_DESKTOP_FILE_PID", nullptr};

void PrepareChild(const char* folder)
{
    RestoreDescriptorLimit();
    ::setsid();
    if (folder != nullptr && ::chdir(folder) != 0) {
        [[maybe_unused]] const int status = ::chdir("/"); // holds no volume
    }
    // Last: what was kept back from this program's threads may end the child from here on.
    sigset_t none;
    sigemptyset(&none);
    ::pthread_sigmask(SIG_SETMASK, &none, nullptr);
}

bool SpeaksOfOwnStart(const char* variable)
{
    for (const char* const* name = kVariablesOfOwnStart; *name != nullptr; ++name) {
        const size_t length = std::strlen(*name);
        if (std::strncmp(variable, *name, length) == 0 && variable[length] == '=') {
            return true;
        }
    }
    return false;
}

std::vector<std::string> EnvironmentOfChildren()
{
    std::vector<std::string> variables;
    for (char* const* entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        if (!SpeaksOfOwnStart(*entry)) {
            variables.emplace_back(*entry);
        }
    }
    return variables;
}

status_t StartProgram(const ProgramOrder& order, team_id* team)
{
    std::vector<std::string> words{order.path};
    words.insert(words.end(), order.arguments.begin(), order.arguments.end());
    const std::vector<char*> wordPointers = Pointers(words);
    const std::vector<char*> variablePointers = Pointers(order.environment);
    const PreparedOrder prepared{order.path.c_str(), wordPointers.data(), variablePointers.data(),
                                 order.folder.empty() ? nullptr : order.folder.c_str()};
    int pipe[2];
    if (::pipe2(pipe, O_CLOEXEC) != 0) {
        return StatusFromErrno(errno);
    }
    const UniqueFd reading(pipe[0]);
    UniqueFd writing(pipe[1]);
    const pid_t child = ::fork();
    if (child == 0) {
        StartAndLeave(prepared, pipe[1]);
    }
    if (child < 0) {
        return StatusOfExec(errno);
    }
    writing = UniqueFd();
    while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
    return ReadReports(reading.Get(), team);
}

} // namespace kits
