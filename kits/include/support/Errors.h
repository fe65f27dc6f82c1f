#pragma once

#include <climits>

/// The codes that status_t takes. All are negative but B_OK; the values are the platform's.
///
/// Each family starts at a base of its own, so that a code tells which kit it comes from.

constexpr int B_GENERAL_ERROR_BASE = INT_MIN;
constexpr int B_OS_ERROR_BASE = B_GENERAL_ERROR_BASE + 0x1000;
constexpr int B_APP_ERROR_BASE = B_GENERAL_ERROR_BASE + 0x2000;
constexpr int B_INTERFACE_ERROR_BASE = B_GENERAL_ERROR_BASE + 0x3000;
constexpr int B_MEDIA_ERROR_BASE = B_GENERAL_ERROR_BASE + 0x4000;
constexpr int B_TRANSLATION_ERROR_BASE = B_GENERAL_ERROR_BASE + 0x4800;
constexpr int B_MIDI_ERROR_BASE = B_GENERAL_ERROR_BASE + 0x5000;
constexpr int B_STORAGE_ERROR_BASE = B_GENERAL_ERROR_BASE + 0x6000;
constexpr int B_POSIX_ERROR_BASE = B_GENERAL_ERROR_BASE + 0x7000;
constexpr int B_MAIL_ERROR_BASE = B_GENERAL_ERROR_BASE + 0x8000;
constexpr int B_PRINT_ERROR_BASE = B_GENERAL_ERROR_BASE + 0x9000;
constexpr int B_DEVICE_ERROR_BASE = B_GENERAL_ERROR_BASE + 0xa000;
constexpr int B_ERRORS_END = B_GENERAL_ERROR_BASE + 0xffff;

/// Success, and the failure that has no code of its own.
constexpr int B_OK = 0;
constexpr int B_NO_ERROR = 0;
constexpr int B_ERROR = -1;

/// Of all kits.
constexpr int B_NO_MEMORY = B_GENERAL_ERROR_BASE;
constexpr int B_IO_ERROR = B_GENERAL_ERROR_BASE + 1;
constexpr int B_PERMISSION_DENIED = B_GENERAL_ERROR_BASE + 2;
constexpr int B_BAD_INDEX = B_GENERAL_ERROR_BASE + 3;
constexpr int B_BAD_TYPE = B_GENERAL_ERROR_BASE + 4;
constexpr int B_BAD_VALUE = B_GENERAL_ERROR_BASE + 5;
constexpr int B_MISMATCHED_VALUES = B_GENERAL_ERROR_BASE + 6;
constexpr int B_NAME_NOT_FOUND = B_GENERAL_ERROR_BASE + 7;
constexpr int B_NAME_IN_USE = B_GENERAL_ERROR_BASE + 8;
constexpr int B_TIMED_OUT = B_GENERAL_ERROR_BASE + 9;
constexpr int B_INTERRUPTED = B_GENERAL_ERROR_BASE + 10;
constexpr int B_WOULD_BLOCK = B_GENERAL_ERROR_BASE + 11;
constexpr int B_CANCELED = B_GENERAL_ERROR_BASE + 12;
constexpr int B_NO_INIT = B_GENERAL_ERROR_BASE + 13;
constexpr int B_BUSY = B_GENERAL_ERROR_BASE + 14;
constexpr int B_NOT_ALLOWED = B_GENERAL_ERROR_BASE + 15;

/// Of the kernel kit.
constexpr int B_BAD_SEM_ID = B_OS_ERROR_BASE;
constexpr int B_NO_MORE_SEMS = B_OS_ERROR_BASE + 1;

constexpr int B_BAD_THREAD_ID = B_OS_ERROR_BASE + 0x100;
constexpr int B_NO_MORE_THREADS = B_OS_ERROR_BASE + 0x101;
constexpr int B_BAD_THREAD_STATE = B_OS_ERROR_BASE + 0x102;
constexpr int B_BAD_TEAM_ID = B_OS_ERROR_BASE + 0x103;
constexpr int B_NO_MORE_TEAMS = B_OS_ERROR_BASE + 0x104;

