// launcher PATH [ARGUMENT...]: has the roster launch what is at PATH, and prints the status and the
// process. A program of its own for each: the desktop's library looks at the environment once.

#include <Entry.h>
#include <Roster.h>

#include <cstdio>
#include <cstdlib>

int main(int argumentCount, char** arguments)
{
    // Should it ever be what is launched, that is the end of it.
    constexpr const char* kMark = "STARTED_BY_LAUNCHER";
    if (std::getenv(kMark) != nullptr) {
        return 1;
    }
    setenv(kMark, "1", 1);
    entry_ref ref;
    if (argumentCount < 2 || get_ref_for_path(arguments[1], &ref) != B_OK) {
        return 1;
    }
    team_id team = -1;
    const status_t status = be_roster->Launch(&ref, argumentCount - 2, arguments + 2, &team);
    std::printf("%d %d\n", static_cast<int>(status), static_cast<int>(team));
    return 0;
}
