// Stands for the programs that tests have started: writes how it was started to a file of its own
// in $RECORD_FOLDER, each "NAME=VALUE" ended by a zero byte. The file has its name once it is
// whole.

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace {

using std::filesystem::path;

void Note(std::ostream& out, const std::string& name, const std::string& value)
{
    out << name << '=' << value << '\0';
}

/// A line of what the system says of this process.
std::string Status(const std::string& name)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name + ":\t")) {
            return line.substr(name.size() + 2);
        }
    }
    return "(missing)";
}

std::string OpenDescriptors()
{
    std::vector<int> found;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        found.push_back(std::atoi(entry.path().filename().c_str()));
    }
    std::string open;
    for (const int descriptor : found) {
        // The listing's own is closed by now.
        if (std::filesystem::exists("/proc/self/fd/" + std::to_string(descriptor))) {
            open += std::to_string(descriptor) + " ";
        }
    }
    return open;
}

void NoteAll(std::ostream& out, int argumentCount, char** arguments)
{
    for (int index = 0; index < argumentCount; ++index) {
        Note(out, "argument", arguments[index]);
    }
    rlimit limit = {};
    getrlimit(RLIMIT_NOFILE, &limit);
    Note(out, "folder", std::filesystem::current_path());
    Note(out, "blocked", Status("SigBlk"));
    Note(out, "input", std::filesystem::read_symlink("/proc/self/fd/0"));
    Note(out, "limit", std::to_string(limit.rlim_cur));
    Note(out, "process", std::to_string(getpid()));
    Note(out, "session", std::to_string(getsid(0)));
    Note(out, "parent", std::to_string(getppid()));
    for (char** variable = environ; *variable != nullptr; ++variable) {
        Note(out, "variable", *variable);
    }
}

} // namespace

int main(int argumentCount, char** arguments)
{
    const char* folder = std::getenv("RECORD_FOLDER");
    if (folder == nullptr) {
        return 1;
    }
    const std::string descriptors = OpenDescriptors();
    const std::string name = std::string(folder) + "/" + std::to_string(getpid());
    {
        std::ofstream out(name + ".part", std::ios::binary);
        Note(out, "descriptors", descriptors);
        NoteAll(out, argumentCount, arguments);
    }
    std::filesystem::rename(name + ".part", name + ".whole");
    return 0;
}
