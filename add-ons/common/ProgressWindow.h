#pragma once

#include <Alert.h>
#include <Messenger.h>
#include <Window.h>

#include <memory>
#include <string>

class BStatusBar;
class BStringView;

namespace norvane_addons {

struct ProgressState;

/// The small window that shows how far an add-on's work is; made and quit by a Progress.
///
/// It comes after half a second, so that short work flickers nothing, and looks 30 times a second
/// at what the worker noted. "Stop", Escape and closing it ask the worker to stop; it stays until
/// the worker has ended. Ownership: create with `new`; it deletes itself.
class ProgressWindow : public BWindow
{
public:
    ProgressWindow(const char* title, std::shared_ptr<ProgressState> state);
    ~ProgressWindow() override;

    // BWindow
    void DispatchMessage(BMessage* message, BHandler* handler) override;
    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override;

private:
    void BuildViews();
    void ShowLate();
    void ShowState();
    void Stop();

    std::shared_ptr<ProgressState> fState;
    BStringView* fLine = nullptr; // children
    BStatusBar* fBar = nullptr;
};

/// How far some work is: the worker's end of a ProgressWindow, which lives as long.
///
/// Thread: any; all calls only note values.
class Progress
{
public:
    /// Makes the window, hidden for half a second. Without a thread for it the work is just not
    /// shown.
    explicit Progress(const char* title);
    /// Asks the window to quit, and returns without waiting for it.
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// How many bytes there will be in all; 0 when nobody knows.
    void SetTotal(int64 bytes);
    /// `bytes` more are done; `name` is what is worked on now (any bytes), null for the same as
    /// before.
    void Advance(int64 bytes, const char* name = nullptr);
    /// Whether the person, or the program's end, asked to stop.
    bool WasStopped() const;
    /// Asks to stop, as the person does.
    void Stop();

private:
    std::shared_ptr<ProgressState> fState;
    BMessenger fWindow; // nobody when no thread was to be had
};

/// Shows one alert with the button "OK" and waits until it is answered. Long texts are cut after
/// some lines. Thread: one that holds no lock.
void Tell(const char* title, const std::string& text, alert_type type = B_INFO_ALERT);

} // namespace norvane_addons
