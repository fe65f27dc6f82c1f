#pragma once

#include <SupportDefs.h>

#include <cstddef>
#include <string>

class BFile;

/// Profile files: lines `key=value`, each ended by one line feed, in a folder of the user's
/// settings.
///
/// Thread: any thread; every call opens and closes the file itself and holds no lock.
namespace norvane {

/// The longest line, its line feed and the terminating NUL included.
constexpr std::size_t kProfileLineBytes = 260;

/// The program's own folder in the settings directory and its main file.
inline constexpr const char* kSettingsFolder = "Norvane";
inline constexpr const char* kSettingsFile = "Norvane.pref";

/// Reads the value of `key`; false when the file or the key is missing, `value` is untouched then.
/// A file that cannot be read is told in an alert, once however many values are asked for.
/// Units: `value` holds at least kProfileLineBytes.
bool GetProfileString(const char* folder, const char* key, char* value, const char* file);
/// The same for a buffer of `valueBytes`; a value that does not fit reads as missing.
bool GetProfileString(const char* folder, const char* key, char* value, std::size_t valueBytes,
                      const char* file);
/// The same with the value as a string.
bool GetProfileString(const char* folder, const char* key, std::string& value, const char* file);

/// The same without an alert, telling a key that is not there from one that cannot be read.
/// Errors: B_NAME_NOT_FOUND when the file or the key is missing; those of reading.
status_t ReadProfileString(const char* folder, const char* key, std::string* value,
                           const char* file);

/// Stores `key=value` over the old line from its first byte on, or at the end of the file, which is
/// neither shortened nor shifted. A longer value overwrites the start of its neighbour: writers of
/// several keys use SettingsWriter. Creates folder and file when needed.
/// Errors: false when the file cannot be created (told in an alert), or when the line does not fit,
/// the value holds a line feed, or the file cannot be read (nothing is written then).
bool SetProfileString(const char* folder, const char* key, const char* value, const char* file);

/// The same without an alert. What others may do with the file and its folder is taken away.
/// Errors: B_BAD_VALUE when the line does not fit or the value holds a line feed; those of finding,
/// creating, reading (nothing is written then) and writing.
status_t WriteProfileString(const char* folder, const char* key, const char* value,
                            const char* file);

/// Creates the folder when it is missing and an empty file in it, both open to their owner only.
bool CreatePrefFile(const char* folder, const char* file);

/// Composes "<settings>/<folder>/<file>" into `path` and returns it; empty when it does not fit, or
/// when there is no settings directory, which is told.
/// Units: `path` holds B_PATH_NAME_LENGTH bytes.
char* GetSettingFullPath(const char* folder, const char* file, char* path);

/// Copies the settings directory's path; when there is none, says so, once until there is one
/// again, and leaves `path` as it was.
/// Units: `path` holds B_PATH_NAME_LENGTH bytes.
void GetPathOnly(char* path);

/// Looks for `key` from the file's start; on success the file stands at the first byte of its line.
/// Lines and values that do not fit their buffers are passed over.
bool FindValue(BFile& file, const char* key, char* value, std::size_t valueBytes);

/// Reads one line without its line feed and returns the number of bytes consumed, 0 at the end, or
/// the status when reading failed.
/// A last line without a line feed loses its last character. Of a line longer than the buffer only
/// the start is kept; the result tells.
/// Units: `line` holds kProfileLineBytes.
int64 ReadLine(BFile& file, char* line);

/// True when `line` begins with `key` followed by "="; of a line shorter than the key, when the key
/// goes on with "=" after the line's length.
bool Compare(const char* key, const char* line);

} // namespace norvane
