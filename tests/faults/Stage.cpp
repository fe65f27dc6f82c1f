#include "Stage.h"

#include "../kits/storage/OwnVolume.h"

#include <cstdio>
#include <cstdlib>
#include <sys/stat.h>

namespace {

bool MountVolumes(const std::string& root)
{
    if (!EnterOwnMounts()) {
        return false;
    }
    for (const char* name : {"/one", "/two"}) {
        if (mount("tmpfs", (root + name).c_str(), "tmpfs", 0, "size=64m,mode=755") != 0) {
            return false;
        }
    }
    return true;
}

bool AreTwoVolumes(const std::string& root)
{
    struct stat one = {};
    struct stat two = {};
    return stat((root + "/one").c_str(), &one) == 0 && stat((root + "/two").c_str(), &two) == 0 &&
           one.st_dev != two.st_dev;
}

/// The folder without its links, which calls never name.
std::string Resolved(const std::string& folder)
{
    char* path = realpath(folder.c_str(), nullptr);
    const std::string resolved = path == nullptr ? folder : path;
    std::free(path);
    return resolved;
}

int WorkThere(const std::string& root, bool hasVolumes,
              const std::function<int(const std::string& root, bool hasVolumes)>& work)
{
    if (!hasVolumes) {
        std::printf("There are no two volumes of our own: jobs between volumes are left out.\n");
    }
    setenv("HOME", (root + "/one/home").c_str(), 1);
    unsetenv("XDG_DATA_HOME");
    unsetenv("XDG_CONFIG_HOME");
    const int result = work(root, hasVolumes);
    std::fflush(nullptr);
    return result;
}

} // namespace

int OnStage(const std::string& given,
            const std::function<int(const std::string& root, bool hasVolumes)>& work)
{
    umask(022);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    if (!given.empty()) {
        return WorkThere(Resolved(given), AreTwoVolumes(given), work);
    }
    const char* base = access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
    std::string root = std::string(base) + "/norvane-faults-XXXXXX";
    if (mkdtemp(root.data()) == nullptr) {
        std::perror("mkdtemp");
        return 2;
    }
    mkdir((root + "/one").c_str(), 0755);
    mkdir((root + "/two").c_str(), 0755);
    // The mounts are of a child's, so that the folder can be removed after it.
    const pid_t child = fork();
    if (child == 0) {
        const bool hasVolumes = MountVolumes(root);
        _exit(WorkThere(root, hasVolumes, work));
    }
    int status = 0;
    waitpid(child, &status, 0);
    for (const char* name : {"/one/source", "/one/target", "/one/foreign", "/one", "/two/source",
                             "/two/target", "/two/foreign", "/two", ""}) {
        rmdir((root + name).c_str());
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 2;
}

bool Share::Read(const std::string& word)
{
    const size_t slash = word.find('/');
    const size_t first = std::strtoul(word.c_str(), nullptr, 10);
    number = first - 1;
    count = slash == std::string::npos ? 0 : std::strtoul(word.c_str() + slash + 1, nullptr, 10);
    return first > 0 && first <= count;
}
