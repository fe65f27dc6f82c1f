#pragma once

#include "UniqueFd.h"

#include <StorageDefs.h>

#include <string>

struct statfs;
struct statx;

/// The system calls of the storage kit, one place for each.
///
/// They work relative to an open folder and act on the entry itself: no link is followed by the
/// last step, and by none when the name has one step. Interrupted calls are made again. Every
/// result is a status_t, or a count or descriptor that is a status when it is negative.
namespace kits::sys {

/// Stands for the working directory where a folder is expected.
extern const int kWorkingDirectory;

// Opening. Descriptors are closed in programs that are started.
int OpenAt(int folder, const char* name, int flags, mode_t mode = 0);
/// Opens the folder `name`, itself, unless something is mounted there: B_CROSS_DEVICE_LINK then,
/// also when it is of the same volume.
int OpenUnmountedFolderAt(int folder, const char* name);
status_t Close(int descriptor);
int Duplicate(int descriptor);

// Contents.
ssize_t ReadAt(int file, void* buffer, size_t size, off_t position);
ssize_t WriteAt(int file, const void* buffer, size_t size, off_t position);
[[nodiscard]] status_t SetSize(int file, off_t size);
/// Has `target` hold what `source` holds, by sharing its blocks. Errors: B_UNSUPPORTED,
/// B_CROSS_DEVICE_LINK, B_BAD_VALUE ... where the volume cannot.
[[nodiscard]] status_t CloneContents(int source, int target);
/// Copies within the system, from a place to the same place; maybe fewer bytes. 0 is the end of the
/// source, or a file system that does not say otherwise that it cannot.
ssize_t CopyRange(int source, int target, off_t position, size_t size);
/// Where data begin, at `position` or later. Errors: B_ENTRY_NOT_FOUND when only a hole follows, or
/// the end; B_BAD_VALUE for everything else: holes are not known there, and reading tells the rest.
off_t SeekData(int file, off_t position);
/// Where a hole begins, at `position` or later; the end of the file counts as one.
off_t SeekHole(int file, off_t position);
[[nodiscard]] status_t Sync(int file);
/// Takes, or gives back, the advisory lock of an open file, without waiting. Errors: B_BUSY.
[[nodiscard]] status_t Lock(int file);
[[nodiscard]] status_t Unlock(int file);
/// All that was written on the volume of an open node.
[[nodiscard]] status_t SyncVolume(int descriptor);

// Records.
[[nodiscard]] status_t Stat(int descriptor, struct stat* st);
[[nodiscard]] status_t StatAt(int folder, const char* name, struct stat* st);
/// Of what the path leads to, links followed.
[[nodiscard]] status_t StatPath(const char* path, struct stat* st);
/// All that a list of files needs; several threads may ask for entries of one folder.
[[nodiscard]] status_t StatxAt(int folder, const char* name, struct statx* record);
/// What is known of an open node without asking who fills its file system, which may never answer:
/// what kind of node it is, and its device; the rest may be old.
[[nodiscard]] status_t KnownRecord(int descriptor, struct statx* record);
/// The file system's own name for an open node, as bytes: another node never has it, also not after
/// this one was removed. Errors: B_UNSUPPORTED where it gives none.
[[nodiscard]] status_t HandleOf(int descriptor, std::string* handle);
/// When an open node was made, in nanoseconds. Errors: B_UNSUPPORTED where nobody noted it.
[[nodiscard]] status_t BirthOf(int descriptor, uint64* birth);
[[nodiscard]] status_t SetMode(int descriptor, mode_t mode);
[[nodiscard]] status_t SetModeAt(int folder, const char* name, mode_t mode);
[[nodiscard]] status_t SetOwnerAt(int folder, const char* name, uid_t owner, gid_t group);
/// `times`: access and modification, as utimensat() takes them.
[[nodiscard]] status_t SetTimesAt(int folder, const char* name, const struct timespec times[2]);

// Folders.
ssize_t ListFolder(int folder, void* buffer, size_t size);
[[nodiscard]] status_t RewindFolder(int folder);
[[nodiscard]] status_t MakeFolderAt(int folder, const char* name, mode_t mode);
[[nodiscard]] status_t MakeLinkAt(const char* text, int folder, const char* name);
ssize_t ReadLinkAt(int folder, const char* name, char* buffer, size_t size);
status_t RemoveFileAt(int folder, const char* name);
status_t RemoveFolderAt(int folder, const char* name);
[[nodiscard]] status_t RenameAt(int from, const char* name, int to, const char* newName);
/// B_FILE_EXISTS when the new name is taken. A file system that cannot promise it is asked first.
[[nodiscard]] status_t RenameNewAt(int from, const char* name, int to, const char* newName);
/// B_UNSUPPORTED when the file system cannot.
[[nodiscard]] status_t ExchangeAt(int folder, const char* name, const char* other);

// Volumes.
[[nodiscard]] status_t VolumeRecord(int descriptor, struct statfs* record);
/// The number by which the system lists the mount that an open node was reached through; a negative
/// value is a status.
int MountOf(int descriptor);
/// Whether something is mounted at the entry, be it a part of the same volume.
[[nodiscard]] status_t IsMountPointAt(int folder, const char* name, bool* is);

// Extended attributes, by the system's names.
ssize_t ListAttributes(int descriptor, char* buffer, size_t size);
ssize_t GetAttribute(int descriptor, const char* name, void* buffer, size_t size);
[[nodiscard]] status_t SetAttribute(int descriptor, const char* name, const void* buffer,
                                    size_t size);
status_t RemoveAttribute(int descriptor, const char* name);

/// The text of the link at (folder, name), of any length. "" as name: of the link that `folder`
/// itself is.
[[nodiscard]] status_t ReadLinkText(int folder, const char* name, std::string* text);
/// The path by which an open node is reached now. Errors: B_ENTRY_NOT_FOUND when it was removed or
/// is out of reach.
[[nodiscard]] status_t PathOf(int descriptor, std::string* path);

} // namespace kits::sys
