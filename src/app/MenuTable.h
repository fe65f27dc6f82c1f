#pragma once

#include <SupportDefs.h>

#include <vector>

namespace norvane {

/// One line of a menu of the main window; one without a label is a separator.
struct MenuLine
{
    const char* label = nullptr;
    uint32 what = 0;
    char shortcut = 0;
    uint32 modifiers = 0;     // beside the Command key
    bool isAvailable = false; // false: shown, but not to be chosen
};

struct MenuColumn
{
    const char* label;
    std::vector<MenuLine> lines;
};

/// What the main window is told to do, by menus and by other windows. Digits of panes follow
/// kFocusPane.
enum WindowCommand : uint32 {
    kOpen = 100,
    kCalculateSpace = 102,
    kAbout = 105,
    kNewFolder = 106,
    kRename = 107,
    kEmptyTrash = 108,
    kUpALevel = 110,
    kOpenInLeftPane = 111,
    kOpenInRightPane = 112,
    kDownALevel = 113,
    kAddPane = 120,
    kRemovePane = 121,
    kRevertToDefault = 122,
    kQuery = 123,
    kFtpConnections = 124,
    kDisconnectFtp = 125,
    kOpenTracker = 130,
    kOpenTerminal = 131,
    kTestOverwrite = 132, // in no menu
    kGoTo = 134,
    kPreferences = 135,
    kHelp = 140,
    kFolderNamed = 512,     // string "text": the name of a new folder
    kNewNameTyped = 513,    // string "text": the selected entry's
    kFolderToGoTyped = 514, // string "text"
    kColumnResized = 600,
    kPreferencesSaved = 614,
    kFocusPane = 1000, // to 1009
};

constexpr int32 kMaxPanes = 10;

/// The menus of the main window, from left to right. Lends; valid for ever.
const std::vector<MenuColumn>& MainMenus();

} // namespace norvane
