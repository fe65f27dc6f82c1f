#pragma once

#include <SupportDefs.h>

#include <string>

class BMessage;

namespace norvane {

/// What a person chose in the preferences window, as it is kept in the settings.
struct Preferences
{
    static constexpr int32 kFontSize = 12;
    static constexpr int32 kSmallestFont = 8;
    static constexpr int32 kLargestFont = 36;

    std::string dateFormat = "%D %R"; // of the Date column, for strftime
    bool showsProgress = true;
    bool showsHeader = true; // of each pane
    bool showsFooter = true;

    // Extras: all off at first
    bool showsReadableSizes = false; // "1.4 MiB" for "1433 K"
    bool hidesDotNames = false;      // in folders, not in results of queries
    bool sortsByColumns = false;     // rows, by the columns that were clicked
    bool keepsAllInCopies = false;   // times, permissions and links
    bool movesByRenaming = false;    // within a volume
    int32 fontSize = kFontSize;      // of the rows, in points; kSmallestFont to kLargestFont

    /// Reads them; what is missing is as above. What cannot be read is told, and counts as missing.
    /// Thread: any; waits for the disk.
    static Preferences Read();
    /// Writes all of them, extras that are off only over ones that were on, and loses no other
    /// setting.
    /// Errors: those of SettingsWriter::Write(); B_BAD_VALUE for a format that no line can hold.
    /// Thread: any; waits for the disk.
    status_t Write() const;
    /// Writes that one alone. Errors and thread: as above.
    static status_t WriteHidesDotNames(bool isOn);

    /// Puts them into a message, and finds them there.
    void AddTo(BMessage* message) const;
    static Preferences In(const BMessage& message);

    /// Whether these differ, but in nothing except the extras.
    bool DiffersInExtrasAlone(const Preferences& other) const;
    bool operator==(const Preferences& other) const = default;
};

} // namespace norvane
