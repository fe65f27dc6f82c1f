#pragma once

#include "FolderTable.h"

#include <memory>
#include <string>

namespace kits {

enum class TrashCreation { kNever, kWhenMissing };

/// A Trash: the folder of what was deleted, and that of the records of where it came from.
struct Trash
{
    std::string folder;    // its path; `files` and `info` are in it
    std::string topFolder; // that of its volume; "" for the home Trash
    FolderHold info;       // null when it was not there yet
};

/// A base folder of the desktop's conventions: what `variable` of the environment says when that is
/// absolute, else `underHome` in the home folder.
std::string BaseFolder(const char* variable, const char* underHome);

/// The home Trash, whether it is there or not.
Trash HomeTrash();

/// Finds the Trash of the volume that is mounted at `topFolder`, and makes it when asked to. Only
/// folders that belong to the user and are nobody else's to write in are used, and no links.
/// Errors: B_ENTRY_NOT_FOUND when there is none; B_NOT_ALLOWED for an unsafe one; those of
/// creation.
[[nodiscard]] status_t FindVolumeTrash(const std::string& topFolder, TrashCreation creation,
                                       Trash* trash);

/// Finds the Trash whose `files` folder this is; null when it is a folder like any other. Cheap:
/// what was found is believed for a second. Errors: those that leave it open whether it is a Trash.
[[nodiscard]] status_t FindTrashOf(const FolderHold& folder, std::shared_ptr<const Trash>* trash);
/// The same; null also when it cannot be told.
std::shared_ptr<const Trash> TrashOf(const FolderHold& folder);

/// To be called when a Trash was made: its folder may have been known as another before.
void TrashWasMade();

/// Opens the folder of the records, after it has been made when it was missing.
[[nodiscard]] status_t OpenTrashInfo(const Trash& trash, TrashCreation creation, OpenFolder* info);

} // namespace kits
