#include <FindDirectory.h>

#include "PathLookup.h"

#include <Directory.h>
#include <Path.h>
#include <fs_info.h>

#include <cstdlib>
#include <fcntl.h>

namespace {

enum class Creation { kNever, kAlways, kWhenAsked };

struct Found
{
    std::string path;
    Creation creation = Creation::kNever;
    mode_t mode = 0777;
};

/// A base folder of the desktop's conventions: only an absolute path in the environment counts.
std::string BaseFolder(const char* variable, const char* underHome)
{
    const char* value = std::getenv(variable);
    return value != nullptr && *value == '/' ? std::string(value)
                                             : kits::HomeFolder() + "/" + underHome;
}

/// `add-ons` beside the program's own file.
std::string ProgramAddOns()
{
    std::string program;
    if (kits::sys::ReadLinkText(kits::sys::kWorkingDirectory, "/proc/self/exe", &program) != B_OK) {
        return {};
    }
    return program.substr(0, program.rfind('/')) + "/add-ons";
}

Found Find(directory_which which)
{
    switch (which) {
    case B_DESKTOP_DIRECTORY:
        return {kits::HomeFolder() + "/Desktop", Creation::kWhenAsked, 0777};
    case B_TRASH_DIRECTORY:
        return {BaseFolder("XDG_DATA_HOME", ".local/share") + "/Trash/files", Creation::kAlways,
                0700};
    case B_BEOS_ADDONS_DIRECTORY:
        return {ProgramAddOns(), Creation::kNever, 0777};
    case B_USER_DIRECTORY:
        return {kits::HomeFolder(), Creation::kNever, 0777};
    case B_USER_ADDONS_DIRECTORY:
        return {BaseFolder("XDG_DATA_HOME", ".local/share") + "/norvane/add-ons",
                Creation::kWhenAsked, 0700};
    case B_USER_SETTINGS_DIRECTORY:
        return {BaseFolder("XDG_CONFIG_HOME", ".config"), Creation::kAlways, 0700};
    }
    return {};
}

} // namespace

status_t find_directory(directory_which which, BPath* path, bool createIt, BVolume* volume)
{
    if (path == nullptr) {
        return B_BAD_VALUE;
    }
    if (volume != nullptr && which == B_TRASH_DIRECTORY) {
        return B_UNSUPPORTED;
    }
    const Found found = Find(which);
    if (found.path.empty()) {
        return B_BAD_VALUE;
    }
    const bool creates =
        found.creation == Creation::kAlways || (found.creation == Creation::kWhenAsked && createIt);
    const status_t status = creates ? create_directory(found.path.c_str(), found.mode) : B_OK;
    return status == B_OK ? path->SetTo(found.path.c_str()) : status;
}

int32 dev_for_path(const char* path)
{
    if (path == nullptr || *path == '\0') {
        return B_BAD_VALUE;
    }
    const kits::UniqueFd node(
        kits::OpenPath(kits::sys::kWorkingDirectory, kits::SystemPath(path), O_PATH));
    if (!node.IsOpen()) {
        return node.Get();
    }
    struct stat st;
    const status_t status = kits::sys::Stat(node.Get(), &st);
    return status == B_OK ? static_cast<int32>(st.st_dev) : status;
}
