#include "Driver.h"
#include "Native.h"

#include "app/LooperCore.h"
#include "app/LooperRegistry.h"
#include "server/FrontImage.h"
#include "server/NativeWindow.h"
#include "server/ServerState.h"
#include "server/Surface.h"
#include "server/WindowFlags.h"
#include "server/WindowServer.h"

#include <Alert.h>
#include <Application.h>
#include <Button.h>
#include <Control.h>
#include <Message.h>
#include <Messenger.h>
#include <OS.h>
#include <View.h>
#include <Window.h>

#include <QGuiApplication>
#include <QImage>
#include <QWindow>
#include <qpa/qwindowsysteminterface.h>

#include <cstring>
#include <thread>

namespace kits::testing {

namespace {

constexpr bigtime_t kPollPause = 1'000;
constexpr bigtime_t kAnswerDelay = 200'000; // after the first frame, dialogs take no answer before
// The same for keys of dialogs that open unasked: half a second without a key.
constexpr bigtime_t kQuietTime = 550'000;

// A question that no window knows: it is answered by every one, in its turn.
constexpr uint32 kAreYouThere = 'kARE';

std::vector<BWindow*> Windows()
{
    std::vector<BWindow*> windows;
    for (const std::shared_ptr<LooperCore>& core : LooperRegistry::AllLoopers()) {
        if (core->IsWindow() && core->Window() != nullptr) {
            windows.push_back(core->Window());
        }
    }
    return windows;
}

// Whether the window was on a screen at least once since its latest show, and when; 0: not.
bigtime_t FirstPresentTime(const BWindow* window)
{
    bigtime_t time = 0;
    OnServer([&] {
        if (auto* surface = static_cast<Surface*>(NativeOf(window))) {
            time = surface->Owner().Front().firstPresentTime;
        }
    });
    return time;
}

bool HasTitle(BWindow* window, const char* title)
{
    // A window that is busy for long keeps its lock: it is asked again later.
    if (window->LockWithTimeout(20'000) != B_OK) {
        return false;
    }
    const bool isIt = std::strcmp(window->Title(), title) == 0 && !window->IsHidden();
    window->Unlock();
    return isIt;
}

BView* FindChild(BView* view, const char* nameOrLabel)
{
    for (BView* child = view->ChildAt(0); child != nullptr; child = child->NextSibling()) {
        const auto* control = dynamic_cast<const BControl*>(child);
        const bool hasLabel = control != nullptr && control->Label() != nullptr &&
                              std::strcmp(control->Label(), nameOrLabel) == 0;
        const bool hasName =
            child->Name() != nullptr && std::strcmp(child->Name(), nameOrLabel) == 0;
        if (hasLabel || hasName) {
            return child;
        }
        if (BView* below = FindChild(child, nameOrLabel)) {
            return below;
        }
    }
    return nullptr;
}

// Calls with the window locked.
BView* FindLocked(BWindow* window, const char* nameOrLabel)
{
    for (int32 index = 0; BView* child = window->ChildAt(index); ++index) {
        if (child->Name() != nullptr && std::strcmp(child->Name(), nameOrLabel) == 0) {
            return child;
        }
        if (BView* below = FindChild(child, nameOrLabel)) {
            return below;
        }
        const auto* control = dynamic_cast<const BControl*>(child);
        if (control != nullptr && std::strcmp(control->Label(), nameOrLabel) == 0) {
            return child;
        }
    }
    return nullptr;
}

// The shown dialog with such a button, and the button.
BView* FindAnswer(const char* label, BWindow** dialog, std::string* text)
{
    for (BWindow* window : Windows()) {
        if (FirstPresentTime(window) == 0 || window->LockWithTimeout(20'000) != B_OK) {
            continue;
        }
        BView* found = window->IsHidden() ? nullptr : FindLocked(window, label);
        const auto* alert = dynamic_cast<const BAlert*>(window);
        const bool isAnswer = dynamic_cast<BButton*>(found) != nullptr;
        if (isAnswer && text != nullptr) {
            *text = alert == nullptr ? "" : alert->Text();
        }
        window->Unlock();
        if (isAnswer) {
            *dialog = window;
            return found;
        }
    }
    return nullptr;
}

} // namespace

bool WaitFor(const std::function<bool()>& condition, bigtime_t limit)
{
    const bigtime_t end = system_time() + limit;
    while (!condition()) {
        if (system_time() > end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::microseconds(kPollPause));
    }
    return true;
}

bool Sync(BWindow* window, bigtime_t limit)
{
    BMessenger messenger(nullptr, window);
    BMessage question(kAreYouThere);
    BMessage answer;
    return messenger.SendMessage(&question, &answer, limit, limit) == B_OK;
}

void SyncServer()
{
    OnServer([] {});
}

BWindow* WaitForWindow(const char* title, bigtime_t limit)
{
    BWindow* found = nullptr;
    WaitFor(
        [&] {
            for (BWindow* window : Windows()) {
                if (HasTitle(window, title) && FirstPresentTime(window) != 0) {
                    found = window;
                    return true;
                }
            }
            return false;
        },
        limit);
    return found;
}

int32 CountShown(const char* title)
{
    int32 count = 0;
    for (BWindow* window : Windows()) {
        count += HasTitle(window, title) ? 1 : 0;
    }
    return count;
}

bool WaitForNoWindow(const char* title, bigtime_t limit)
{
    return WaitFor(
        [&] {
            // By what the server shows: a busy window cannot be asked, yet it is there.
            bool isShown = false;
            OnServer([&] {
                const WindowTable& windows = ServerState::Get().windows;
                for (const int32 token : windows.Shown()) {
                    isShown = isShown || windows.Find(token)->Shape().title == title;
                }
            });
            return !isShown;
        },
        limit);
}

bool WaitForFocus(BWindow* window, bigtime_t limit)
{
    return WaitFor(
        [window] {
            bool isFocused = false;
            OnServer([&] {
                const QWindow* native = NativeOf(window);
                isFocused = native != nullptr && QGuiApplication::focusWindow() == native;
            });
            return isFocused;
        },
        limit);
}

bool WaitUntilAnswers(BWindow* window, bigtime_t limit)
{
    return WaitFor(
        [window] {
            const bigtime_t shown = FirstPresentTime(window);
            return shown != 0 && system_time() > shown + kAnswerDelay;
        },
        limit);
}

bool WaitUntilKeysAnswer(BWindow* window, bigtime_t limit)
{
    return WaitFor(
        [window] {
            const bigtime_t shown = FirstPresentTime(window);
            return shown != 0 && system_time() > shown + kQuietTime;
        },
        limit);
}

void CloseWindow(BWindow* window)
{
    OnServer([window] {
        if (QWindow* native = NativeOf(window)) {
            QWindowSystemInterface::handleCloseEvent<QWindowSystemInterface::SynchronousDelivery>(
                native);
        }
    });
}

void CloseMenuAt(const BWindow* window, BPoint screen)
{
    OnServer([window, screen] {
        QWindow* native = NativeAt(window, screen);
        if (native != nullptr && native != NativeOf(window)) {
            QWindowSystemInterface::handleCloseEvent<QWindowSystemInterface::SynchronousDelivery>(
                native);
        }
    });
}

void ActivateWindow(BWindow* window)
{
    OnServer([window] {
        if (QWindow* native = NativeOf(window)) {
            native->raise();
            native->requestActivate();
        }
    });
}

void PlaceWindow(BWindow* window, BRect frame)
{
    OnServer([&] {
        if (QWindow* native = NativeOf(window)) {
            native->setGeometry(RectFrom(frame));
        }
    });
}

void ResizeWindow(BWindow* window, float width, float height)
{
    OnServer([&] {
        if (QWindow* native = NativeOf(window)) {
            native->resize(static_cast<int>(width) + 1, static_cast<int>(height) + 1);
        }
    });
}

BView* FindView(BWindow* window, const char* nameOrLabel)
{
    if (!window->Lock()) {
        return nullptr;
    }
    BView* found = FindLocked(window, nameOrLabel);
    window->Unlock();
    return found;
}

bool AnswerAlert(const char* buttonLabel, std::string* text, bigtime_t limit)
{
    BWindow* dialog = nullptr;
    BView* button = nullptr;
    const bool isThere = WaitFor(
        [&] {
            button = FindAnswer(buttonLabel, &dialog, text);
            return button != nullptr;
        },
        limit);
    if (!isThere || !WaitUntilAnswers(dialog, limit)) {
        return false;
    }
    Click(button);
    return true;
}

} // namespace kits::testing
