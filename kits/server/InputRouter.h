#pragma once

#include <SupportDefs.h>

#include <map>
#include <optional>
#include <set>
#include <vector>

namespace kits {

struct ShowRequest;

/// Decides which window a key or a mouse event belongs to.
///
/// Native events arrive where the system believes the focus to be; between a window's show and its
/// focus, around dialogs, and while a key is held, that is not where the person means them. The
/// router knows tokens only, no window, so that each rule is tested without a display. 0 stands for
/// "nobody": the event is dropped. Thread: the server's.
class InputRouter
{
public:
    /// How a repeat of a held key is told from a new press.
    enum class RepeatRule {
        kPressWithoutRelease, // the system sends no releases between repeats
        kTimestamps,          // a press at the very time of the same key's last release is a repeat
    };

    struct KeyEvent
    {
        int32 native = 0;        // the window the system gave it to
        int32 code = 0;          // the key's position
        bool isModifier = false; // shift and the like own nothing
        bigtime_t when = 0;      // of the press, in microseconds of any one clock
        // The system knows that the key was up before this press, whatever releases came here.
        bool isFirst = false;
    };
    struct KeyTarget
    {
        int32 window = 0;
        int32 repeat = 0;     // 0 for a fresh press
        bool isEarly = false; // the window has not had the focus since it was shown
    };
    struct MouseTarget
    {
        int32 window = 0;
        int32 raise =
            0; // the window to bring forward because the press was meant for a blocked one
    };
    struct Leaving
    {
        int32 successor =
            0;              // gets the focus before the window goes; 0: the focus stays where it is
        uint32 buttons = 0; // held on the window: their releases will never come
    };

    void SetRepeatRule(RepeatRule rule) { fRule = rule; }

    // Windows

    /// Returns the window whose waiting keys move to this one; 0: none.
    int32 Shown(int32 window, const ShowRequest& request, bool isPopUp, bigtime_t now);
    /// Before the window is hidden or destroyed.
    Leaving WillLeave(int32 window, bigtime_t now);
    /// No event of the window can come any more.
    void Gone(int32 window) { fHeirs.erase(window); }
    /// The window the system gave the focus to; 0 when another program has it. All keys count as
    /// released then: their releases will go elsewhere. Returns the codes that were held, with
    /// their owners.
    std::vector<std::pair<int32, int32>> FocusChanged(int32 window);
    /// Before FocusChanged(): when no window came or went for a while, it was the person who chose
    /// the window.
    void FocusComes(int32 window, bigtime_t now);
    /// The focus is about to leave all windows of ours.
    void FocusLeaves(bigtime_t now);
    /// Keys that are down when the focus came from another program: nobody's until they are
    /// released. When it was away for a moment only, between two windows of ours, that holds for
    /// those alone that were down before: the press of another may still be on its way here.
    void KeysFoundDown(const std::vector<int32>& codes, bigtime_t now);
    /// The person clicked into the window or activated it himself.
    void PersonChose(int32 window);

    // Keys

    KeyTarget KeyPressed(const KeyEvent& event, bigtime_t now);
    /// The window that gets the release.
    int32 KeyReleased(const KeyEvent& event);
    /// The press of a held key was handed over to another window, which now owns it.
    void KeyMoved(int32 code, int32 window);
    /// Where text that comes from an input method goes.
    int32 TextTarget(int32 native, bigtime_t now);

    // Mouse. `button` is one platform bit.

    MouseTarget MousePressed(int32 native, uint32 button);
    int32 MouseMoved(int32 native) const;
    int32 MouseReleased(int32 native, uint32 button);
    int32 WheelTurned(int32 native) const;
    struct Press
    {
        int32 window = 0;   // that owns it; 0: none
        uint32 buttons = 0; // held
    };
    /// What is held begins to drag something: its moves and releases belong to where the pointer
    /// is. Returns what ends by that.
    Press DragBegins();
    /// All mouse events go to `window` until it is 0 again.
    void SetCapture(int32 window) { fCapture = window; }
    int32 Capture() const { return fCapture; }

    // Queries

    bool IsShown(int32 window) const { return fWindows.count(window) != 0; }
    /// Whether a modal window keeps input from this one.
    bool IsBlocked(int32 window) const;
    int32 TopmostModal() const { return fModals.empty() ? 0 : fModals.back(); }
    /// The window that has the focus; a menu's counts as its owner's.
    int32 Focused() const { return fFocused; }
    /// Whether the focus is at the window or on its way to it.
    bool HasOrAwaitsFocus(int32 window) const;
    /// Whether keys that reach the window go on to its opener.
    bool LendsKeys(int32 window) const;
    /// Whether the window has had the focus since it was shown.
    bool HadFocus(int32 window) const;
    /// The window a menu belongs to; any other window itself.
    int32 OwnerOf(int32 window) const;

private:
    struct Window
    {
        int32 opener = 0;
        bool isPopUp = false;
        bool isModal = false;
        bool isExempt = false;
        bool hadFocus = false;      // since it was shown
        bool isLendingKeys = false; // its keys go on to the opener until the person chooses it
        bool awaitsFocus = false;   // was shown to take it and has not had it
        bigtime_t pendingUntil = 0; // gets its opener's keys until then; 0: does not
    };
    struct HeldKey
    {
        int32 owner = 0;
        int32 repeats = 0;
        bool isDead =
            false; // a repeat was meant for another window: nothing more until the release
        bigtime_t released = 0; // kTimestamps only: when it was last released, 0 while down
    };

    const Window* Find(int32 window) const;
    bool IsBelow(int32 window, int32 ancestor) const;
    bool IsPending(const Window& window, bigtime_t now) const;
    int32 KeyTargetOf(int32 native, bigtime_t now) const;
    int32 Successor(int32 window) const;
    bool IsRepeat(const KeyEvent& event);
    KeyTarget RepeatTarget(HeldKey& held, int32 target) const;

    RepeatRule fRule = RepeatRule::kPressWithoutRelease;
    std::map<int32, Window> fWindows; // shown ones; later tokens may have been shown earlier
    std::map<int32, int32> fHeirs;    // of windows that lent their keys and left: who gets the last
    std::vector<int32> fModals;       // in the order of showing
    std::vector<int32> fRecent;       // windows that had the focus, latest last
    std::map<int32, HeldKey> fKeys;
    std::vector<int32> fDownBefore; // when the focus left
    bigtime_t fFocusLeft = 0;
    bigtime_t fWindowsChanged = 0; // when one came or went last, menus aside
    int32 fFocused = 0;
    int32 fPressOwner = 0;
    uint32 fPressButtons = 0;
    uint32 fSwallowedButtons = 0; // pressed at a blocked window: nothing of them is delivered
    int32 fCapture = 0;
};

} // namespace kits
