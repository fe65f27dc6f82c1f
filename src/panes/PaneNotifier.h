#pragma once

#include "MessageCodes.h"

#include <Looper.h>
#include <Messenger.h>

#include <functional>

class BMessage;
class BView;

namespace norvane {

/// Tells a pane of its list's doings: notices by way of a looper of their own, so that they arrive
/// after the current message; progress straight to the pane when it runs on the pane's thread.
class PaneNotifier
{
public:
    explicit PaneNotifier(BView* pane);
    ~PaneNotifier();
    PaneNotifier(const PaneNotifier&) = delete;
    PaneNotifier& operator=(const PaneNotifier&) = delete;

    /// The pane is in a window now.
    void Attached();
    /// Posts a notice without fields. While a MSG_PANE_INFO is on its way another one is not
    /// needed.
    void Post(uint32 code);
    /// The same as something to be called, while the notifier lives.
    std::function<void()> Poster(uint32 code)
    {
        return [this, code] {
            Post(code);
        };
    }
    /// The pane got MSG_PANE_INFO.
    void InfoArrived() { fIsInfoOnItsWay = false; }

    /// Whether progress is told of; looked at when a run starts.
    void SetShowsProgress(bool isOn) { fShowsProgress = isOn; }
    bool ShowsProgress() const { return fShowsProgress; }
    void StartProgress();
    void SetProgressMax(int32 steps);
    /// Notes steps; sends them at most once per frame, with how many they are.
    void Step(int32 steps = 1);
    void StopProgress();

private:
    class PathLooper;

    void Send(BMessage& message);

    BView* fPane;           // may be null
    BMessenger fPathLooper; // nobody until the pane is in a window
    bigtime_t fLastStep = 0;
    int32 fWaitingSteps = 0;
    bool fIsInfoOnItsWay = false;
    bool fShowsProgress = true;
    bool fIsInProgress = false;
};

} // namespace norvane
