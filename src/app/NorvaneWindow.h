#pragma once

#include <List.h>
#include <Message.h>
#include <Rect.h>
#include <Window.h>

#include <string>
#include <vector>

class BMenu;

namespace norvane {

class DirPane;
struct Preferences;

/// The main window: a menu bar over one to ten panes of equal width, and the receiver of all
/// commands.
///
/// Thread: its own, but for construction.
class NorvaneWindow : public BWindow
{
public:
    /// `folders` (may be empty) take the place of the saved ones, from the first pane on.
    NorvaneWindow(BRect frame, bool, const std::vector<std::string>& folders = {});
    ~NorvaneWindow() override;

    /// Adds one pane on `path` at the right end, with the focus; nothing when there are ten
    /// already.
    void AddFilePane(const char* path);
    /// Removes every pane.
    void Clear();
    /// Two panes on the home folder, the first with the focus.
    void Default();
    /// Restores frame, panes and column widths as they were saved.
    void GetSettings();
    /// Saves what GetSettings() restores.
    void SaveSettings();
    void FocusFirst();
    /// The pane that has the focus, or null. Locks the window.
    DirPane* GetFocusedPane();
    /// Panes from left to right.
    int32 CountPanes() const { return fPanes.CountItems(); }
    DirPane* PaneAt(int32 index) const;

    // BWindow
    void Show() override;
    void FrameResized(float width, float height) override;
    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override;

private:
    void FindVolumeOf(const std::string& path, int32 gone);

    // What it does for each message code (WindowDispatch.cpp)
    struct Answer;
    static const Answer kCommands[];
    static const Answer kNotices[];

    // Construction (NorvaneWindow.cpp, WindowMenus.cpp)
    void CreateMenus();
    void RestoreFrame();
    void RestorePanes();
    void RestoreColumns();
    void SetLeastSize();
    void TakePane(int32 index);

    // Commands (WindowCommands.cpp); each does nothing without the pane it needs
    void TellPane(void (DirPane::*order)());
    void TellList(BMessage& command);
    void TextTyped(const BMessage& message);
    void DoAboutBox();
    void DoNewFolder();
    void DoRename();
    void EmptyTrash();
    void AskWhereToGo();
    void LaunchQueryWindow();
    void ShowQueryResults(BMessage& results);
    void ShowConnections();
    void DoFtp(const BMessage& message);
    void OpenTracker();
    void DoGetSpace();
    void DoDrag(BMessage* message);
    void OpenInLeftPane();
    void OpenInRightPane();
    void OpenBeside(int32 step);
    void RemovePane();
    void FocusPane(int32 index);
    void ShowOverwriteTest();
    void SetColumnFromMessage(const BMessage& message);
    bool HasNewerWidth(const char* column) const;
    void LaunchOptionsWindow();
    void PreferencesSaved(const BMessage& notice);
    void GetPreferences();
    void SetTo(const Preferences& preferences);
    void SortPanes(const Preferences& preferences);
    void ShowHidden(const BMessage& message);
    void HiddenKept(const BMessage& answer);
    void CheckPlaces();
    // Other programs and add-ons (WindowPrograms.cpp)
    void SetupTerminal();
    void LaunchTerminalThere();
    void Help();
    void NotOpened(const BMessage& message);
    void FindAddOns();
    void ShowAddOns(const BMessage& found);
    void RunAddOn(const BMessage& command);
    void AddOnEnded(const BMessage& notice);
    // Volumes (WindowVolumes.cpp)
    void VolumeChanged(const BMessage& message);
    void VolumeFound(const BMessage& message);
    void TellMissingFolders();
    int32 IndexOf(const DirPane* pane) const;

    BList fPanes{5};
    BMenu* fAddOnsMenu = nullptr; // of the menu bar
    std::string fAddOnAtWork;     // its name; empty: none
    bool fIsReady = false;
    bool fHasSaved = false;
    std::vector<std::string> fFolders;        // from the command line
    std::vector<std::string> fMissingFolders; // that could not be shown, told once
    std::string fMissingReason;               // why, of one that a person asked for
};

} // namespace norvane
