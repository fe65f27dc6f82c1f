#include "settings/SettingsWriter.h"

#include "settings/Numbers.h"
#include "settings/Profile.h"

#include <Errors.h>

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

} // namespace

std::vector<std::string> MainSettingsKeys()
{
    std::vector<std::string> keys = {"Left",       "Top",        "Width",
                                     "Height",     "NumPanes",   "DateFormat",
                                     "ShowHeader", "ShowFooter", "ShowProgressBar"};
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
    fNew[key] = value;
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

bool SettingsWriter::Write()
{
    fWanted.clear();
    for (const std::string& key : fKnownKeys) {
        std::string value;
        const status_t status =
            ReadProfileString(fFolder.c_str(), key.c_str(), &value, fFile.c_str());
        if (status == B_OK) {
            fWanted[key] = value;
        } else if (status != B_NAME_NOT_FOUND) {
            // It may be there: writing could overwrite it, and nobody would set it again.
            return false;
        }
    }
    for (const auto& [key, value] : fNew) {
        fWanted[key] = value;
    }
    for (int round = 0; round < kRounds; round++) {
        const std::vector<std::string> different = Different();
        if (different.empty()) {
            return true;
        }
        for (const std::string& key : different) {
            if (!SetProfileString(fFolder.c_str(), key.c_str(), fWanted[key].c_str(),
                                  fFile.c_str())) {
                return false;
            }
        }
    }
    return Different().empty();
}

std::vector<std::string> SettingsWriter::Different() const
{
    std::vector<std::string> different;
    for (const auto& [key, wanted] : fWanted) {
        std::string value;
        if (!GetProfileString(fFolder.c_str(), key.c_str(), value, fFile.c_str()) ||
            value != wanted) {
            different.push_back(key);
        }
    }
    return different;
}

} // namespace norvane
