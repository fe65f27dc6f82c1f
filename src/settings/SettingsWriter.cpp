#include "settings/SettingsWriter.h"

#include "settings/Numbers.h"
#include "settings/Profile.h"

#include <Autolock.h>
#include <Errors.h>
#include <Locker.h>

#include <algorithm>
#include <utility>

namespace norvane {

namespace {

constexpr int kRounds = 8;
constexpr int kPanes = 10;
constexpr int kColumns = 4;

bool FitsLine(const std::string& key, const std::string& value)
{
    return key.size() + 1 + value.size() + 1 < kProfileLineBytes &&
           value.find('\n') == std::string::npos;
}

/// Where `key` stands in a list of keys and values, or its end.
template<class List>
auto Place(List& list, const std::string& key)
{
    return std::find_if(list.begin(), list.end(),
                        [&](const auto& one) { return one.first == key; });
}

} // namespace

std::vector<std::string> MainSettingsKeys()
{
    std::vector<std::string> keys = {
        "Left",         "Top",           "Width",           "Height",          "NumPanes",
        "DateFormat",   "ShowHeader",    "ShowFooter",      "ShowProgressBar", "ReadableSizes",
        "HideDotNames", "SortByColumns", "KeepAllInCopies", "MoveByRenaming",  "FontSize"};
    for (int pane = 0; pane < kPanes; pane++) {
        keys.push_back("Pane" + std::to_string(pane));
    }
    for (int column = 1; column <= kColumns; column++) {
        keys.push_back("Column" + std::to_string(column));
    }
    return keys;
}

SettingsWriter::SettingsWriter(const char* folder, const char* file,
                               std::vector<std::string> knownKeys)
    : fFolder(folder), fFile(file), fKnownKeys(std::move(knownKeys))
{
}

bool SettingsWriter::Set(const std::string& key, const std::string& value)
{
    if (!FitsLine(key, value)) {
        return false;
    }
    const auto place = Place(fNew, key);
    if (place != fNew.end()) {
        place->second = value;
    } else {
        fNew.emplace_back(key, value);
    }
    return true;
}

bool SettingsWriter::SetPath(const std::string& key, const std::string& path)
{
    std::string stored = path;
    while (stored.size() > 1 && !FitsLine(key, stored)) {
        const std::size_t slash = stored.rfind('/');
        if (slash == std::string::npos) {
            return false;
        }
        stored.resize(slash == 0 ? 1 : slash);
    }
    return Set(key, stored);
}

bool SettingsWriter::Set(const std::string& key, int number)
{
    char text[12];
    itoa(number, text);
    return Set(key, std::string(text));
}

status_t SettingsWriter::ReadKnown()
{
    fWanted = fNew;
    for (const std::string& key : fKnownKeys) {
        std::string value;
        const status_t status =
            ReadProfileString(fFolder.c_str(), key.c_str(), &value, fFile.c_str());
        if (status == B_OK && Place(fNew, key) == fNew.end()) {
            fWanted.emplace_back(key, value);
        } else if (status != B_OK && status != B_NAME_NOT_FOUND) {
            // It may be there: writing could overwrite it, and nobody would set it again.
            return status;
        }
    }
    return B_OK;
}

status_t SettingsWriter::Write()
{
    // One at a time: a writer that reads while another one writes would set again what is old.
    // Never destroyed: threads that wait for a disk go on when main() has ended.
    static BLocker& lock = *new BLocker("settings");
    const BAutolock hold(lock);
    status_t status = ReadKnown();
    for (int round = 0; status == B_OK && round < kRounds; round++) {
        const std::vector<KeyAndValue> different = Different();
        if (different.empty()) {
            return B_OK;
        }
        for (const auto& [key, value] : different) {
            status = WriteProfileString(fFolder.c_str(), key.c_str(), value.c_str(), fFile.c_str());
            if (status != B_OK) {
                return status;
            }
        }
    }
    return status == B_OK && !Different().empty() ? status_t(B_FILE_ERROR) : status;
}

std::vector<SettingsWriter::KeyAndValue> SettingsWriter::Different() const
{
    std::vector<KeyAndValue> different;
    for (const KeyAndValue& wanted : fWanted) {
        std::string value;
        if (ReadProfileString(fFolder.c_str(), wanted.first.c_str(), &value, fFile.c_str()) !=
                B_OK ||
            value != wanted.second) {
            different.push_back(wanted);
        }
    }
    return different;
}

} // namespace norvane
