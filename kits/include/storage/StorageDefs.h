#pragma once

#include <SupportDefs.h>

#include <sys/stat.h>

/// Longest name of an entry, its end included; a name is 255 bytes at most.
constexpr size_t B_FILE_NAME_LENGTH = 256;
/// The size of a path buffer as programs declare it. The kits take and give longer paths.
constexpr size_t B_PATH_NAME_LENGTH = 1024;
constexpr size_t B_ATTR_NAME_LENGTH = 256;
constexpr size_t B_MIME_TYPE_LENGTH = 256 - 15;
constexpr int32 B_MAX_SYMLINKS = 40;

/// How a file is opened: one of the first three, and any of the others.
enum : uint32 {
    B_READ_ONLY = 0x0000,
    B_WRITE_ONLY = 0x0001,
    B_READ_WRITE = 0x0002,

    B_FAIL_IF_EXISTS = 0x0100, ///< With B_CREATE_FILE: B_FILE_EXISTS when the name is taken.
    B_CREATE_FILE = 0x0200,    ///< Makes the file when it is not there.
    B_ERASE_FILE = 0x0400,     ///< Empties the file.
    B_OPEN_AT_END = 0x0800,    ///< The position starts at the end.
    /// An extension of the platform: the entry itself; a symbolic link is refused with
    /// B_LINK_LIMIT.
    B_NO_TRAVERSE = 0x10000,
};

/// Kinds of nodes, as a set.
enum node_flavor : uint32 {
    B_FILE_NODE = 0x01,
    B_SYMLINK_NODE = 0x02,
    B_DIRECTORY_NODE = 0x04,
    B_ANY_NODE = 0x07,
};
