#include "settings/Profile.h"

#include "settings/MsgBox.h"

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
            if (fits || fit == Fit::kIgnored) {
                file.Seek(lineStart, SEEK_SET);
                if (fits) {
                    std::strcpy(value, found);
                }
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

} // namespace

bool GetProfileString(const char* folder, const char* key, char* value, const char* file)
{
    return GetProfileString(folder, key, value, kProfileLineBytes, file);
}

bool GetProfileString(const char* folder, const char* key, char* value, std::size_t valueBytes,
                      const char* file)
{
    char path[B_PATH_NAME_LENGTH];
    GetSettingFullPath(folder, file, path);
    if (!Exists(path)) {
        return false;
    }
    BFile profile(path, B_READ_WRITE);
    return FindValue(profile, key, value, valueBytes);
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
    BPath path;
    status_t status = find_directory(B_USER_SETTINGS_DIRECTORY, &path);
    if (status == B_OK) {
        status = path.Append((std::string(folder) + "/" + file).c_str());
    }
    if (status != B_OK) {
        return status;
    }
    BFile profile;
    status = profile.SetTo(path.Path(), B_READ_ONLY);
    const bool isMissing = status == B_ENTRY_NOT_FOUND || status == B_NOT_A_DIRECTORY;
    if (isMissing && !Exists(path.Path())) {
        return B_NAME_NOT_FOUND;
    }
    if (status != B_OK) {
        return status;
    }
    char text[kProfileLineBytes];
    status = Find(profile, key, text, sizeof(text), Fit::kRequired);
    if (status == B_OK) {
        *value = text;
    }
    return status;
}

bool SetProfileString(const char* folder, const char* key, const char* value, const char* file)
{
    const std::string record = std::string(key) + "=" + value + "\n";
    if (record.size() >= kProfileLineBytes || record.find('\n') != record.size() - 1) {
        return false;
    }
    char path[B_PATH_NAME_LENGTH];
    GetSettingFullPath(folder, file, path);
    if (!Exists(path) && !CreatePrefFile(folder, file)) {
        MsgBox("Hey", "Could not create the application preferences file.", "Oh well",
               B_INFO_ALERT);
        return false;
    }
    BFile profile(path, B_READ_WRITE);
    char oldValue[kProfileLineBytes];
    // An old line that is too long to be read is rewritten all the same, or it would stay for ever.
    const status_t found = Find(profile, key, oldValue, sizeof(oldValue), Fit::kIgnored);
    if (found == B_NAME_NOT_FOUND) {
        profile.Seek(0, SEEK_END);
    } else if (found != B_OK) {
        return false; // where the line stands cannot be told
    }
    profile.Write(record.data(), record.size());
    return true;
}

bool CreatePrefFile(const char* folder, const char* file)
{
    char settings[B_PATH_NAME_LENGTH] = "";
    GetPathOnly(settings);
    BDirectory target;
    const BDirectory parent(settings);
    if (target.SetTo(&parent, folder) != B_OK) {
        BDirectory made(settings);
        if (made.CreateNewDirectory(folder, 0700, &target) != B_OK) {
            return false;
        }
    }
    // Sessions hold passwords, so nobody else may read any of these files, not even for a moment.
    BFile created;
    const status_t status = target.CreateNewFile(file, 0600, &created);
    return status == B_OK || status == B_FILE_EXISTS;
}

char* GetSettingFullPath(const char* folder, const char* file, char* path)
{
    path[0] = '\0';
    GetPathOnly(path);
    const std::string whole = std::string(path) + "/" + folder + "/" + file;
    path[0] = '\0';
    if (whole.size() < B_PATH_NAME_LENGTH) {
        std::strcpy(path, whole.c_str());
    }
    return path;
}

void GetPathOnly(char* path)
{
    BPath settings;
    if (find_directory(B_USER_SETTINGS_DIRECTORY, &settings) != B_OK ||
        std::strlen(settings.Path()) >= B_PATH_NAME_LENGTH) {
        MsgBox("Hey", "Couldn't find the preferences directory.", "Oh well", B_INFO_ALERT);
        return;
    }
    std::strcpy(path, settings.Path());
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
