#include "app/MenuTable.h"

#include "MessageCodes.h"

#include <AppDefs.h>
#include <InterfaceDefs.h>

namespace norvane {

namespace {

MenuColumn PaneMenu()
{
    static const char* const kLabels[kMaxPanes] = {"Pane 1", "Pane 2", "Pane 3", "Pane 4",
                                                   "Pane 5", "Pane 6", "Pane 7", "Pane 8",
                                                   "Pane 9", "Pane 10"};
    MenuColumn menu{"Windows", {}};
    for (int32 pane = 0; pane < kMaxPanes; pane++) {
        const char digit = pane == 9 ? '0' : static_cast<char>('1' + pane);
        menu.lines.push_back({kLabels[pane], kFocusPane + static_cast<uint32>(pane), digit});
    }
    return menu;
}

std::vector<MenuColumn> BuildMenus()
{
    const MenuLine separator;
    return {
        {"File",
         {{"Open", kOpen, 'O'},
          {"Rename", kRename, 'E'},
          {"New Folder", kNewFolder, 'N'},
          {"Empty Trash", kEmptyTrash},
          separator,
          {"Calculate Occupied Space", kCalculateSpace, 'S'},
          separator,
          {"About", kAbout},
          separator,
          {"Quit", B_QUIT_REQUESTED, 'Q'}}},
        {"Navigation",
         {{"Up a Level", kUpALevel, B_UP_ARROW},
          {"Open in Left Pane", kOpenInLeftPane, B_LEFT_ARROW},
          {"Open in Right Pane", kOpenInRightPane, B_RIGHT_ARROW},
          {"Down a Level", kDownALevel, B_DOWN_ARROW},
          {"GoTo Directory", kGoTo, 'G'}}},
        {"View",
         {{"Add Pane", kAddPane, 'P'},
          {"Remove Pane", kRemovePane, 'P', B_SHIFT_KEY},
          {"Revert to Default", kRevertToDefault, 'D'},
          {"Query", kQuery, 'U'},
          {"Ftp Connections", kFtpConnections, 'F'},
          {"Disconnect FTP Connection", kDisconnectFtp, 'F', B_SHIFT_KEY},
          {"Preferences", kPreferences, 'R'}}},
        {"Applications",
         {{"Open Tracker", kOpenTracker, 'T'}, {"Open Terminal", kOpenTerminal, 'T', B_SHIFT_KEY}}},
        PaneMenu(),
        {"Help", {{"Keybord Help", kHelp}}},
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
