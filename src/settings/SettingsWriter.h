#pragma once

#include <map>
#include <string>
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

    /// Writes all at once.
    /// Errors: false when the file cannot be read (nothing is written then) or created, or when
    /// some key still differs at the end.
    bool Write();

private:
    std::vector<std::string> Different() const;

    std::string fFolder;
    std::string fFile;
    std::vector<std::string> fKnownKeys;
    std::map<std::string, std::string> fNew;
    std::map<std::string, std::string> fWanted; // all keys as they must read at the end
};

} // namespace norvane
