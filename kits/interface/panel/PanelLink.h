#pragma once

#include <Entry.h>
#include <Message.h>
#include <Messenger.h>

#include <mutex>
#include <utility>
#include <vector>

class BFilePanel;
class BNode;
class BRefFilter;
struct stat;

namespace kits {

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
    };

    PanelLink(BFilePanel* panel, BRefFilter* filter) : fPanel(panel), fFilter(filter) {}

    /// Looks at the state, or changes it, with its lock held.
    template<typename Act>
    auto With(Act act)
    {
        const std::lock_guard lock(fStateLock);
        return act(fState);
    }

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
    std::mutex fStateLock;
    State fState;
    std::recursive_mutex fPanelLock; // a hook may delete the panel
    BFilePanel* fPanel;
    std::mutex fFilterLock;
    BRefFilter* fFilter; // borrowed
};

// What the panel sends its window.
constexpr uint32 kPanelShow = 'PFsh';
constexpr uint32 kPanelHide = 'PFhi';
constexpr uint32 kPanelGoTo = 'PFgo'; // string "path"
constexpr uint32 kPanelRefresh = 'PFre';
constexpr uint32 kPanelLabel = 'PFla'; // int32 "button", string "label"
constexpr uint32 kPanelEnd = 'PFen';

} // namespace kits
