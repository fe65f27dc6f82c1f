#include "settings/Preferences.h"

#include "settings/Numbers.h"
#include "settings/Profile.h"
#include "settings/SettingsWriter.h"

#include <Errors.h>
#include <Message.h>

namespace norvane {

namespace {

constexpr char kDateFormat[] = "DateFormat";

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

} // namespace

Preferences Preferences::Read()
{
    Preferences read;
    GetProfileString(kSettingsFolder, kDateFormat, read.dateFormat, kSettingsFile);
    for (const Switch& one : kSwitches) {
        std::string value;
        if (GetProfileString(kSettingsFolder, one.key, value, kSettingsFile)) {
            read.*one.value = atoi(value.c_str()) != 0;
        }
    }
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
    return writer.Write();
}

void Preferences::AddTo(BMessage* message) const
{
    message->AddString(kDateFormat, dateFormat.c_str());
    for (const Switch& one : kSwitches) {
        message->AddBool(one.key, this->*one.value);
    }
}

Preferences Preferences::In(const BMessage& message)
{
    Preferences found;
    found.dateFormat = message.GetString(kDateFormat, found.dateFormat.c_str());
    for (const Switch& one : kSwitches) {
        found.*one.value = message.GetBool(one.key, found.*one.value);
    }
    return found;
}

} // namespace norvane
