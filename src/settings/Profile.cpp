#include "settings/Profile.h"

#include "settings/MsgBox.h"
#include "settings/SettingsTrouble.h"

#include <Directory.h>
#include <Entry.h>
#include <Errors.h>
#include <File.h>
#include <FindDirectory.h>
#include <Path.h>

#include <cstdio>
#include <cstring>

namespace norvane {

namespace {

enum class Fit { kRequired, kIgnored };

constexpr mode_t kOthers = 077;

/// Leaves the file at the first byte of the first line of `key`. With Fit::kRequired lines that do
/// not fit, and values longer than `valueBytes`, are passed over.
/// Errors: B_NAME_NOT_FOUND when there is no such line; those of reading.
status_t Find(BFile& file, const char* key, char* value, std::size_t valueBytes, Fit fit)
{
    char line[kProfileLineBytes] = "";
    int64 lineStart = 0;
    file.Seek(0, SEEK_SET);
    for (;;) {
        const int64 consumed = ReadLine(file, line);
        if (consumed <= 0) {
            return consumed < 0 ? static_cast<status_t>(consumed) : status_t(B_NAME_NOT_FOUND);
        }
        if (Compare(key, line)) {
            // A line that is shorter than its key ends before the place of its value.
            const std::size_t start = std::strlen(key) + 1;
            const char* found = std::strlen(line) < start ? "" : line + start;
            const bool fits =
                consumed < static_cast<int64>(kProfileLineBytes) && std::strlen(found) < valueBytes;
            if (fits) {
                std::snprintf(value, valueBytes, "%s", found);
            }
            if (fits || fit == Fit::kIgnored) {
                file.Seek(lineStart, SEEK_SET);
                return B_OK;
            }
        }
        lineStart += consumed;
    }
}

bool Exists(const char* path)
{
    return BEntry(path, true).Exists();
}

/// The full path of a profile file.
/// Errors: those of finding the settings directory.
status_t FindSetting(const char* folder, const char* file, std::string* path)
{
    BPath settings;
    const status_t status = find_directory(B_USER_SETTINGS_DIRECTORY, &settings);
    if (status != B_OK) {
        return status;
    }
    *path = std::string(settings.Path()) + "/" + folder + "/" + file;
    return path->size() < B_PATH_NAME_LENGTH ? status_t(B_OK) : status_t(B_NAME_TOO_LONG);
}

/// GetProfileString() without a word of what went wrong.
/// Errors: B_NAME_NOT_FOUND when the file or the key is missing; those of reading.
status_t Read(const char* folder, const char* key, char* value, std::size_t valueBytes,
              const char* file)
{
    std::string path;
    status_t status = FindSetting(folder, file, &path);
    if (status != B_OK) {
        return status;
    }
    BFile profile;
    status = profile.SetTo(path.c_str(), B_READ_ONLY);
    const bool isMissing = status == B_ENTRY_NOT_FOUND || status == B_NOT_A_DIRECTORY;
    if (isMissing && !Exists(path.c_str())) {
        return B_NAME_NOT_FOUND;
    }
    return status == B_OK ? Find(profile, key, value, valueBytes, Fit::kRequired) : status;
}

/// Takes away what others may do with `node`: sessions hold passwords.
void CloseToOthers(BStatable& node)
{
    mode_t permissions = 0;
    if (node.GetPermissions(&permissions) == B_OK && (permissions & kOthers) != 0) {
        node.SetPermissions(permissions & ~kOthers);
    }
}

/// Makes the folder where it is missing, and an empty file where there is none.
status_t Create(const char* folder, const char* file)
{
    BPath settings;
    status_t status = find_directory(B_USER_SETTINGS_DIRECTORY, &settings);
    if (status != B_OK) {
        return status;
    }
    BDirectory parent(settings.Path());
    BDirectory target;
    if (target.SetTo(&parent, folder) != B_OK) {
        status = parent.CreateNewDirectory(folder, 0700, &target);
        if (status != B_OK) {
            return status;
        }
    }
    // Nobody else may read any of these files, not even for a moment.
    BFile created;
    status = target.CreateNewFile(file, 0600, &created);
    return status == B_FILE_EXISTS ? status_t(B_OK) : status;
}

/// Writes `record` over the line of `key`, or at the end where there is none.
status_t WriteRecord(BFile& profile, const char* key, const std::string& record)
{
    char oldValue[kProfileLineBytes];
    // An old line that is too long to be read is rewritten all the same, or it would stay for ever.
    const status_t found = Find(profile, key, oldValue, sizeof(oldValue), Fit::kIgnored);
    if (found == B_NAME_NOT_FOUND) {
        profile.Seek(0, SEEK_END);
    } else if (found != B_OK) {
        return found; // where the line stands cannot be told
    }
    const ssize_t written = profile.Write(record.data(), record.size());
    if (written < 0) {
        return static_cast<status_t>(written);
    }
    return written == static_cast<ssize_t>(record.size()) ? status_t(B_OK)
                                                          : status_t(B_DEVICE_FULL);
}

} // namespace

bool GetProfileString(const char* folder, const char* key, char* value, const char* file)
{
    return GetProfileString(folder, key, value, kProfileLineBytes, file);
}

bool GetProfileString(const char* folder, const char* key, char* value, std::size_t valueBytes,
                      const char* file)
{
    const status_t status = Read(folder, key, value, valueBytes, file);
    if (status == B_OK || status == B_NAME_NOT_FOUND) {
        SettingsWereRead();
    } else {
        TellUnreadSettings(file, status);
    }
    return status == B_OK;
}

bool GetProfileString(const char* folder, const char* key, std::string& value, const char* file)
{
    char text[kProfileLineBytes];
    if (!GetProfileString(folder, key, text, file)) {
        return false;
    }
    value = text;
    return true;
}

status_t ReadProfileString(const char* folder, const char* key, std::string* value,
                           const char* file)
{
    char text[kProfileLineBytes];
    const status_t status = Read(folder, key, text, sizeof(text), file);
    if (status == B_OK) {
        *value = text;
    }
    return status;
}

bool SetProfileString(const char* folder, const char* key, const char* value, const char* file)
{
    char path[B_PATH_NAME_LENGTH];
    GetSettingFullPath(folder, file, path);
    if (path[0] == '\0') {
        return false; // that was told
    }
    const status_t status = WriteProfileString(folder, key, value, file);
    if (status != B_OK && status != B_BAD_VALUE && !Exists(path)) {
        MsgBox("Hey", "Could not create the application preferences file.", "Oh well",
               B_INFO_ALERT);
    }
    return status == B_OK;
}

status_t WriteProfileString(const char* folder, const char* key, const char* value,
                            const char* file)
{
    const std::string record = std::string(key) + "=" + value + "\n";
    if (record.size() >= kProfileLineBytes || record.find('\n') != record.size() - 1) {
        return B_BAD_VALUE;
    }
    std::string path;
    status_t status = FindSetting(folder, file, &path);
    if (status == B_OK && !Exists(path.c_str())) {
        status = Create(folder, file);
    }
    if (status != B_OK) {
        return status;
    }
    BFile profile;
    status = profile.SetTo(path.c_str(), B_READ_WRITE);
    if (status != B_OK) {
        return status;
    }
    CloseToOthers(profile);
    BEntry holder(path.substr(0, path.rfind('/')).c_str(), true);
    CloseToOthers(holder);
    return WriteRecord(profile, key, record);
}

bool CreatePrefFile(const char* folder, const char* file)
{
    char settings[B_PATH_NAME_LENGTH] = "";
    GetPathOnly(settings);
    return settings[0] != '\0' && Create(folder, file) == B_OK;
}

char* GetSettingFullPath(const char* folder, const char* file, char* path)
{
    path[0] = '\0';
    GetPathOnly(path);
    const std::string whole = std::string(path) + "/" + folder + "/" + file;
    const bool isFound = path[0] != '\0';
    path[0] = '\0';
    if (isFound && whole.size() < B_PATH_NAME_LENGTH) {
        std::snprintf(path, B_PATH_NAME_LENGTH, "%s", whole.c_str());
    }
    return path;
}

void GetPathOnly(char* path)
{
    BPath settings;
    if (find_directory(B_USER_SETTINGS_DIRECTORY, &settings) != B_OK ||
        std::strlen(settings.Path()) >= B_PATH_NAME_LENGTH) {
        TellNoSettingsDirectory();
        return;
    }
    std::snprintf(path, B_PATH_NAME_LENGTH, "%s", settings.Path());
}

bool FindValue(BFile& file, const char* key, char* value, std::size_t valueBytes)
{
    return Find(file, key, value, valueBytes, Fit::kRequired) == B_OK;
}

int64 ReadLine(BFile& file, char* line)
{
    char last = ' ';
    int64 count = 0;
    ssize_t got = 1;
    std::size_t length = 0;
    while (last != '\n' && got == 1) {
        got = file.Read(&last, 1);
        if (got > 0) {
            count += got;
        }
        // At the end of the file the last character is taken once more and cut off again with the
        // line feed that is not there; so a last line without one loses a character.
        if (got == 1 && length < kProfileLineBytes - 1) {
            line[length++] = last;
        }
    }
    line[length > 0 && count == static_cast<int64>(length) ? length - 1 : length] = '\0';
    return got < 0 ? got : count;
}

bool Compare(const char* key, const char* line)
{
    const std::size_t keyLength = std::strlen(key);
    const std::size_t lineLength = std::strlen(line);
    const bool isLineShorter = lineLength < keyLength;
    const std::size_t length = isLineShorter ? lineLength : keyLength;
    if (std::strncmp(key, line, length) != 0) {
        return false;
    }
    return (isLineShorter ? key[length] : line[length]) == '=';
}

} // namespace norvane
