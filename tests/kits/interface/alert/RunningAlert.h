#pragma once

#include "ControlWindow.h"

#include <Alert.h>
#include <Messenger.h>

#include <atomic>
#include <functional>
#include <future>
#include <thread>
#include <utility>

/// Makes and runs an alert on a thread of its own, which is no window's.
class RunningAlert
{
public:
    explicit RunningAlert(std::function<BAlert*()> make)
        : fThread([this, make = std::move(make)] {
              BAlert* alert = make();
              fMade.set_value(BMessenger(alert));
              fAnswer = alert->Go();
          })
    {
    }
    /// Quits an alert that was not answered: a test that fails must end all the same.
    ~RunningAlert()
    {
        const BMessenger alert = fMade.get_future().get();
        if (IsWaiting()) {
            alert.SendMessage(B_QUIT_REQUESTED);
        }
        fThread.join();
    }

    int32 Answer()
    {
        kits::testing::WaitFor([this] { return fAnswer != kNone; });
        return fAnswer;
    }
    bool IsWaiting() const { return fAnswer == kNone; }

private:
    static constexpr int32 kNone = -100;
    std::atomic<int32> fAnswer{kNone};
    std::promise<BMessenger> fMade;
    std::thread fThread;
};

inline BAlert* MakeAlert()
{
    return new BAlert("Sir?", "Do you really want to delete this?", "Cancel", "Delete", nullptr,
                      B_WIDTH_FROM_LABEL, B_WARNING_ALERT);
}
