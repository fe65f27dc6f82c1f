#pragma once

#include <climits>

/// The codes that status_t takes. All are negative but B_OK; the values are the platform's.
///
/// Each family starts at a base of its own, so that a code tells which kit it comes from.

constexpr int B_GENERAL_ERROR_BASE = INT_MIN;                           // of all kits
constexpr int B_OS_ERROR_BASE = B_GENERAL_ERROR_BASE + 0x1000;          // kernel
constexpr int B_APP_ERROR_BASE = B_GENERAL_ERROR_BASE + 0x2000;         // application
constexpr int B_INTERFACE_ERROR_BASE = B_GENERAL_ERROR_BASE + 0x3000;   // interface
constexpr int B_MEDIA_ERROR_BASE = B_GENERAL_ERROR_BASE + 0x4000;       // media
constexpr int B_TRANSLATION_ERROR_BASE = B_GENERAL_ERROR_BASE + 0x4800; // translation
constexpr int B_MIDI_ERROR_BASE = B_GENERAL_ERROR_BASE + 0x5000;        // MIDI
constexpr int B_STORAGE_ERROR_BASE = B_GENERAL_ERROR_BASE + 0x6000;     // storage
constexpr int B_POSIX_ERROR_BASE = B_GENERAL_ERROR_BASE + 0x7000; // errno without a code of its own
constexpr int B_MAIL_ERROR_BASE = B_GENERAL_ERROR_BASE + 0x8000;  // mail
constexpr int B_PRINT_ERROR_BASE = B_GENERAL_ERROR_BASE + 0x9000; // printing
constexpr int B_DEVICE_ERROR_BASE = B_GENERAL_ERROR_BASE + 0xa000; // devices
constexpr int B_ERRORS_END = B_GENERAL_ERROR_BASE + 0xffff;        // the last code there can be

/// Success, and the failure that has no code of its own.
constexpr int B_OK = 0;
constexpr int B_NO_ERROR = 0;
constexpr int B_ERROR = -1;

/// Of all kits.
constexpr int B_NO_MEMORY = B_GENERAL_ERROR_BASE;    // there is none left
constexpr int B_IO_ERROR = B_GENERAL_ERROR_BASE + 1; // a device failed in reading or writing
constexpr int B_PERMISSION_DENIED = B_GENERAL_ERROR_BASE + 2; // the person may not
constexpr int B_BAD_INDEX = B_GENERAL_ERROR_BASE + 3;         // nothing has that index
constexpr int B_BAD_TYPE = B_GENERAL_ERROR_BASE + 4;          // the data is of another type
constexpr int B_BAD_VALUE = B_GENERAL_ERROR_BASE + 5; // an argument that cannot be, such as null
constexpr int B_MISMATCHED_VALUES = B_GENERAL_ERROR_BASE + 6; // arguments that do not go together
constexpr int B_NAME_NOT_FOUND = B_GENERAL_ERROR_BASE + 7;    // nothing has that name
constexpr int B_NAME_IN_USE = B_GENERAL_ERROR_BASE + 8;       // something else has that name
constexpr int B_TIMED_OUT = B_GENERAL_ERROR_BASE + 9;         // it did not happen in the time given
constexpr int B_INTERRUPTED = B_GENERAL_ERROR_BASE + 10;      // a signal ended the wait
constexpr int B_WOULD_BLOCK = B_GENERAL_ERROR_BASE + 11;      // it cannot be done without waiting
constexpr int B_CANCELED = B_GENERAL_ERROR_BASE + 12;         // a person or the caller stopped it
constexpr int B_NO_INIT = B_GENERAL_ERROR_BASE + 13;          // the object was never set up
constexpr int B_BUSY = B_GENERAL_ERROR_BASE + 14;             // something else uses it
constexpr int B_NOT_ALLOWED = B_GENERAL_ERROR_BASE + 15; // not with this object or in this state

/// Of the kernel kit.
constexpr int B_BAD_SEM_ID = B_OS_ERROR_BASE;       // no semaphore has that number
constexpr int B_NO_MORE_SEMS = B_OS_ERROR_BASE + 1; // there are no semaphores left

constexpr int B_BAD_THREAD_ID = B_OS_ERROR_BASE + 0x100;    // no thread has that number
constexpr int B_NO_MORE_THREADS = B_OS_ERROR_BASE + 0x101;  // there are no threads left
constexpr int B_BAD_THREAD_STATE = B_OS_ERROR_BASE + 0x102; // the thread is running already
constexpr int B_BAD_TEAM_ID = B_OS_ERROR_BASE + 0x103;      // no process has that number
constexpr int B_NO_MORE_TEAMS = B_OS_ERROR_BASE + 0x104;    // there are no processes left

constexpr int B_BAD_PORT_ID = B_OS_ERROR_BASE + 0x200;   // the looper is gone
constexpr int B_NO_MORE_PORTS = B_OS_ERROR_BASE + 0x201; // there are no ports left

