#include <FindDirectory.h>

#include "PathLookup.h"
#include "TrashFolder.h"

#include <Directory.h>
#include <Path.h>
#include <Volume.h>
#include <fs_info.h>

namespace {

enum class Creation { kNever, kAlways, kWhenAsked };

struct Found
{
    std::string path;
    Creation creation = Creation::kNever;
    mode_t mode = 0777;
};

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
        return {kits::HomeTrash().folder + "/files", Creation::kAlways, 0700};
    case B_BEOS_ADDONS_DIRECTORY:
        return {ProgramAddOns(), Creation::kNever, 0777};
    case B_USER_DIRECTORY:
        return {kits::HomeFolder(), Creation::kNever, 0777};
    case B_USER_ADDONS_DIRECTORY:
        return {kits::BaseFolder("XDG_DATA_HOME", ".local/share") + "/norvane/add-ons",
                Creation::kWhenAsked, 0700};
    case B_USER_SETTINGS_DIRECTORY:
        return {kits::BaseFolder("XDG_CONFIG_HOME", ".config"), Creation::kAlways, 0700};
    }
    return {};
}

/// The Trash of `volume`; the home Trash when that lies there.
status_t FindTrashOn(const BVolume& volume, BPath* path, bool createIt)
{
    const std::string home = kits::HomeTrash().folder;
    if (dev_for_path(home.c_str()) == static_cast<int32>(volume.Device())) {
        return find_directory(B_TRASH_DIRECTORY, path);
    }
    BDirectory root;
    status_t status = volume.GetRootDirectory(&root);
    kits::Trash trash;
    if (status == B_OK) {
        status = kits::FindVolumeTrash(
            BPath(&root).Path(),
            createIt ? kits::TrashCreation::kWhenMissing : kits::TrashCreation::kNever, &trash);
    }
    return status == B_OK ? path->SetTo((trash.folder + "/files").c_str()) : status;
}

} // namespace

status_t find_directory(directory_which which, BPath* path, bool createIt, BVolume* volume)
{
    if (path == nullptr) {
        return B_BAD_VALUE;
    }
    const Found found = Find(which);
    if (found.path.empty()) {
        return B_BAD_VALUE;
    }
    if (volume != nullptr && volume->InitCheck() != B_OK) {
        return B_BAD_VALUE;
    }
    // Before the volume is compared the home Trash has to be somewhere.
    const bool creates =
        found.creation == Creation::kAlways || (found.creation == Creation::kWhenAsked && createIt);
    // Nearly always it is there.
    const bool isMissing = creates && !BEntry(found.path.c_str(), true).IsDirectory();
    const status_t status = isMissing ? create_directory(found.path.c_str(), found.mode) : B_OK;
    if (isMissing && which == B_TRASH_DIRECTORY) {
        kits::TrashWasMade();
    }
    if (status == B_OK && volume != nullptr && which == B_TRASH_DIRECTORY) {
        return FindTrashOn(*volume, path, createIt);
    }
    return status == B_OK ? path->SetTo(found.path.c_str()) : status;
}
