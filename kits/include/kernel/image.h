#pragma once

#include <OS.h>

/// Programs that are started, and libraries that are loaded into this one.

/// Names a loaded library; negative values are errors.
using image_id = int32;

/// What a name in a library stands for, as get_image_symbol() is asked.
enum {
    B_SYMBOL_TYPE_DATA = 0x1,
    B_SYMBOL_TYPE_TEXT = 0x2, // code
    B_SYMBOL_TYPE_ANY = 0x5,
};

/// Makes ready a program to be started by resume_thread() on what this returns; where it is never
/// resumed, nothing is started.
///
/// `argv[0]` is the program's path, the others what it is given, its own name not among them;
/// `environment` ("NAME=VALUE", null ends it; of one given twice the last counts) is all that it
/// gets of variables, but for those that speak of this program's own start. A script is run by what
/// its first line names; nothing goes through a shell. All is copied. The program begins in this
/// one's working directory. It has a session of its own, the signals and limits that this program
/// was started with, and no descriptor of this one's but those for output; it outlives this
/// program, and nobody has to wait for its end.
///
/// The platform's shell, "/boot/beos/bin/sh", as the second word and "-login" as the third for a
/// program of the signature "application/x-vnd.be-shel" stand for the person's own shell as a login
/// shell in that terminal, which begins in the folder that "FOLDER_PATH" of the environment names.
///
/// What is returned is the thread that starts the program: wait_for_thread() gives B_OK once the
/// program runs, else why it does not: B_LAUNCH_FAILED_APP_NOT_FOUND, B_LAUNCH_FAILED_EXECUTABLE,
/// B_NO_MORE_TEAMS, B_NO_MORE_FDS. Errors, known beforehand: B_BAD_VALUE without a program,
/// B_ENTRY_NOT_FOUND, B_PERMISSION_DENIED, B_NOT_AN_EXECUTABLE for a folder and all that is no
/// file, B_NO_MEMORY. Thread: any; it looks at the disk.
thread_id load_image(int32 argc, const char** argv, const char** environment);

/// Loads a library into this program; one that is loaded already has the same number again.
///
/// Its own start runs on the calling thread. A file that is no library for this machine, or not
/// whole, is refused before any of it runs. Errors: B_BAD_VALUE for null, B_ENTRY_NOT_FOUND,
/// B_PERMISSION_DENIED, B_NOT_AN_EXECUTABLE, B_MISSING_LIBRARY when something that it needs is not
/// there or does not fit; what exactly is said on stderr. Thread: any; it reads the disk.
image_id load_add_on(const char* path);

/// Takes a loaded library out again, once for each time that it was loaded. Its code must not be
/// running. Errors: B_BAD_IMAGE_ID.
status_t unload_add_on(image_id image);

/// Finds what a loaded library itself exports under a name; what it is linked to does not count.
/// `type` is one of the above. Errors: B_BAD_IMAGE_ID, B_BAD_VALUE for null, B_MISSING_SYMBOL when
/// there is none of that name and kind; `location` is unchanged then. Thread: any.
status_t get_image_symbol(image_id image, const char* name, int32 type, void** location);
