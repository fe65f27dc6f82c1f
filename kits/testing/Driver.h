#pragma once

#include <GraphicsDefs.h>
#include <InterfaceDefs.h>
#include <Point.h>
#include <Rect.h>
#include <SupportDefs.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "server/WindowShape.h"

class BApplication;
class BView;
class BWindow;

/// Drives windows as a person would: real input events enter where the system's own do, on the
/// server's thread, and pass through routing, queues and focus like any other.
///
/// Thread: the test's own (no window's thread, no lock held, unless a function says otherwise).
namespace kits::testing {

/// How long the waiting functions wait unless told otherwise.
constexpr bigtime_t kLimit = 10'000'000;

/// The application object, built and run on a thread of its own until the destructor quits it.
///
/// One at a time. Tests usually include tests/support/ApplicationEnvironment.h, which keeps one.
class HeadlessApplication
{
public:
    /// Runs a plain BApplication.
    HeadlessApplication();
    /// Runs what `make` builds (called on the application's own thread; it is deleted there).
    explicit HeadlessApplication(const std::function<BApplication*()>& make);
    /// Quits every window and the application and waits for their threads.
    ~HeadlessApplication();
    HeadlessApplication(const HeadlessApplication&) = delete;
    HeadlessApplication& operator=(const HeadlessApplication&) = delete;

private:
    struct State;
    std::unique_ptr<State> fState;
};

// Waiting

/// Asks `condition` again and again until it is true; false when `limit` is over.
bool WaitFor(const std::function<bool()>& condition, bigtime_t limit = kLimit);
/// Waits until `window` has handled everything that was posted to it before. False when it is gone
/// or busy for longer.
bool Sync(BWindow* window, bigtime_t limit = kLimit);
/// Waits until the server has handled everything that was asked of it before.
void SyncServer();
/// The shown window with that title, once it is on the screen; null when `limit` is over.
BWindow* WaitForWindow(const char* title, bigtime_t limit = kLimit);
/// Waits until no window with that title is shown.
bool WaitForNoWindow(const char* title, bigtime_t limit = kLimit);
/// How many windows with that title are shown now.
int32 CountShown(const char* title);
/// Waits until `window` is the one that has the keyboard.
bool WaitForFocus(BWindow* window, bigtime_t limit = kLimit);
/// Waits until an alert or another dialog that answers late takes answers: 200 ms after its first
/// frame.
bool WaitUntilAnswers(BWindow* window, bigtime_t limit = kLimit);
/// The same for keys of a dialog that opens unasked: it has been quiet for long enough.
bool WaitUntilKeysAnswer(BWindow* window, bigtime_t limit = kLimit);

// Keys. They go to the native window that has the keyboard. `modifiers`: B_SHIFT_KEY, B_COMMAND_KEY
// (Ctrl), B_OPTION_KEY (Alt), any sum of them.

/// Presses and releases the key of a byte as the platform names it: a character of the US layout,
/// B_ENTER, B_ESCAPE, B_TAB, B_UP_ARROW, ...
void TypeKey(char byte, uint32 modifiers = 0);
/// The same for a function key: B_F1_KEY to B_F12_KEY.
void TypeFunctionKey(int32 key, uint32 modifiers = 0);
/// Types UTF-8 text, one key per character.
void TypeText(const char* text);
/// Only the press, and each further call without a release a repeat; ReleaseKey() ends it.
void PressKey(char byte, uint32 modifiers = 0);
void ReleaseKey(char byte, uint32 modifiers = 0);
void PressFunctionKey(int32 key, uint32 modifiers = 0);
void ReleaseFunctionKey(int32 key, uint32 modifiers = 0);
/// Presses or releases one modifier key itself: B_SHIFT_KEY, B_COMMAND_KEY or B_OPTION_KEY.
/// The keys typed meanwhile name it, too.
void PressModifier(uint32 modifier);
void ReleaseModifier(uint32 modifier);
/// A press, `repeats` repeats, the release, as fast as the server takes them.
void HoldKey(char byte, int32 repeats, uint32 modifiers = 0);
/// What an input method commits to the focused window.
void CommitText(const char* text);

// Mouse. A point of a view is turned into a screen point under its window's lock, which must be
// free.

/// Presses and releases `button` (B_PRIMARY_MOUSE_BUTTON, ...) `clicks` times at once.
void Click(BView* view, BPoint where, uint32 button = B_PRIMARY_MOUSE_BUTTON, int32 clicks = 1,
           uint32 modifiers = 0);
/// Clicks the middle of the view.
void Click(BView* view);
void PressMouse(BView* view, BPoint where, uint32 button = B_PRIMARY_MOUSE_BUTTON,
                uint32 modifiers = 0);
void MoveMouse(BView* view, BPoint where, uint32 modifiers = 0);
void ReleaseMouse(BView* view, BPoint where, uint32 button = B_PRIMARY_MOUSE_BUTTON,
                  uint32 modifiers = 0);
/// A press at `from`, `steps` moves, a release at `to`.
void Drag(BView* view, BPoint from, BPoint to, int32 steps = 5,
          uint32 button = B_PRIMARY_MOUSE_BUTTON, uint32 modifiers = 0);
/// Turns the wheel by `linesDown` notches (negative: up).
void TurnWheel(BView* view, BPoint where, float notchesDown, float notchesRight = 0,
               uint32 modifiers = 0);
/// What the pointer looks like over that window now, once the window has handled all that was
/// posted to it before.
PointerShape PointerOver(BWindow* window);
/// The same in screen units, at the topmost window of ours there; for menus.
void ClickAt(BPoint screen, uint32 button = B_PRIMARY_MOUSE_BUTTON, uint32 modifiers = 0);
void PressMouseAt(BPoint screen, uint32 button = B_PRIMARY_MOUSE_BUTTON, uint32 modifiers = 0);
void MoveMouseAt(BPoint screen, uint32 modifiers = 0);
void ReleaseMouseAt(BPoint screen, uint32 button = B_PRIMARY_MOUSE_BUTTON, uint32 modifiers = 0);

// Dragging. What is dragged takes the mouse's moves and its release once WaitForDrag() says so.

/// Waits until something is dragged from a window of ours, or (`isOn` false) until nothing is.
bool WaitForDrag(bool isOn = true, bigtime_t limit = kLimit);

/// Waits until the server knows that so many areas of the window take drops: it is told with
/// frames.
bool WaitForDropAreas(BWindow* window, int32 count, bigtime_t limit = kLimit);
/// What another program lets happen to what it drags; any sum.
enum : uint32 { kMayCopy = 1, kMayMove = 2, kMayLink = 4 };
/// Drags files, as a text/uri-list names them, over a point of the view; the first action that may
/// happen is proposed unless `modifiers` say another. Returns what was agreed to: one of the
/// actions, or 0 when nothing may be dropped there.
uint32 DragForeign(BView* view, BPoint where, const char* addresses, uint32 actions = kMayCopy,
                   uint32 modifiers = 0);
/// Drops them there, and returns what the other program is told that happened.
uint32 DropForeign(BView* view, BPoint where, const char* addresses, uint32 actions = kMayCopy,
                   uint32 modifiers = 0);
/// Drags them out of the windows again, or gives up.
void LeaveForeign(BView* view);

// Windows

/// What the close button of the window's frame does.
void CloseWindow(BWindow* window);
/// What a desktop does that wants an open menu gone: the one at a point of the screen.
void CloseMenuAt(const BWindow* window, BPoint screen);
/// Gives the keyboard to the window, as a click on its title bar does.
void ActivateWindow(BWindow* window);
/// Gives the window another frame of its client area, as a window manager does.
void PlaceWindow(BWindow* window, BRect frame);
/// Changes the window's size as its frame's handle does.
void ResizeWindow(BWindow* window, float width, float height);

/// The first view of the window with that name, or the first button, check box or menu item view
/// with that label; null when there is none. Takes the window's lock.
BView* FindView(BWindow* window, const char* nameOrLabel);

/// Waits for a shown dialog that has a button of that label, until it takes answers, and clicks the
/// button. Returns the text the dialog showed (an alert's text; else empty) in `text`, when given.
/// False when none came in time.
bool AnswerAlert(const char* buttonLabel, std::string* text = nullptr, bigtime_t limit = kLimit);

// Pictures

/// What a window shows, in device pixels.
struct Picture
{
    int32 width = 0;
    int32 height = 0;
    float scale = 1;
    std::vector<rgb_color> pixels; // row by row

    bool IsEmpty() const { return pixels.empty(); }
    /// The colour at a pixel; white outside.
    rgb_color At(int32 x, int32 y) const;
    /// How many pixels of this colour lie in the area (device pixels, right and bottom excluded).
    int32 Count(rgb_color color, int32 left, int32 top, int32 right, int32 bottom) const;
    /// Writes a PNG file.
    bool Save(const char* path) const;
};

/// A picture of the window's front image, after everything it was asked to paint is painted.
Picture TakePicture(BWindow* window);

} // namespace kits::testing
