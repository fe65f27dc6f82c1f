#pragma once

#include <Entry.h>
#include <Message.h>
#include <Messenger.h>
#include <Rect.h>

#include <array>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class BFilePanel;
class BNode;
class BRefFilter;
class BWindow;
struct stat;

namespace kits {

/// What a panel was made with.
struct PanelSettings
{
    uint32 flavors = 0; // of what can be chosen; 0: files
    bool takesSeveral = true;
    bool isModal = false;
};

/// What a file panel and its window share. The panel's functions are called by threads that hold
/// other windows' locks; so they take none, but look here, and send the window messages.
///
/// Thread: any. Ownership: shared; the panel takes itself out when it goes.
class PanelLink
{
public:
    /// What one side sets and the other reads.
    struct State
    {
        BMessenger target;
        BMessage message = BMessage(B_REFS_RECEIVED);
        bool hidesWhenDone = true;
        bool isShowing = false;
        entry_ref folder;
        std::vector<entry_ref> selected;
        size_t nextSelected = 0; // to be asked for

        BWindow* window = nullptr; // null while there is none
        BMessenger toWindow;
        int32 asked = 0; // how many messages to show or hide it are under way
        // What a window finds when it comes, or takes when it is sent kPanelWished.
        std::optional<std::string> wished; // the folder to go to; "" for that of the last choice
        std::array<std::string, 2> labels = {"Cancel", "Open"}; // by file_panel_button
        std::string title = "Open";
        BRect frame; // where the window before it was
    };

    PanelLink(BFilePanel* panel, BRefFilter* filter, PanelSettings settings)
        : fSettings(settings), fPanel(panel), fFilter(filter)
    {
    }

    const PanelSettings& Settings() const { return fSettings; }

    /// Looks at the state, or changes it, with its lock held.
    template<typename Act>
    auto With(Act act)
    {
        const std::lock_guard lock(fStateLock);
        return act(fState);
    }

    /// Sends the window a message, if there is one.
    void Tell(uint32 what);
    /// Says that the panel is to be shown or hidden. What was said last holds, whatever the window
    /// has to do before it hears of it. False without a window.
    bool Ask(bool isShowing);
    /// Says that the window has heard one of these, or (`isAnswer` false) was closed by a person.
    void NoteShowing(const BWindow* window, bool isShowing, bool isAnswer);

    /// Calls a hook of the panel; nothing once that is gone. It stays until the hook returns.
    template<typename Hook>
    void Call(Hook hook)
    {
        const std::lock_guard lock(fPanelLock);
        if (fPanel != nullptr) {
            hook(*fPanel);
        }
    }

    void SetFilter(BRefFilter* filter);
    bool HasFilter();
    /// Asks the filter, which stays until it has answered; true without one.
    bool Passes(const entry_ref& ref, BNode* node, struct stat* st, const char* type);
    /// The panel is going: neither it nor its filter is called any more.
    void Leave();

private:
    const PanelSettings fSettings;
    std::mutex fStateLock;
    State fState;
    std::recursive_mutex fPanelLock; // a hook may delete the panel
    BFilePanel* fPanel;
    std::recursive_mutex fFilterLock; // the filter, too
    BRefFilter* fFilter;              // borrowed
};

// What the panel sends its window.
constexpr uint32 kPanelShow = 'PFsh';
constexpr uint32 kPanelHide = 'PFhi';
constexpr uint32 kPanelRefresh = 'PFre';
constexpr uint32 kPanelWished = 'PFwi';
constexpr uint32 kPanelEnd = 'PFen';

} // namespace kits
