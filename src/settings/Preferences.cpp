#include "settings/Preferences.h"

#include "settings/Numbers.h"
#include "settings/Profile.h"
#include "settings/SettingsWriter.h"

#include <Errors.h>
#include <Message.h>

namespace norvane {

namespace {

constexpr char kDateFormat[] = "DateFormat";
constexpr char kFontSizeKey[] = "FontSize";
constexpr char kHideDotNamesKey[] = "HideDotNames";

struct Switch
{
    const char* key;
    bool Preferences::*value;
};

// In the order in which they are written.
const Switch kSwitches[] = {
    {"ShowProgressBar", &Preferences::showsProgress},
    {"ShowHeader", &Preferences::showsHeader},
    {"ShowFooter", &Preferences::showsFooter},
};

// Written when they are on, or were.
const Switch kExtras[] = {
    {"ReadableSizes", &Preferences::showsReadableSizes},
    {kHideDotNamesKey, &Preferences::hidesDotNames},
    {"SortByColumns", &Preferences::sortsByColumns},
    {"KeepAllInCopies", &Preferences::keepsAllInCopies},
    {"MoveByRenaming", &Preferences::movesByRenaming},
};

void ReadSwitch(const Switch& one, Preferences* read)
{
    std::string value;
    if (GetProfileString(kSettingsFolder, one.key, value, kSettingsFile)) {
        read->*one.value = atoi(value.c_str()) != 0;
    }
}

bool IsFontSize(int64 size)
{
    return size >= Preferences::kSmallestFont && size <= Preferences::kLargestFont;
}

/// One that no row could be read in counts as missing.
void ReadFontSize(Preferences* read)
{
    std::string value;
    if (GetProfileString(kSettingsFolder, kFontSizeKey, value, kSettingsFile) &&
        IsFontSize(atoi(value.c_str()))) {
        read->fontSize = atoi(value.c_str());
    }
}

bool IsStored(const char* key)
{
    std::string value;
    return ReadProfileString(kSettingsFolder, key, &value, kSettingsFile) == B_OK;
}

} // namespace

Preferences Preferences::Read()
{
    Preferences read;
    GetProfileString(kSettingsFolder, kDateFormat, read.dateFormat, kSettingsFile);
    for (const Switch& one : kSwitches) {
        ReadSwitch(one, &read);
    }
    for (const Switch& one : kExtras) {
        ReadSwitch(one, &read);
    }
    ReadFontSize(&read);
    return read;
}

status_t Preferences::Write() const
{
    SettingsWriter writer(kSettingsFolder, kSettingsFile, MainSettingsKeys());
    if (!writer.Set(kDateFormat, dateFormat)) {
        return B_BAD_VALUE;
    }
    for (const Switch& one : kSwitches) {
        writer.Set(one.key, this->*one.value ? 1 : 0);
    }
    for (const Switch& one : kExtras) {
        if (this->*one.value || IsStored(one.key)) {
            writer.Set(one.key, this->*one.value ? 1 : 0);
        }
    }
    if (fontSize != kFontSize || IsStored(kFontSizeKey)) {
        writer.Set(kFontSizeKey, fontSize);
    }
    return writer.Write();
}

status_t Preferences::WriteHidesDotNames(bool isOn)
{
    SettingsWriter writer(kSettingsFolder, kSettingsFile, MainSettingsKeys());
    writer.Set(kHideDotNamesKey, isOn ? 1 : 0);
    return writer.Write();
}

void Preferences::AddTo(BMessage* message) const
{
    message->AddString(kDateFormat, dateFormat.c_str());
    for (const Switch& one : kSwitches) {
        message->AddBool(one.key, this->*one.value);
    }
    for (const Switch& one : kExtras) {
        message->AddBool(one.key, this->*one.value);
    }
    message->AddInt32(kFontSizeKey, fontSize);
}

Preferences Preferences::In(const BMessage& message)
{
    Preferences found;
    found.dateFormat = message.GetString(kDateFormat, found.dateFormat.c_str());
    for (const Switch& one : kSwitches) {
        found.*one.value = message.GetBool(one.key, found.*one.value);
    }
    for (const Switch& one : kExtras) {
        found.*one.value = message.GetBool(one.key, found.*one.value);
    }
    const int32 size = message.GetInt32(kFontSizeKey, found.fontSize);
    found.fontSize = IsFontSize(size) ? size : kFontSize;
    return found;
}

bool Preferences::DiffersInExtrasAlone(const Preferences& other) const
{
    Preferences same = other;
    for (const Switch& one : kExtras) {
        same.*one.value = this->*one.value;
    }
    same.fontSize = fontSize;
    return *this == same && *this != other;
}

} // namespace norvane
