#pragma once

#include <Entry.h>
#include <Messenger.h>
#include <StorageDefs.h>
#include <SupportDefs.h>

#include <memory>

class BMessage;
class BNode;
class BWindow;
struct stat;

namespace kits {
class PanelLink;
} // namespace kits

enum file_panel_mode {
    B_OPEN_PANEL,
    B_SAVE_PANEL, // not offered here: such a panel never shows
};

enum file_panel_button {
    B_CANCEL_BUTTON,
    B_DEFAULT_BUTTON,
};

/// Says which entries a panel shows.
class BRefFilter
{
public:
    virtual ~BRefFilter() = default;
    /// Whether an entry, no folder, is shown; links are asked about as what they lead to. Thread:
    /// one that reads a folder for the panel; several panels may ask at once.
    virtual bool Filter(const entry_ref* ref, BNode* node, struct stat* st,
                        const char* mimeType) = 0;
};

/// A window in which a person finds files to open.
///
/// Its list has the folders first; what is typed leaves those names that contain it, and a path
/// that is typed is gone to. The keyboard alone suffices: the arrows and the page keys move in the
/// list, Return enters a folder and opens a file, Backspace in the empty field goes up, Escape
/// clears the field, then cancels. Folders are read on a thread of their own.
///
/// What was chosen is sent as a copy of the panel's message, or as B_REFS_RECEIVED without one,
/// with "refs". When a person, or the program that is asked to quit, closes the panel without, a
/// B_CANCEL goes out with the message's what as int32 "old_what" and the panel as pointer "source";
/// Hide() sends none. Thread: any; nothing waits for the window, which follows soon, but deleting
/// the panel and SetRefFilter() wait for a hook or a filter that is running: hold no lock then that
/// these take. Hooks and filters may do both themselves. Ownership: deleting a panel closes its
/// window.
class BFilePanel
{
public:
    /// Makes a panel that is hidden. Its messages go to `target`, null for the application. It
    /// begins in `directory`, null for the folder in which a file was chosen last by any program's
    /// panel, the home folder when that is gone. `nodeFlavors` (B_FILE_NODE and the like, 0 for
    /// files) says what can be chosen. `message` is copied; `filter` is borrowed, and outlives the
    /// panel. A modal one stands before the other windows of the program until it closes.
    explicit BFilePanel(file_panel_mode mode = B_OPEN_PANEL, const BMessenger* target = nullptr,
                        const entry_ref* directory = nullptr, uint32 nodeFlavors = 0,
                        bool allowMultipleSelection = true, const BMessage* message = nullptr,
                        BRefFilter* filter = nullptr, bool modal = false, bool hideWhenDone = true);
    virtual ~BFilePanel();
    BFilePanel(const BFilePanel&) = delete;
    BFilePanel& operator=(const BFilePanel&) = delete;

    /// Shows the panel, or brings it to the front.
    void Show();
    void Hide();
    bool IsShowing() const;

    /// Is told once the panel has closed. Does nothing. Thread: the panel's.
    virtual void WasHidden();
    /// Is told when another entry is selected. Does nothing. Thread: the panel's.
    virtual void SelectionChanged();
    /// Sends a message of the panel; `message` is borrowed. Thread: the panel's.
    virtual void SendMessage(const BMessenger* target, BMessage* message);

    /// Lends the panel's window. Null when it has ended, as all do when the program is asked to
    /// quit; Show() makes it anew.
    BWindow* Window() const;
    BMessenger Messenger() const;
    file_panel_mode PanelMode() const { return fMode; }
    /// The folder shown; one without a name while none was read.
    void GetPanelDirectory(entry_ref* ref) const;

    void SetTarget(const BMessenger& target);
    /// Copies it; null for B_REFS_RECEIVED.
    void SetMessage(const BMessage* message);
    /// Borrows it; null for none. The folder is read again.
    void SetRefFilter(BRefFilter* filter);
    /// Goes to a folder.
    void SetPanelDirectory(const entry_ref* folder);
    void SetPanelDirectory(const char* path);
    void SetPanelDirectory(const BEntry* folder);
    /// The label of the button that opens.
    void SetButtonLabel(file_panel_button button, const char* label);
    void SetHideWhenDone(bool hides);
    bool HidesWhenDone() const;
    /// Reads the folder again.
    void Refresh();
    /// The selected entries, one after the other. Errors: B_ENTRY_NOT_FOUND at the end.
    void Rewind();
    status_t GetNextSelectedRef(entry_ref* ref);

private:
    const file_panel_mode fMode;
    const std::shared_ptr<kits::PanelLink> fLink;
};
