// launcher PATH [ARGUMENT...]: has the roster launch what is at PATH, and prints the status and the
// process. A program of its own for each: the desktop's library looks at the environment once. What
// the desktop is told of goes into the file named by NOTICES.

#include "storage/StartNotices.h"

#include <Entry.h>
#include <Roster.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>

namespace {

class WrittenNotices : public kits::StartNotices
{
public:
    explicit WrittenNotices(const char* file) : fFile(file) {}

    std::string Begin(const kits::StartingProgram& program) override
    {
        fFile << "begin [" << program.name << "][" << program.icon << "][" << program.windowClass
              << "]" << std::flush;
        return "notice-1";
    }
    void Fail(const std::string& id) override { fFile << "fail [" << id << "]" << std::flush; }

private:
    std::ofstream fFile;
};

} // namespace

int main(int argumentCount, char** arguments)
{
    // Should it ever be what is launched, that is the end of it.
    constexpr const char* kMark = "STARTED_BY_LAUNCHER";
    if (std::getenv(kMark) != nullptr) {
        return 1;
    }
    setenv(kMark, "1", 1);
    if (const char* notices = std::getenv("NOTICES")) {
        kits::StartNotices::Set(std::make_shared<WrittenNotices>(notices));
    }
    entry_ref ref;
    if (argumentCount < 2 || get_ref_for_path(arguments[1], &ref) != B_OK) {
        return 1;
    }
    team_id team = -1;
    const status_t status = be_roster->Launch(&ref, argumentCount - 2, arguments + 2, &team);
    std::printf("%d %d\n", static_cast<int>(status), static_cast<int>(team));
    return 0;
}
