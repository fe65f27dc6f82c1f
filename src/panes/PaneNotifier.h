#pragma once

#include "panes/PaneMessages.h"

#include <Looper.h>
#include <Messenger.h>

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
    /// Posts a notice without fields.
    void Post(uint32 code);

    void StartProgress(int32 steps);
    /// Notes steps; sends them at most once per frame.
    void Step(int32 steps = 1);
    void StopProgress();

private:
    class PathLooper;

    void SendNow(BMessage& message);

    BView* fPane;
    PathLooper* fLooper; // deletes itself when it quits
    bigtime_t fLastStep = 0;
    int32 fWaitingSteps = 0;
};

} // namespace norvane
