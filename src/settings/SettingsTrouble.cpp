#include "settings/SettingsTrouble.h"

#include "settings/MsgBox.h"

#include <Errors.h>
#include <FindDirectory.h>
#include <Path.h>

#include <atomic>
#include <string>

namespace norvane {

namespace {

constexpr const char* kNoDirectory = "Couldn't find the preferences directory.";

std::atomic<bool> gIsUnreadTold{false};

std::string Reason(status_t status)
{
    switch (status) {
    case B_PERMISSION_DENIED:
    case B_NOT_ALLOWED:
        return "Permission denied";
    case B_ENTRY_NOT_FOUND:
        return "No such file or folder";
    case B_IS_A_DIRECTORY:
        return "It is a folder";
    case B_NOT_A_DIRECTORY:
        return "A part of its path is not a folder";
    case B_READ_ONLY_DEVICE:
        return "The volume is read-only";
    case B_DEVICE_FULL:
        return "The volume is full";
    case B_NAME_TOO_LONG:
        return "Its path is too long";
    case B_LINK_LIMIT:
        return "It is a link that leads to itself";
    case B_IO_ERROR:
        return "The volume cannot be read or written";
    case B_FILE_ERROR:
        return "It did not keep what was written";
    default:
        return "Error " + std::to_string(status);
    }
}

bool HasSettingsDirectory()
{
    BPath path;
    return find_directory(B_USER_SETTINGS_DIRECTORY, &path) == B_OK;
}

void Tell(const char* what, const char* file, status_t reason)
{
    const std::string text = std::string(what) + "\n\n" + file + ": " + Reason(reason);
    MsgBox("Hey", HasSettingsDirectory() ? text.c_str() : kNoDirectory, "Oh well", B_INFO_ALERT);
}

} // namespace

void TellUnsavedSettings(const char* file, status_t reason)
{
    Tell("The settings could not be saved.", file, reason);
}

void TellUnreadSettings(const char* file, status_t reason)
{
    if (!gIsUnreadTold.exchange(true)) {
        Tell("The settings could not be read.", file, reason);
    }
}

void TellNoSettingsDirectory()
{
    if (!gIsUnreadTold.exchange(true)) {
        MsgBox("Hey", kNoDirectory, "Oh well", B_INFO_ALERT);
    }
}

void SettingsWereRead()
{
    gIsUnreadTold = false;
}

} // namespace norvane
