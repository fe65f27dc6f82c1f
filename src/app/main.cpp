#include "app/NorvaneApplication.h"
#include "outside/AddOnRun.h"

#include <Path.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr int kWrongCall = 2; // the exit status

/// What the command line asks for.
struct Call
{
    std::vector<std::string> folders; // absolute
    bool asksForHelp = false;
    bool asksForVersion = false;
    std::string unknown; // an option that there is not
};

Call ReadCall(int argc, char** argv)
{
    Call call;
    bool hasOptions = true;
    for (int argument = 1; argument < argc; argument++) {
        const std::string_view word = argv[argument];
        if (hasOptions && word == "--") {
            hasOptions = false;
        } else if (hasOptions && word == "--help") {
            call.asksForHelp = true;
        } else if (hasOptions && word == "--version") {
            call.asksForVersion = true;
        } else if (hasOptions && word.starts_with("-")) {
            call.unknown = call.unknown.empty() ? std::string(word) : call.unknown;
        } else {
            // From where the program was started.
            const BPath path(argv[argument]);
            if (path.InitCheck() == B_OK) {
                call.folders.emplace_back(path.Path());
            }
        }
    }
    return call;
}

void PrintHelp(const char* program)
{
    std::printf("Usage: %s [FOLDER ...]\n"
                "Opens one window; each FOLDER is shown in a pane, from the left.\n\n"
                "      --help     print this, and end\n"
                "      --version  print the version, and end\n"
                "      --         all that follows are folders\n",
                program);
}

int RunProgram(const char* program, const std::vector<std::string>& folders)
{
    norvane::NorvaneApplication application(folders);
    if (application.InitCheck() != B_OK) {
        const char* reason = application.InitCheck() == B_NO_MORE_THREADS
                                 ? "the system has no threads left"
                                 : "there is no display to open windows on";
        std::fprintf(stderr, "%s: %s\n", program, reason);
        return EXIT_FAILURE;
    }
    application.Run();
    if (!norvane::AddOnRun::AtWork().empty()) {
        // One that is not waited for goes on using what leaving in order would destroy.
        std::_Exit(EXIT_SUCCESS);
    }
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char** argv)
{
    const Call call = ReadCall(argc, argv);
    const std::string program = argc > 0 ? BPath(argv[0]).Leaf() : "norvane";
    if (call.asksForHelp) {
        PrintHelp(program.c_str());
        return EXIT_SUCCESS;
    }
    if (call.asksForVersion) {
        std::puts("Norvane " NORVANE_VERSION);
        return EXIT_SUCCESS;
    }
    if (!call.unknown.empty()) {
        std::fprintf(stderr, "%s: there is no option %s; try --help\n", program.c_str(),
                     call.unknown.c_str());
        return kWrongCall;
    }
    const int status = RunProgram(program.c_str(), call.folders);
    // Threads that wait for a disk, or delete rows, are not waited for: they go on using what
    // leaving in order would destroy.
    std::fflush(nullptr);
    std::_Exit(status);
}