constexpr int B_BAD_IMAGE_ID = B_OS_ERROR_BASE + 0x300; // no loaded file has that number
constexpr int B_BAD_ADDRESS = B_OS_ERROR_BASE + 0x301;  // memory that the process does not have
constexpr int B_NOT_AN_EXECUTABLE = B_OS_ERROR_BASE + 0x302; // a file that cannot be run or loaded
constexpr int B_MISSING_LIBRARY = B_OS_ERROR_BASE + 0x303;   // a library that it needs is not there
constexpr int B_MISSING_SYMBOL = B_OS_ERROR_BASE + 0x304; // it has no function or data of that name

constexpr int B_DEBUGGER_ALREADY_INSTALLED = B_OS_ERROR_BASE + 0x400; // it is being debugged

/// Of the application kit.
constexpr int B_BAD_REPLY = B_APP_ERROR_BASE; // the message was never delivered, so nobody waits
constexpr int B_DUPLICATE_REPLY = B_APP_ERROR_BASE + 1;      // the one who waited has got an answer
constexpr int B_MESSAGE_TO_SELF = B_APP_ERROR_BASE + 2;      // a looper would wait for itself
constexpr int B_BAD_HANDLER = B_APP_ERROR_BASE + 3;          // the handler is gone
constexpr int B_ALREADY_RUNNING = B_APP_ERROR_BASE + 4;      // the program runs and may only once
constexpr int B_LAUNCH_FAILED = B_APP_ERROR_BASE + 5;        // the program could not be started
constexpr int B_AMBIGUOUS_APP_LAUNCH = B_APP_ERROR_BASE + 6; // several programs would do
constexpr int B_UNKNOWN_MIME_TYPE = B_APP_ERROR_BASE + 7;    // the database does not know the type
constexpr int B_BAD_SCRIPT_SYNTAX = B_APP_ERROR_BASE + 8;    // a malformed scripting message
constexpr int B_LAUNCH_FAILED_NO_RESOLVE_LINK = B_APP_ERROR_BASE + 9; // a link that leads nowhere
constexpr int B_LAUNCH_FAILED_EXECUTABLE = B_APP_ERROR_BASE + 10;     // a file that is no program
constexpr int B_LAUNCH_FAILED_APP_NOT_FOUND = B_APP_ERROR_BASE + 11;  // no such program
constexpr int B_LAUNCH_FAILED_APP_IN_TRASH = B_APP_ERROR_BASE + 12; // the program lies in the Trash
constexpr int B_LAUNCH_FAILED_NO_PREFERRED_APP = B_APP_ERROR_BASE + 13; // no program for the type
constexpr int B_LAUNCH_FAILED_FILES_APP_NOT_FOUND = B_APP_ERROR_BASE + 14; // nor the file's own
constexpr int B_BAD_MIME_SNIFFER_RULE = B_APP_ERROR_BASE + 15; // a malformed rule for telling types

/// Of the storage kit.
constexpr int B_FILE_ERROR = B_STORAGE_ERROR_BASE;          // it is not open, or cannot do that
constexpr int B_FILE_NOT_FOUND = B_STORAGE_ERROR_BASE + 1;  // an older B_ENTRY_NOT_FOUND
constexpr int B_FILE_EXISTS = B_STORAGE_ERROR_BASE + 2;     // the name is taken
constexpr int B_ENTRY_NOT_FOUND = B_STORAGE_ERROR_BASE + 3; // no such name; the end of a list
constexpr int B_NAME_TOO_LONG = B_STORAGE_ERROR_BASE + 4;   // a name or path beyond what can be
constexpr int B_NOT_A_DIRECTORY = B_STORAGE_ERROR_BASE + 5; // it, or a step of its path, is none
constexpr int B_DIRECTORY_NOT_EMPTY = B_STORAGE_ERROR_BASE + 6; // the folder holds entries
constexpr int B_DEVICE_FULL = B_STORAGE_ERROR_BASE + 7;         // the volume or a quota is full
constexpr int B_READ_ONLY_DEVICE = B_STORAGE_ERROR_BASE + 8; // nothing can be written on the volume
constexpr int B_IS_A_DIRECTORY = B_STORAGE_ERROR_BASE + 9;   // a folder where a file is asked for
constexpr int B_NO_MORE_FDS = B_STORAGE_ERROR_BASE + 10;     // there are no descriptors left
constexpr int B_CROSS_DEVICE_LINK = B_STORAGE_ERROR_BASE + 11; // on different volumes
constexpr int B_LINK_LIMIT = B_STORAGE_ERROR_BASE + 12;  // too many links, or a circle of them
constexpr int B_BUSTED_PIPE = B_STORAGE_ERROR_BASE + 13; // nobody reads any more
constexpr int B_UNSUPPORTED = B_STORAGE_ERROR_BASE + 14; // the volume has no such thing
constexpr int B_PARTITION_TOO_SMALL = B_STORAGE_ERROR_BASE + 15; // the volume cannot be that small
