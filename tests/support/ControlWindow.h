#pragma once

#include "ApplicationEnvironment.h"

#include <Message.h>
#include <View.h>
#include <Window.h>

#include <mutex>
#include <vector>

/// A window that keeps the messages of the controls in it; codes of tests lie between 'tesa' and
/// 'tesz'.
class ControlWindow : public BWindow
{
public:
    explicit ControlWindow(const char* title = "controls")
        : BWindow(BRect(60, 60, 459, 359), title, B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0)
    {
    }

    void MessageReceived(BMessage* message) override
    {
        if (message->what >= 'tesa' && message->what <= 'tesz') {
            std::lock_guard<std::mutex> lock(fMutex);
            fMessages.push_back(*message);
        } else {
            BWindow::MessageReceived(message);
        }
    }

    /// All messages so far, after the window handled everything that was sent before.
    std::vector<BMessage> Messages()
    {
        // What was sent while handling those before is behind the first round.
        kits::testing::Sync(this);
        kits::testing::Sync(this);
        std::lock_guard<std::mutex> lock(fMutex);
        return fMessages;
    }

    bool AwaitMessages(size_t count)
    {
        return kits::testing::WaitFor([this, count] {
            std::lock_guard<std::mutex> lock(fMutex);
            return fMessages.size() >= count;
        });
    }

private:
    std::mutex fMutex;
    std::vector<BMessage> fMessages;
};

/// A shown, focused window for each test.
class ControlTest : public ::testing::Test
{
protected:
    ControlTest() : fWindow(new ControlWindow) {}
    // Before a derived test's own members go, which the window's views may still draw.
    void TearDown() override
    {
        if (fWindow->Lock()) {
            fWindow->Quit();
        }
    }

    /// Adds a view to the window before or after it is shown.
    template<typename View>
    View* Add(View* view)
    {
        fWindow->Lock();
        fWindow->AddChild(view);
        fWindow->Unlock();
        return view;
    }

    void Show()
    {
        fWindow->Lock();
        fWindow->Show();
        fWindow->Unlock();
        ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
    }

    void Focus(BView* view)
    {
        fWindow->Lock();
        view->MakeFocus();
        fWindow->Unlock();
    }

    /// The result of `ask`, called with the window locked, after everything before was handled.
    template<typename Ask>
    auto Locked(Ask ask)
    {
        kits::testing::Sync(fWindow);
        fWindow->Lock();
        auto result = ask();
        fWindow->Unlock();
        return result;
    }

    ControlWindow* fWindow; // deletes itself in Quit()
};
