#pragma once

#include <SupportDefs.h>

class BPath;
class BVolume;

/// The folders that find_directory() knows.
enum directory_which {
    B_DESKTOP_DIRECTORY = 0, // what lies on the desktop
    B_TRASH_DIRECTORY = 1,   // what was thrown away on a volume

    B_BEOS_ADDONS_DIRECTORY = 1002, // beside the program's own file

    B_USER_DIRECTORY = 3000,          // the home folder
    B_USER_ADDONS_DIRECTORY = 3002,   // the user's own add-ons
    B_USER_SETTINGS_DIRECTORY = 3006, // where programs keep settings
};

/// Finds one of the folders of the system or the user. The user's settings folder and home Trash
/// are made when they are missing, private to the user; others only with `createIt`.
///
/// `volume` matters for B_TRASH_DIRECTORY alone: null, or the volume of the home Trash, gives that
/// one; another volume gives its own, `$topdir/.Trash/$uid/files` where the volume has a shared
/// `.Trash` that is a real folder and sticky, else `$topdir/.Trash-$uid/files`. Each step below the
/// shared folder is a real folder that belongs to the user and to nobody else, or it is not used.
/// Errors: B_BAD_VALUE for an unknown folder or volume; B_ENTRY_NOT_FOUND when there is none;
/// B_NOT_ALLOWED when what lies in a Trash's place is not safe to use; those of creation.
status_t find_directory(directory_which which, BPath* path, bool createIt = false,
                        BVolume* volume = nullptr);
