#include "MessageCodes.h"
#include "app/MenuTable.h"
#include "app/NorvaneWindow.h"
#include "fileops/engine/Operations.h"
#include "panes/DirPane.h"
#include "panes/OpenEntry.h"
#include "settings/HomeFolder.h"
#include "settings/Preferences.h"

#include <AppDefs.h>
#include <NodeMonitor.h>

#include <span>

namespace norvane {

/// What the window does for one message code.
struct NorvaneWindow::Answer
{
    uint32 what;
    void (*act)(NorvaneWindow& window, BMessage& message);
};

// What menus and panes tell it to do.
const NorvaneWindow::Answer NorvaneWindow::kCommands[] = {
    {kOpen,
     [](auto& window, auto&) {
         window.TellPane(&DirPane::Invoke);
     }},
    {kUpALevel,
     [](auto& window, auto&) {
         window.TellPane(&DirPane::NavigateUp);
     }},
    {kDownALevel,
     [](auto& window, auto&) {
         window.TellPane(&DirPane::NavigateDown);
     }},
    {kCalculateSpace,
     [](auto& window, auto&) {
         window.DoGetSpace();
     }},
    {kAbout,
     [](auto& window, auto&) {
         window.DoAboutBox();
     }},
    {kNewFolder,
     [](auto& window, auto&) {
         window.DoNewFolder();
     }},
    {kRename,
     [](auto& window, auto&) {
         window.DoRename();
     }},
    {kEmptyTrash,
     [](auto& window, auto&) {
         window.EmptyTrash();
     }},
    {kGoTo,
     [](auto& window, auto&) {
         window.AskWhereToGo();
     }},
    {kQuery,
     [](auto& window, auto&) {
         window.LaunchQueryWindow();
     }},
    {kFtpConnections,
     [](auto& window, auto&) {
         window.ShowConnections();
     }},
    {kDisconnectFtp,
     [](auto& window, auto&) {
         window.TellPane(&DirPane::Disconnect);
     }},
    {kPreferences,
     [](auto& window, auto&) {
         window.LaunchOptionsWindow();
     }},
    {kOpenTracker,
     [](auto& window, auto&) {
         window.OpenTracker();
     }},
    {kOpenTerminal,
     [](auto& window, auto&) {
         window.LaunchTerminalThere();
     }},
    {kHelp,
     [](auto& window, auto&) {
         window.Help();
     }},
    {kRunAddOn,
     [](auto& window, auto& command) {
         window.RunAddOn(command);
     }},
    {kOpenInLeftPane,
     [](auto& window, auto&) {
         window.OpenInLeftPane();
     }},
    {kOpenInRightPane,
     [](auto& window, auto&) {
         window.OpenInRightPane();
     }},
    {kAddPane,
     [](auto& window, auto&) {
         window.AddFilePane(HomeFolder().c_str());
     }},
    {kRemovePane,
     [](auto& window, auto&) {
         window.RemovePane();
     }},
    {kRevertToDefault,
     [](auto& window, auto&) {
         window.Default();
     }},
    {B_COPY,
     [](auto& window, auto& command) {
         window.TellList(command);
     }},
    {B_CUT,
     [](auto& window, auto& command) {
         window.TellList(command);
     }},
    {B_PASTE,
     [](auto& window, auto& command) {
         window.TellList(command);
     }},
    {B_SELECT_ALL,
     [](auto& window, auto& command) {
         window.TellList(command);
     }},
    {kStopOperation,
     [](auto& window, auto&) {
         Operations::AskToStop(BMessenger(nullptr, &window));
     }},
    {kTestOverwrite,
     [](auto& window, auto&) {
         window.ShowOverwriteTest();
     }},
};

// What it is told of: things that happened elsewhere, and entries that are to be carried.
const NorvaneWindow::Answer NorvaneWindow::kNotices[] = {
    {kFolderNamed,
     [](auto& window, auto& notice) {
         window.TextTyped(notice);
     }},
    {kNewNameTyped,
     [](auto& window, auto& notice) {
         window.TextTyped(notice);
     }},
    {kFolderToGoTyped,
     [](auto& window, auto& notice) {
         window.TextTyped(notice);
     }},
    {kQueryResults,
     [](auto& window, auto& notice) {
         window.ShowQueryResults(notice);
     }},
    {kSessionChosen,
     [](auto& window, auto& notice) {
         window.DoFtp(notice);
     }},
    {kColumnResized,
     [](auto& window, auto& notice) {
         window.SetColumnFromMessage(notice);
     }},
    {kPreferencesSaved,
     [](auto& window, auto& notice) {
         window.PreferencesSaved(notice);
     }},
    {kPreferencesRead,
     [](auto& window, auto& answer) {
         window.SetTo(Preferences::In(answer));
     }},
    {kShowHidden,
     [](auto& window, auto& message) {
         window.ShowHidden(message);
     }},
    {kFoldersMoved,
     [](auto& window, auto&) {
         window.CheckPlaces();
     }},
    {kTakeActivation,
     [](auto& window, auto&) {
         window.Activate();
     }},
    {kNotOpened,
     [](auto& window, auto& notice) {
         window.NotOpened(notice);
     }},
    {kAddOnsFound,
     [](auto& window, auto& notice) {
         window.ShowAddOns(notice);
     }},
    {kAddOnEnded,
     [](auto& window, auto& notice) {
         window.AddOnEnded(notice);
     }},
    {kTellMissingFolders,
     [](auto& window, auto&) {
         window.TellMissingFolders();
     }},
    {kRemoteEntries,
     [](auto& window, auto& notice) {
         window.DoDrag(&notice);
     }},
    {kLocalEntries,
     [](auto& window, auto& notice) {
         window.DoDrag(&notice);
     }},
    {B_NODE_MONITOR,
     [](auto& window, auto& notice) {
         window.VolumeChanged(notice);
     }},
    {kVolumeFound,
     [](auto& window, auto& found) {
         window.VolumeFound(found);
     }},
};

void NorvaneWindow::MessageReceived(BMessage* message)
{
    if (message->what >= kFocusPane && message->what < kFocusPane + kMaxPanes) {
        FocusPane(static_cast<int32>(message->what - kFocusPane));
        return;
    }
    for (const std::span<const Answer> table :
         {std::span<const Answer>(kCommands), std::span<const Answer>(kNotices)}) {
        for (const Answer& answer : table) {
            if (answer.what == message->what) {
                answer.act(*this, *message);
                return;
            }
        }
    }
    BWindow::MessageReceived(message);
}

} // namespace norvane
