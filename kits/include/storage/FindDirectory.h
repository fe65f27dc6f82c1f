#pragma once

#include <SupportDefs.h>

class BPath;

/// The folders that find_directory() knows.
enum directory_which {
    B_DESKTOP_DIRECTORY = 0,
    B_TRASH_DIRECTORY = 1,

    B_BEOS_ADDONS_DIRECTORY = 1002,

    B_USER_DIRECTORY = 3000,
    B_USER_ADDONS_DIRECTORY = 3002,
    B_USER_SETTINGS_DIRECTORY = 3006,
};

/// Finds one of the folders of the system or the user. The user's settings folder and Trash are
/// made when they are missing, private to the user; others only with `createIt`. Errors:
/// B_BAD_VALUE for an unknown folder; B_ENTRY_NOT_FOUND when there is none; those of creation.
status_t find_directory(directory_which which, BPath* path, bool createIt = false);
