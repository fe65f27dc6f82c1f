#pragma once

#include <SupportDefs.h>

#include <string>
#include <utility>
#include <vector>

namespace norvane {

/// Every key that the program keeps in its main settings file.
std::vector<std::string> MainSettingsKeys();

/// Writes some keys of a profile file without losing the others.
///
/// The file is rewritten in place, so a longer value can overwrite its neighbours. The writer reads
/// every key it knows first, writes, reads back, and sets again what is missing or changed.
class SettingsWriter
{
public:
    /// `knownKeys`: every key that the file may hold.
    SettingsWriter(const char* folder, const char* file, std::vector<std::string> knownKeys);

    /// Notes a new value; one that does not fit a line, or holds a line feed, is refused with
    /// false.
    bool Set(const std::string& key, const std::string& value);
    /// Notes a folder's path; one that cannot be stored gives way to its longest parent that can.
    bool SetPath(const std::string& key, const std::string& path);
    /// Notes a number.
    bool Set(const std::string& key, int number);

    /// Writes all at once, new keys in the order in which they were set.
    /// Errors: those of WriteProfileString(); B_FILE_ERROR when some key still differs at the end.
    status_t Write();

private:
    using KeyAndValue = std::pair<std::string, std::string>;

    status_t ReadKnown();
    std::vector<KeyAndValue> Different() const;

    std::string fFolder;
    std::string fFile;
    std::vector<std::string> fKnownKeys;
    std::vector<KeyAndValue> fNew;    // no key twice
    std::vector<KeyAndValue> fWanted; // all keys as they must read at the end, the new ones first
};

} // namespace norvane
