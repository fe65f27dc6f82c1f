#include "app/NorvaneApplication.h"

#include <Path.h>

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
        return EXIT_FAILURE; // the display's own message has said why
    }
    application.Run();
    return EXIT_SUCCESS;
}
