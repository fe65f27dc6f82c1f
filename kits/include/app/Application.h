#pragma once

#include <Looper.h>
#include <Messenger.h>

#include <memory>
#include <string>

class BWindow;
struct app_info;

namespace kits {
class ApplicationThreads;
} // namespace kits

/// The program itself: one looper, run by the main thread, and the connection to the screen.
///
/// Constructing it blocks SIGINT, SIGTERM and SIGHUP, which from then on ask the program to quit,
/// and starts the window server. Make it before any other thread. Ownership: may lie on the stack;
/// Run() returns when the program has quit, with every window gone.
class BApplication : public BLooper
{
public:
    /// Starts the window server; the signature, a MIME type, may be null.
    explicit BApplication(const char* signature);
    /// The same; `*error` (B_OK or why the display cannot be used) instead of InitCheck().
    BApplication(const char* signature, status_t* error);
    ~BApplication() override;

    /// B_OK, or why no window can be made: B_ERROR when there is no display, B_NO_MORE_THREADS when
    /// there is no thread for it. Run() returns at once then.
    status_t InitCheck() const { return fInitStatus; }
    /// Lends the signature given.
    const char* Signature() const;

    /// Handles messages until the program has quit; returns the number of the calling thread.
    /// Thread: the one that made the application.
    thread_id Run() override;
    /// Makes Run() return, without asking any window.
    void Quit() override;
    /// Asks all windows to quit and waits until those that agree are gone, handling other messages
    /// meanwhile. Returns true when none is left.
    bool QuitRequested() override;

    /// Called once, when Run() is about to handle messages.
    virtual void ReadyToRun();
    /// Called before ReadyToRun() when the program was given arguments; argv[0] is the program.
    /// Ownership: the strings are lent for the call.
    virtual void ArgvReceived(int32 argc, char** argv);
    /// Called with the "refs" that the program is asked to open.
    virtual void RefsReceived(BMessage* message);

    // BLooper
    void DispatchMessage(BMessage* message, BHandler* target) override;

    /// Fills in the program's own file, signature, thread and flags.
    /// Thread: any thread.
    /// Errors: B_BAD_VALUE for null; those of finding the program's file.
    status_t GetAppInfo(app_info* info) const;

    /// How many windows there are, shown or not. Thread: any thread.
    int32 CountWindows() const;
    /// Lends a window, in the order of their making; null beyond the end. It may go at any time.
    BWindow* WindowAt(int32 index) const;
    /// How many loopers there are, the application and windows included. Thread: any thread.
    int32 CountLoopers() const;
    /// Lends a looper, in the order of their making; null beyond the end. It may go at any time.
    BLooper* LooperAt(int32 index) const;

private:
    void QueueStart();
    void HandleArguments(BMessage* message);
    void HandleQuitRequest(BMessage* message);
    void EndOtherLoopers();
    void StopDisplay();

    const std::string fSignature;
    status_t fInitStatus = B_OK;
    bool fIsDisplayStarted = false;
    bool fIsAsking = false; // a request to quit is being put to the windows
    std::unique_ptr<kits::ApplicationThreads> fThreads;
};

/// The program's application object, null before and after.
extern BApplication* be_app;
