#pragma once

#include "TrashFolder.h"

#include <ctime>
#include <string>

namespace kits {

/// The text of a record of origin: `path` is that of the entry, whole. Errors: B_CROSS_DEVICE_LINK
/// when it does not lie below the Trash's volume.
[[nodiscard]] status_t TrashRecordText(const Trash& trash, const std::string& path, time_t deleted,
                                       std::string* text);

/// Reads where the entry `name` of the Trash was before: its whole path. Errors:
/// B_ENTRY_NOT_FOUND without a record; B_MISMATCHED_VALUES for one that names no place.
[[nodiscard]] status_t ReadTrashOrigin(const Trash& trash, const std::string& name,
                                       std::string* path);

/// Takes a free name in the Trash by writing its record: `name`, or a shorter one when that leaves
/// no room for the record's ending. Errors: B_FILE_EXISTS when `name` is taken by a record or, in
/// `files`, by an entry; those of writing. Nothing is left behind then.
[[nodiscard]] status_t ClaimTrashName(const Trash& trash, int files, const std::string& name,
                                      const std::string& text, std::string* claimed);

/// Removes the record of `name`; that there is none is no failure.
status_t RemoveTrashRecord(const Trash& trash, const std::string& name);

/// A move of an entry, with the Trashes that it leaves and enters (either may be null).
struct TrashMove
{
    std::shared_ptr<const Trash> fromTrash;
    std::shared_ptr<const Trash> toTrash;
    const FolderHold& fromFolder;
    int from; // the folders, open
    const std::string& name;
    int to;
    const std::string& newName;
};

/// Renames without replacing, and takes the record along. `movedName` is the name that the entry
/// got.
[[nodiscard]] status_t MoveWithRecord(const TrashMove& move, std::string* movedName);
/// The same over whatever has the new name.
[[nodiscard]] status_t MoveWithRecordOver(const TrashMove& move);

} // namespace kits
