#include "ftp/client/SessionFile.h"

#include "settings/Profile.h"
#include "settings/SettingsWriter.h"

#include <Directory.h>
#include <Entry.h>
#include <Errors.h>
#include <File.h>
#include <FindDirectory.h>
#include <Path.h>
#include <StorageDefs.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace norvane {

namespace {

// Every look-up reads the file from its start, so no session is looked for in a file of any size.
constexpr off_t kMostBytes = off_t{64} * 1024;
constexpr mode_t kOwnerOnly = 0700;
constexpr mode_t kOwnersFile = 0600;
constexpr int kHighestPort = 65535;
constexpr std::size_t kMostDigits = 5;

constexpr char kHost[] = "Host";
constexpr char kPort[] = "Port";
constexpr char kUser[] = "User";
constexpr char kPassword[] = "Pass";
constexpr char kRemoteDir[] = "RemoteDir";
constexpr char kLocalDir[] = "LocalDir";
constexpr char kPassive[] = "Passive";
constexpr char kOn[] = "1";
constexpr char kOff[] = "0";

struct TextKey
{
    const char* key;
    std::string FtpSession::*text;
};

const TextKey kTexts[] = {
    {kHost, &FtpSession::host},           {kPort, &FtpSession::port},
    {kUser, &FtpSession::user},           {kPassword, &FtpSession::password},
    {kRemoteDir, &FtpSession::remoteDir}, {kLocalDir, &FtpSession::localDir},
};

/// Whether `text` is what a key that was partly overwritten leaves behind.
bool IsRestOfKnownKey(const std::string& text)
{
    const auto endsLikeIt = [&text](std::string_view key) {
        return text.size() < key.size() && key.substr(key.size() - text.size()) == text;
    };
    return endsLikeIt(kPassive) ||
           std::any_of(std::begin(kTexts), std::end(kTexts),
                       [&](const TextKey& one) { return endsLikeIt(one.key); });
}

bool IsSession(const std::string& fileName)
{
    const std::size_t dot = fileName.rfind('.');
    // Nothing but the extension is no name that a session can have.
    return dot != std::string::npos && dot > 0 && fileName.substr(dot) == kSessionExtension;
}

} // namespace

SessionFile::SessionFile(std::string fileName) : fFileName(std::move(fileName)) {}

std::string SessionFile::Name() const
{
    return fFileName.substr(0, fFileName.rfind('.'));
}

std::string SessionFile::FileNameOf(const std::string& sessionName)
{
    return sessionName + kSessionExtension;
}

status_t SessionFile::GetFolder(std::string* path)
{
    BPath settings;
    const status_t status = find_directory(B_USER_SETTINGS_DIRECTORY, &settings);
    if (status != B_OK) {
        return status;
    }
    const std::string whole = std::string(settings.Path()) + "/" + kSettingsFolder;
    BDirectory folder(whole.c_str());
    if (folder.InitCheck() == B_ENTRY_NOT_FOUND) {
        BDirectory parent(settings.Path());
        const status_t made = parent.CreateNewDirectory(kSettingsFolder, kOwnerOnly, &folder);
        if (made != B_OK && made != B_FILE_EXISTS) {
            return made;
        }
    }
    *path = whole;
    return B_OK;
}

std::string SessionFile::Path() const
{
    BPath settings;
    if (find_directory(B_USER_SETTINGS_DIRECTORY, &settings) != B_OK) {
        return "";
    }
    return std::string(settings.Path()) + "/" + kSettingsFolder + "/" + fFileName;
}

status_t SessionFile::Create() const
{
    if (ReasonAgainstName(Name()) != nullptr) {
        return B_BAD_VALUE;
    }
    std::string path;
    status_t status = GetFolder(&path);
    BDirectory folder;
    status = status == B_OK ? folder.SetTo(path.c_str()) : status;
    BFile file;
    return status == B_OK ? folder.CreateNewFile(fFileName.c_str(), kOwnersFile, &file) : status;
}

/// Whether there is a file that can be a session.
status_t SessionFile::Look() const
{
    if (fFileName.find('/') != std::string::npos) {
        return B_ENTRY_NOT_FOUND; // it would lead out of the folder
    }
    const BEntry entry(Path().c_str(), true);
    if (!entry.Exists()) {
        return B_ENTRY_NOT_FOUND;
    }
    // A FIFO of that name would keep its reader for ever.
    off_t bytes = 0;
    if (!entry.IsFile() || entry.GetSize(&bytes) != B_OK || bytes > kMostBytes) {
        return B_BAD_TYPE;
    }
    return B_OK;
}