constexpr int B_BAD_PORT_ID = B_OS_ERROR_BASE + 0x200;
constexpr int B_NO_MORE_PORTS = B_OS_ERROR_BASE + 0x201;

constexpr int B_BAD_IMAGE_ID = B_OS_ERROR_BASE + 0x300;
constexpr int B_BAD_ADDRESS = B_OS_ERROR_BASE + 0x301;
constexpr int B_NOT_AN_EXECUTABLE = B_OS_ERROR_BASE + 0x302;
constexpr int B_MISSING_LIBRARY = B_OS_ERROR_BASE + 0x303;
constexpr int B_MISSING_SYMBOL = B_OS_ERROR_BASE + 0x304;

constexpr int B_DEBUGGER_ALREADY_INSTALLED = B_OS_ERROR_BASE + 0x400;

/// Of the application kit.
constexpr int B_BAD_REPLY = B_APP_ERROR_BASE;
constexpr int B_DUPLICATE_REPLY = B_APP_ERROR_BASE + 1;
constexpr int B_MESSAGE_TO_SELF = B_APP_ERROR_BASE + 2;
constexpr int B_BAD_HANDLER = B_APP_ERROR_BASE + 3;
constexpr int B_ALREADY_RUNNING = B_APP_ERROR_BASE + 4;
constexpr int B_LAUNCH_FAILED = B_APP_ERROR_BASE + 5;
constexpr int B_AMBIGUOUS_APP_LAUNCH = B_APP_ERROR_BASE + 6;
constexpr int B_UNKNOWN_MIME_TYPE = B_APP_ERROR_BASE + 7;
constexpr int B_BAD_SCRIPT_SYNTAX = B_APP_ERROR_BASE + 8;
constexpr int B_LAUNCH_FAILED_NO_RESOLVE_LINK = B_APP_ERROR_BASE + 9;
constexpr int B_LAUNCH_FAILED_EXECUTABLE = B_APP_ERROR_BASE + 10;
constexpr int B_LAUNCH_FAILED_APP_NOT_FOUND = B_APP_ERROR_BASE + 11;
constexpr int B_LAUNCH_FAILED_APP_IN_TRASH = B_APP_ERROR_BASE + 12;
constexpr int B_LAUNCH_FAILED_NO_PREFERRED_APP = B_APP_ERROR_BASE + 13;
constexpr int B_LAUNCH_FAILED_FILES_APP_NOT_FOUND = B_APP_ERROR_BASE + 14;
constexpr int B_BAD_MIME_SNIFFER_RULE = B_APP_ERROR_BASE + 15;

/// Of the storage kit.
constexpr int B_FILE_ERROR = B_STORAGE_ERROR_BASE;
constexpr int B_FILE_NOT_FOUND = B_STORAGE_ERROR_BASE + 1;
constexpr int B_FILE_EXISTS = B_STORAGE_ERROR_BASE + 2;
constexpr int B_ENTRY_NOT_FOUND = B_STORAGE_ERROR_BASE + 3;
constexpr int B_NAME_TOO_LONG = B_STORAGE_ERROR_BASE + 4;
constexpr int B_NOT_A_DIRECTORY = B_STORAGE_ERROR_BASE + 5;
constexpr int B_DIRECTORY_NOT_EMPTY = B_STORAGE_ERROR_BASE + 6;
constexpr int B_DEVICE_FULL = B_STORAGE_ERROR_BASE + 7;
constexpr int B_READ_ONLY_DEVICE = B_STORAGE_ERROR_BASE + 8;
constexpr int B_IS_A_DIRECTORY = B_STORAGE_ERROR_BASE + 9;
constexpr int B_NO_MORE_FDS = B_STORAGE_ERROR_BASE + 10;
constexpr int B_CROSS_DEVICE_LINK = B_STORAGE_ERROR_BASE + 11;
constexpr int B_LINK_LIMIT = B_STORAGE_ERROR_BASE + 12;
constexpr int B_BUSTED_PIPE = B_STORAGE_ERROR_BASE + 13;
constexpr int B_UNSUPPORTED = B_STORAGE_ERROR_BASE + 14;
constexpr int B_PARTITION_TOO_SMALL = B_STORAGE_ERROR_BASE + 15;
