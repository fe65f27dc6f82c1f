#include "panes/PaneNotifier.h"

#include <Message.h>
#include <OS.h>
#include <View.h>
#include <Window.h>

namespace norvane {

namespace {

constexpr bigtime_t kFrame = 1'000'000 / 60;
constexpr int32 kPriority = 10;
constexpr int32 kPortCapacity = 100;

} // namespace

/// Passes on whatever is posted to it. Its queue is what makes notices wait for the current
/// message's end.
class PaneNotifier::PathLooper : public BLooper
{
public:
    explicit PathLooper(const BMessenger& pane)
        : BLooper("PathLooper", kPriority, kPortCapacity), fPane(pane)
    {
    }

    void MessageReceived(BMessage* message) override { fPane.SendMessage(message); }

private:
    const BMessenger fPane;
};

PaneNotifier::PaneNotifier(BView* pane) : fPane(pane) {}

PaneNotifier::~PaneNotifier()
{
    // Posted, not locked: the looper may be waiting for nobody, but nobody should wait for it
    // either.
    fPathLooper.SendMessage(B_QUIT_REQUESTED);
}

void PaneNotifier::Attached()
{
    if (fPane == nullptr || fPathLooper.IsValid()) {
        return;
    }
    auto* looper = new PathLooper(BMessenger(fPane)); // deletes itself
    fPathLooper = BMessenger(nullptr, looper);
    looper->Run();
}

void PaneNotifier::Post(uint32 code)
{
    // Twenty thousand changes need one refreshed footer, not as many.
    if (code == MSG_PANE_INFO && fPane != nullptr && fPane->Window() != nullptr) {
        if (fIsInfoOnItsWay) {
            return;
        }
        fIsInfoOnItsWay = true;
    }
    fPathLooper.SendMessage(code);
}

void PaneNotifier::StartProgress()
{
    fIsInProgress = fShowsProgress;
    BMessage message(MSG_PROGRESS_START);
    Send(message);
    fWaitingSteps = 0;
    fLastStep = system_time();
}

void PaneNotifier::SetProgressMax(int32 steps)
{
    BMessage message(MSG_PROGRESS_MAX);
    message.AddInt32("maxvalue", steps);
    Send(message);
}

void PaneNotifier::Step(int32 steps)
{
    if (!fIsInProgress) {
        return;
    }
    fWaitingSteps += steps;
    const bigtime_t now = system_time();
    if (now - fLastStep < kFrame) {
        return;
    }
    fLastStep = now;
    BMessage message(MSG_PROGRESS_STEP);
    message.AddInt32("steps", fWaitingSteps);
    fWaitingSteps = 0;
    Send(message);
    if (fPane != nullptr && fPane->Window() != nullptr) {
        fPane->Window()->UpdateIfNeeded();
    }
}

void PaneNotifier::StopProgress()
{
    BMessage message(MSG_PROGRESS_STOP);
    Send(message);
    fIsInProgress = false;
}

void PaneNotifier::Send(BMessage& message)
{
    BWindow* window = fPane != nullptr ? fPane->Window() : nullptr;
    if (window == nullptr || !fIsInProgress) {
        return;
    }
    if (window->IsLocked()) {
        // On the pane's own thread: in its queue the message would wait until the work is over.
        fPane->MessageReceived(&message);
    } else {
        BMessenger(fPane).SendMessage(&message);
    }
}

} // namespace norvane
