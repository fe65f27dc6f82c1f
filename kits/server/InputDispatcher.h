#pragma once

#include "EventClock.h"
#include "InputRouter.h"
#include "KeyTranslation.h"
#include "PointerTranslation.h"
#include "WindowEvents.h"

#include <SupportDefs.h>

#include <QPoint>

#include <atomic>
#include <map>
#include <memory>
#include <set>
#include <string>

class BMessage;
class QEvent;
class QInputMethodEvent;
class QKeyEvent;
class QMouseEvent;
class QWheelEvent;
class QWindow;

namespace kits {

class Departures;
class NativeWindow;
class WindowOrder;
class WindowTable;

/// The pointer and the modifiers as last seen, for those who poll. Thread: any.
struct InputSnapshot
{
    std::atomic<int64> where{0}; // x in the upper half, y in the lower
    std::atomic<uint32> buttons{0};
    std::atomic<uint32> modifiers{0};
};
InputSnapshot& LastInput();

/// Turns native events into messages and posts them where the router says.
/// Thread: the server's.
class InputDispatcher : public WindowEvents
{
public:
    /// `canGrabMouse`: whether the platform gives the mouse to one window.
    /// Ownership: borrows the others, which live longer.
    InputDispatcher(WindowTable& windows, InputRouter& router, WindowOrder& order,
                    Departures& departures, bool canGrabMouse)
        : fWindows(windows), fRouter(router), fOrder(order), fDepartures(departures),
          fCanGrabMouse(canGrabMouse)
    {
    }

    // WindowEvents
    bool Input(int32 window, const QEvent& event) override;
    void PreviewEnded(int32 window) override;
    void CloseAsked(int32 window) override;

    /// The system's focus went to one of our windows; null: to none.
    void FocusChanged(QWindow* window);
    /// The window with the token leaves the screen: its focus and presses go elsewhere. Returns
    /// whether the system's focus was asked to follow.
    bool WindowLeaves(int32 token);
    void SetCapture(const NativeWindow& window, bool on);
    /// What was dragged from the window has arrived, or not: the presses that began it end.
    void DragEnded(int32 window, uint32 buttons);
    /// Where the pointer is while something is dragged.
    void PointerSeen(QPoint onScreen, Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers);
    /// A message of the pointer to that window.
    std::unique_ptr<BMessage> MouseMessage(uint32 what, int32 target, QPoint onScreen) const;
    /// Clicks of a double click are counted anew.
    void ResetClicks() { fClicks.Reset(); }
    /// Passes on what was asked of shown windows while another one kept input from them.
    void ServeCloses();

private:
    void Post(int32 window, std::unique_ptr<BMessage> message) const;
    bool ServeClose(int32 window);
    void Key(int32 native, const QKeyEvent& event);
    void TextInput(int32 native, const QInputMethodEvent& event);
    void Mouse(int32 native, const QMouseEvent& event);
    void Wheel(int32 native, const QWheelEvent& event);
    void Crossed(int32 native, bool isInside);
    void PostKey(uint32 what, const InputRouter::KeyTarget& target, const PlatformKey& key,
                 int32 code);
    void PostKeyUp(int32 window, int32 code);
    void Commit(int32 target, const QString& text);
    enum class Alt : uint8 { kAlone, kOther };
    void ModifiersSeen(int32 target, uint32 modifiers, Alt alt = Alt::kOther);
    void PointerModifiersSeen(Qt::KeyboardModifiers modifiers);
    void PostReleases(int32 window, uint32 buttons) const;
    void PressMouse(int32 native, const QMouseEvent& event);
    void ReleaseMouse(int32 native, const QMouseEvent& event);
    void MoveMouse(int32 native, QPoint onScreen, int32 transit);
    void GiveGrabBack();
    bigtime_t EventTime() const;
    void TellActivation();

    WindowTable& fWindows;
    InputRouter& fRouter;
    WindowOrder& fOrder;
    Departures& fDepartures;
    const bool fCanGrabMouse;
    EventClock fClock;
    bigtime_t fEventTime = 0; // of the event that is being dispatched; 0: none, or it told no time
    ModifierSides fSides;
    LoneAlt fLoneAlt;
    ClickCounter fClicks;
    WheelSum fWheel;
    std::map<int32, PlatformKey> fHeld; // by code: what their releases will say
    std::set<int32> fCloseAsked;        // windows that wait until nothing blocks them
    int32 fActive = 0;                  // the window that was told it is active
    int32 fSuccessor = 0;               // was last passed the focus by a window that left
    int32 fPreviewing = 0;              // the window whose text field shows a preview
    int32 fGrabber = 0;                 // the window that holds the mouse grab
};

} // namespace kits
