#include "app/MenuTable.h"

#include "MessageCodes.h"

#include <AppDefs.h>
#include <InterfaceDefs.h>

namespace norvane {

namespace {

constexpr bool kReady = true;

MenuColumn PaneMenu()
{
    static const char* const kLabels[kMaxPanes] = {"Pane 1", "Pane 2", "Pane 3", "Pane 4",
                                                   "Pane 5", "Pane 6", "Pane 7", "Pane 8",
                                                   "Pane 9", "Pane 10"};
    MenuColumn menu{"Windows", {}};
    for (int32 pane = 0; pane < kMaxPanes; pane++) {
        const char digit = pane == 9 ? '0' : static_cast<char>('1' + pane);
        menu.lines.push_back(
            {kLabels[pane], kFocusPane + static_cast<uint32>(pane), digit, 0, kReady});
    }
    return menu;
}

std::vector<MenuColumn> BuildMenus()
{
    const MenuLine separator;
    return {
        {"File",
         {{"Open", kOpen, 'O', 0, kReady},
          {"Rename", kRename, 'E', 0, kReady},
          {"New Folder", kNewFolder, 'N', 0, kReady},
          {"Empty Trash", kEmptyTrash, 0, 0, kReady},
          separator,
          {"Calculate Occupied Space", kCalculateSpace, 'S', 0, kReady},
          separator,
          {"About", kAbout, 0, 0, kReady},
          separator,
          {"Quit", B_QUIT_REQUESTED, 'Q', 0, kReady}}},
        {"Navigation",
         {{"Up a Level", kUpALevel, B_UP_ARROW, 0, kReady},
          {"Open in Left Pane", kOpenInLeftPane, B_LEFT_ARROW, 0, kReady},
          {"Open in Right Pane", kOpenInRightPane, B_RIGHT_ARROW, 0, kReady},
          {"Down a Level", kDownALevel, B_DOWN_ARROW, 0, kReady},
          {"GoTo Directory", kGoTo, 'G', 0, kReady}}},
        {"View",
         {{"Add Pane", kAddPane, 'P', 0, kReady},
          {"Remove Pane", kRemovePane, 'P', B_SHIFT_KEY, kReady},
          {"Revert to Default", kRevertToDefault, 'D', 0, kReady},
          {"Query", kQuery, 'U', 0, kReady},
          {"Ftp Connections", kFtpConnections, 'F', 0, kReady},
          {"Disconnect FTP Connection", kDisconnectFtp, 'F', B_SHIFT_KEY, kReady},
          {"Preferences", kPreferences, 'R', 0, kReady}}},
        {"Applications",
         {{"Open Tracker", kOpenTracker, 'T', 0, kReady},
          {"Open Terminal", kOpenTerminal, 'T', B_SHIFT_KEY, kReady}}},
        PaneMenu(),
        {"Help", {{"Keybord Help", kHelp, 0, 0, kReady}}},
        {"Add-Ons", {}},
    };
}

} // namespace

const std::vector<MenuColumn>& MainMenus()
{
    static const std::vector<MenuColumn> sMenus = BuildMenus();
    return sMenus;
}

} // namespace norvane