status_t SessionFile::Read(FtpSession* session) const
{
    status_t status = Look();
    FtpSession found;
    found.name = Name();
    const auto read = [this, &status](const char* key, std::string* value) {
        if (status == B_OK) {
            status = ReadProfileString(kSettingsFolder, key, value, fFileName.c_str());
            status = status == B_NAME_NOT_FOUND ? status_t(B_OK) : status;
        }
    };
    for (const TextKey& one : kTexts) {
        read(one.key, &(found.*one.text));
    }
    std::string passive;
    read(kPassive, &passive);
    found.isPassive = passive == kOn;
    if (status == B_OK) {
        *session = std::move(found);
    }
    return status;
}

/// Adds the keys of all lines that are none of ours, so that no longer value overwrites them.
status_t SessionFile::ReadKeys(std::vector<std::string>* keys) const
{
    BFile file(Path().c_str(), B_READ_ONLY);
    if (file.InitCheck() != B_OK) {
        return file.InitCheck();
    }
    char line[kProfileLineBytes];
    int64 consumed = ReadLine(file, line);
    for (; consumed > 0; consumed = ReadLine(file, line)) {
        const std::string text(line);
        const std::size_t end = text.find('=');
        if (end == std::string::npos || end == 0) {
            continue;
        }
        const std::string key = text.substr(0, end);
        if (!IsRestOfKnownKey(key) && std::find(keys->begin(), keys->end(), key) == keys->end()) {
            keys->push_back(key);
        }
    }
    return static_cast<status_t>(consumed);
}

status_t SessionFile::Write(const FtpSession& session) const
{
    if (ReasonAgainstName(Name()) != nullptr || KeyThatCannotBeKept(session) != nullptr) {
        return B_BAD_VALUE;
    }
    std::vector<std::string> keys = {kPassive};
    for (const TextKey& one : kTexts) {
        keys.emplace_back(one.key);
    }
    std::string folder;
    status_t status = GetFolder(&folder);
    status = status == B_OK ? BDirectory(folder.c_str()).InitCheck() : status;
    status = status == B_OK ? Look() : status;
    if (status == B_OK) {
        status = ReadKeys(&keys);
    } else if (status == B_ENTRY_NOT_FOUND) {
        status = B_OK;
    }
    if (status != B_OK) {
        return status;
    }
    SettingsWriter writer(kSettingsFolder, fFileName.c_str(), keys);
    for (const TextKey& one : kTexts) {
        writer.Set(one.key, session.*one.text);
    }
    // Without the line a session is active: it is there only where somebody ever said otherwise.
    std::string former;
    if (session.isPassive ||
        ReadProfileString(kSettingsFolder, kPassive, &former, fFileName.c_str()) == B_OK) {
        writer.Set(kPassive, std::string(session.isPassive ? kOn : kOff));
    }
    return writer.Write();
}

status_t SessionFile::Remove() const
{
    BEntry entry(Path().c_str(), false);
    return entry.InitCheck() == B_OK ? entry.Remove() : entry.InitCheck();
}

status_t SessionFile::List(std::vector<std::string>* names)
{
    std::string path;
    status_t status = GetFolder(&path);
    BDirectory folder;
    if (status == B_OK) {
        status = folder.SetTo(path.c_str());
    }
    std::vector<std::string> found;
    const char* name = nullptr;
    while (status == B_OK && (status = folder.GetNextName(&name)) == B_OK) {
        if (IsSession(name)) {
            found.push_back(SessionFile(name).Name());
        }
    }
    if (status != B_ENTRY_NOT_FOUND) {
        return status;
    }
    std::sort(found.begin(), found.end());
    *names = std::move(found);
    return B_OK;
}

const char* SessionFile::ReasonAgainstName(const std::string& sessionName)
{
    if (sessionName.empty()) {
        return "a name needs at least one letter";
    }
    if (sessionName == "." || sessionName == "..") {
        return "this name stands for a folder already";
    }
    if (sessionName.find('/') != std::string::npos) {
        return "a name cannot hold \"/\"";
    }
    if (sessionName.find_first_of("\r\n") != std::string::npos) {
        return "a name cannot hold a line break";
    }
    return FileNameOf(sessionName).size() < B_FILE_NAME_LENGTH ? nullptr : "the name is too long";
}

bool SessionFile::IsPort(const std::string& port)
{
    const bool isNumber = !port.empty() && port.size() <= kMostDigits &&
                          port.find_first_not_of("0123456789") == std::string::npos;
    if (!isNumber) {
        return false;
    }
    const int number = std::stoi(port);
    return number > 0 && number <= kHighestPort;
}

const char* SessionFile::KeyThatCannotBeKept(const FtpSession& session)
{
    SettingsWriter trial(kSettingsFolder, "", {});
    for (const TextKey& one : kTexts) {
        const std::string& text = session.*one.text;
        if (text.find_first_of("\r\n") != std::string::npos || !trial.Set(one.key, text)) {
            return one.key;
        }
    }
    return nullptr;
}

} // namespace norvane
