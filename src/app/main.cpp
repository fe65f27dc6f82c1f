#include "app/NorvaneApplication.h"
#include "outside/AddOnRun.h"

#include <Path.h>

#include <cstdio>
#include <cstdlib>

namespace {

/// Arguments are folders, from where the program was started.
std::vector<std::string> FoldersOf(int argc, char** argv)
{
    std::vector<std::string> folders;
    for (int argument = 1; argument < argc; argument++) {
        const BPath path(argv[argument]);
        if (path.InitCheck() == B_OK) {
            folders.push_back(path.Path());
        }
    }
    return folders;
}

} // namespace

int main(int argc, char** argv)
{
    norvane::NorvaneApplication application(FoldersOf(argc, argv));
    if (application.InitCheck() != B_OK) {
        const char* reason = application.InitCheck() == B_NO_MORE_THREADS
                                 ? "the system has no threads left"
                                 : "there is no display to open windows on";
        std::fprintf(stderr, "%s: %s\n", BPath(argv[0]).Leaf(), reason);
        return EXIT_FAILURE;
    }
    application.Run();
    if (!norvane::AddOnRun::AtWork().empty()) {
        // One that is not waited for goes on using what leaving in order would destroy.
        std::_Exit(EXIT_SUCCESS);
    }
    return EXIT_SUCCESS;
}
