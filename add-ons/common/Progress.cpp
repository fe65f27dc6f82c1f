#include "common/Progress.h"

#include "common/DialogParts.h"

#include <AppDefs.h>
#include <Button.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <MessageRunner.h>
#include <StatusBar.h>
#include <StringView.h>
#include <Window.h>

#include <algorithm>
#include <atomic>
#include <mutex>

namespace add_ons {

/// What work and window share.
struct ProgressState
{
    std::mutex mutex; // guards `name`
    std::string name;
    std::atomic<int64> done{0};
    std::atomic<int64> total{0};
    std::atomic<bool> isStopped{false};
};

namespace {

constexpr bigtime_t kPatience = 500'000; // until the window is worth being shown
constexpr bigtime_t kTick = 50'000;
constexpr uint32 kTellNow = 'Tick';
constexpr uint32 kStop = 'Stop';
constexpr uint32 kEnd = 'End!';
constexpr float kWidth = 340;

class ProgressWindow : public BWindow
{
public:
    ProgressWindow(const char* title, std::shared_ptr<ProgressState> state)
        : BWindow(FrameOverActiveWindow(kWidth,
                                        3 * kEdge + LineHeight() + kBarHeight + ButtonHeight() + 8),
                  title, B_TITLED_WINDOW, B_NOT_ZOOMABLE | B_NOT_RESIZABLE),
          fState(std::move(state))
    {
        // It comes while somebody may be typing into another window.
        SetTakesFocus(false);
        SetTakesKeys(false);
        BuildViews();
        ShowState();
        fTicks = std::make_unique<BMessageRunner>(BMessenger(this), BMessage(kTellNow), kTick);
    }

    void MessageReceived(BMessage* message) override
    {
        switch (message->what) {
        case kTellNow:
            ShowState();
            break;
        case kStop:
            Stop();
            break;
        case kEnd:
            fHasEnded = true;
            PostMessage(B_QUIT_REQUESTED);
            break;
        default:
            BWindow::MessageReceived(message);
        }
    }

    void DispatchMessage(BMessage* message, BHandler* target) override
    {
        if (message->what == B_KEY_DOWN && message->GetInt32("raw_char", 0) == B_ESCAPE) {
            Stop();
            return;
        }
        BWindow::DispatchMessage(message, target);
    }

    /// Closing it stops the work, whose end takes it away.
    bool QuitRequested() override
    {
        if (!fHasEnded) {
            Stop();
        }
        return fHasEnded;
    }

private:
    static constexpr float kBarHeight = 34; // of a status bar with its empty line of text

    void BuildViews()
    {
        BView* ground = MakeGround(Bounds(), "ground");
        AddChild(ground);
        const float right = ground->Bounds().right - kEdge;
        float top = kEdge;
        fName = new BStringView(BRect(kEdge, top, right, top + LineHeight()), "name", "");
        fName->SetTruncation(B_TRUNCATE_MIDDLE);
        ground->AddChild(fName);
        top += LineHeight() + 4;
        fBar = new BStatusBar(BRect(kEdge, top, right, top + kBarHeight), "bar");
        ground->AddChild(fBar);
        const float width = ButtonWidth("Stop");
        const float bottom = ground->Bounds().bottom - kEdge;
        fStop = new BButton(BRect(right - width, bottom - ButtonHeight(), right, bottom), "stop",
                            "Stop", new BMessage(kStop));
        ground->AddChild(fStop);
        fStop->SetTarget(this);
        fStop->MakeFocus(true);
    }

    void ShowState()
    {
        std::string name;
        {
            const std::lock_guard lock(fState->mutex);
            name = fState->name;
        }
        if (name != fName->Text()) {
            fName->SetText(name.c_str());
        }
        const auto total = static_cast<float>(fState->total.load());
        const float part = total > 0 ? static_cast<float>(fState->done.load()) / total : 0;
        fBar->SetMaxValue(1);
        fBar->Update(std::min(part, 1.0f) - fBar->CurrentValue());
    }

    void Stop()
    {
        fState->isStopped = true;
        fStop->SetEnabled(false);
    }

    const std::shared_ptr<ProgressState> fState;
    std::unique_ptr<BMessageRunner> fTicks;
    BStringView* fName = nullptr;
    BStatusBar* fBar = nullptr;
    BButton* fStop = nullptr;
    bool fHasEnded = false;
};

} // namespace

Progress::Progress(const char* title)
    : fTitle(title), fStart(system_time()), fState(std::make_shared<ProgressState>())
{
}

Progress::~Progress()
{
    fWindow.SendMessage(kEnd);
}

void Progress::SetTotal(int64 total)
{
    fState->total = total;
}

void Progress::At(const std::string& name)
{
    {
        const std::lock_guard lock(fState->mutex);
        fState->name = name;
    }
    ShowWhenLong();
}

void Progress::Advance(int64 amount)
{
    fState->done += amount;
    ShowWhenLong();
}

bool Progress::WasStopped() const
{
    return fState->isStopped;
}

void Progress::ShowWhenLong()
{
    if (!fIsShown && system_time() - fStart > kPatience) {
        fIsShown = true;
        auto* window = new ProgressWindow(fTitle.c_str(), fState); // deletes itself
        fWindow = BMessenger(window);
        window->Show();
    }
}

} // namespace add_ons
