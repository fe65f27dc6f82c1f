// Does with one server what a person does with servers. The script `run` beside this starts them
// and tells what is judged.
//
//   servers-run [--verbose] HOST PORT active|passive USER PASSWORD FOLDER
//
// Prints what is wrong and what the server does not do, then the numbers of jobs done and failed.

#include "Jobs.h"
#include "Visit.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>

namespace {

/// Bytes that are no text are shown as numbers.
std::string Shown(const std::string& text)
{
    std::string shown;
    for (const char letter : text) {
        const auto byte = static_cast<unsigned char>(letter);
        if ((byte < ' ' && letter != '\n') || byte > '~') {
            char number[8];
            std::snprintf(number, sizeof(number), "\\x%02x", byte);
            shown += number;
        } else {
            shown += letter;
        }
    }
    return shown;
}

bool DoJob(const Job& job, Visit& visit, bool isVerbose)
{
    visit.Clear();
    job.run(visit);
    for (const std::string& missing : visit.Missing()) {
        std::printf("  %s: the server does not do: %s\n", job.name, Shown(missing).c_str());
    }
    for (const std::string& fault : visit.Faults()) {
        std::printf("  %s: %s\n", job.name, Shown(fault).c_str());
    }
    if (isVerbose) {
        std::printf("%s", Shown(visit.Log()).c_str());
    }
    return visit.Faults().empty();
}

} // namespace

int main(int count, char** values)
{
    const bool isVerbose = count > 1 && std::strcmp(values[1], "--verbose") == 0;
    values += isVerbose ? 1 : 0;
    if (count - (isVerbose ? 1 : 0) != 7) {
        std::fputs("usage: see the script `run`\n", stderr);
        return 2;
    }
    umask(022);
    Site site;
    site.host = values[1];
    site.port = static_cast<unsigned int>(std::atoi(values[2]));
    site.isPassive = std::strcmp(values[3], "passive") == 0;
    site.user = values[4];
    site.password = values[5];
    site.folder = values[6];
    Visit visit(site);
    int done = 0;
    int failed = 0;
    for (const Job& job : AllJobs()) {
        (DoJob(job, visit, isVerbose) ? done : failed)++;
        std::fflush(stdout);
    }
    std::printf("%d %d\n", done, failed);
    return failed == 0 ? 0 : 1;
}
