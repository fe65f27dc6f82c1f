#pragma once

#include "fileops/engine/OperationUI.h"

#include <Condition.h>
#include <Locker.h>
#include <Messenger.h>
#include <Rect.h>
#include <Window.h>

#include <atomic>
#include <memory>

class BButton;
class BMessage;
class BStringView;

namespace norvane {

/// The question that a copy asks when a target exists: which of six answers applies.
///
/// One serves all questions of an operation: hidden at first, shown for each, hidden by each
/// answer. The answer stays until the next question is asked. Thread: has its own; the operation's
/// thread calls what says so.
class OverWin : public BWindow
{
public:
    /// Centred on `frame`, hidden; `owner` (may be null) is the window it stays above.
    OverWin(BRect frame, const char* title, BWindow* owner);
    ~OverWin() override;

    /// Fills the four lines. Locks the dialog.
    /// Thread: the operation's.
    void SetPaths(const char* sourcePath, const char* targetPath, const char* targetDetails,
                  const char* sourceDetails);
    /// Asks: forgets the last answer and shows the dialog.
    /// Thread: the operation's.
    void DoDisplay();
    /// Waits until the question that DoDisplay() asked is answered.
    /// Thread: the operation's; holds no lock of this window.
    void WaitForAnswer();
    /// Takes the dialog off the screen, then says so to IsShown().
    void HideDisplay();
    /// Thread: any.
    bool IsShown() const { return fIsShown; }
    /// The standing answer, kAnswerNone when none was given. Thread: any.
    uint32 GetRetType() const { return fAnswer; }
    /// False once there was no thread to be had for the dialog: nobody can be asked. Thread: any.
    bool CanAsk() const { return !fHasNoThread; }
    /// True once a question was answered because the program is quitting. Thread: any.
    bool WasAnsweredForQuit() const { return fWasAnsweredForQuit; }
    /// The dialog quits by itself once it is answered: nobody is waiting for it.
    void CloseWhenAnswered() { fClosesWhenAnswered = true; }

    // BWindow
    void DispatchMessage(BMessage* message, BHandler* target) override;
    void MessageReceived(BMessage* message) override;

private:
    void BuildLines(BView* container);
    void BuildButtons(BView* container);
    void TakeAnswer(const BMessage& message);
    void AnswerForQuit();
    void Answer(uint32 answer);

    BStringView* fSourceLine = nullptr;
    BStringView* fTargetDetails = nullptr;
    BStringView* fTargetLine = nullptr;
    BStringView* fSourceDetails = nullptr;
    BButton* fButtons[6] = {};
    bool fClosesWhenAnswered = false;
    std::unique_ptr<BMessage> fQuitRequest; // kept until this ends; null when nobody asked

    std::atomic<uint32> fAnswer{kAnswerNone};
    std::atomic<bool> fWasAnsweredForQuit{false};
    std::atomic<bool> fIsShown{false};
    std::atomic<bool> fHasNoThread{false};
    std::atomic<int32> fQuestion{0}; // counts questions, so that a late answer is known as one
    BLocker fAnsweredLock;           // guards no data: orders fIsShown's fall with the wait for it
    BCondition fAnswered;
};

} // namespace norvane
