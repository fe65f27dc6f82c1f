#include "common/ProgressWindow.h"

#include <AppDefs.h>
#include <Button.h>
#include <Font.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <MessageRunner.h>
#include <Messenger.h>
#include <OS.h>
#include <StatusBar.h>
#include <StringView.h>
#include <View.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <mutex>

namespace norvane_addons {

/// What worker and window both know.
struct ProgressState
{
    std::mutex mutex; // guards all below
    std::condition_variable ended;
    std::string name;
    int64 totalBytes = 0;
    int64 doneBytes = 0;
    bool isStopped = false;
    bool isEnded = false;
};

namespace {

constexpr uint32 kShowLate = 'APsh';
constexpr uint32 kLook = 'APlk';
constexpr uint32 kStop = 'APst';
constexpr bigtime_t kPatience = 500'000;
constexpr bigtime_t kFrame = 1'000'000 / 30;
constexpr bigtime_t kAnswersAfterFirstFrame = 200'000;
// The program's end waits this long for work that was asked to stop.
constexpr std::chrono::seconds kPatienceAtQuit(5);
constexpr rgb_color kGrey = {216, 216, 216, 255};
constexpr float kWidth = 340;
constexpr float kEdge = 10;
constexpr float kBarLineAndGap = 32;
constexpr float kFullBar = 1000;
constexpr size_t kMostTextBytes = 1500;

std::string Amount(int64 bytes)
{
    const char* const units[] = {"KB", "MB", "GB", "TB"};
    double value = static_cast<double>(bytes) / 1024;
    size_t unit = 0;
    while (value >= 1024 && unit < std::size(units) - 1) {
        value /= 1024;
        unit++;
    }
    const auto tenths = static_cast<int64>(value * 10);
    std::string text = std::to_string(tenths / 10);
    if (unit > 0) {
        text += '.';
        text += std::to_string(tenths % 10);
    }
    return text + ' ' + units[unit];
}

} // namespace

ProgressWindow::ProgressWindow(const char* title, std::shared_ptr<ProgressState> state)
    : BWindow(BRect(0, 0, kWidth, 100), title, B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL,
              B_NOT_RESIZABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE),
      fState(std::move(state))
{
    SetAnswerDelay(kAnswersAfterFirstFrame, 0);
    BuildViews();
    MoveTo(BAlert::AlertPosition(Bounds().Width(), Bounds().Height()));
}

ProgressWindow::~ProgressWindow() = default;

void ProgressWindow::BuildViews()
{
    const BFont font;
    font_height letters;
    font.GetHeight(&letters);
    const float line = std::ceil(letters.ascent + letters.descent);
    const float barTop = kEdge + line + 6;
    const float buttonTop = barTop + line + kBarLineAndGap;
    const float buttonHeight = line + 9;
    const float buttonWidth = std::max(75.0F, std::ceil(font.StringWidth("Stop")) + 20);
    ResizeTo(kWidth, buttonTop + buttonHeight + kEdge);

    auto* ground = new BView(Bounds(), "ProgressGround", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
    ground->SetViewColor(kGrey);
    ground->SetLowColor(kGrey);
    AddChild(ground);
    const float right = kWidth - kEdge;
    fLine = new BStringView(BRect(kEdge, kEdge, right, kEdge + line), "name", "");
    fLine->SetTruncation(B_TRUNCATE_MIDDLE);
    ground->AddChild(fLine);
    fBar = new BStatusBar(BRect(kEdge, barTop, right, barTop + line + 17), "progress");
    fBar->SetMaxValue(kFullBar);
    ground->AddChild(fBar);
    const BRect place(right - buttonWidth, buttonTop, right, buttonTop + buttonHeight);
    auto* button = new BButton(place, "Stop", "Stop", new BMessage(kStop));
    ground->AddChild(button);
    button->SetTarget(this);
}

void ProgressWindow::DispatchMessage(BMessage* message, BHandler* handler)
{
    const char* bytes = nullptr;
    if (message->what == B_KEY_DOWN && message->FindString("bytes", &bytes) == B_OK &&
        bytes[0] == B_ESCAPE && bytes[1] == 0) {
        Stop();
        return;
    }
    BWindow::DispatchMessage(message, handler);
}

void ProgressWindow::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case kShowLate:
        ShowLate();
        break;
    case kLook:
        ShowState();
        break;
    case kStop:
        Stop();
        break;
    default:
        BWindow::MessageReceived(message);
    }
}

bool ProgressWindow::QuitRequested()
{
    Stop();
    UpdateIfNeeded(); // it says that it stops while it waits
    std::unique_lock<std::mutex> lock(fState->mutex);
    fState->ended.wait_for(lock, kPatienceAtQuit, [this] { return fState->isEnded; });
    return fState->isEnded;
}

void ProgressWindow::ShowLate()
{
    {
        const std::lock_guard<std::mutex> lock(fState->mutex);
        if (fState->isEnded) {
            return;
        }
    }
    ShowState();
    Show();
    const BMessage look(kLook);
    BMessageRunner::StartSending(BMessenger(this), &look, kFrame, -1);
}

void ProgressWindow::ShowState()
{
    std::string name;
    int64 total = 0;
    int64 done = 0;
    {
        const std::lock_guard<std::mutex> lock(fState->mutex);
        name = fState->isStopped ? "Stopping..." : fState->name;
        total = fState->totalBytes;
        done = fState->doneBytes;
    }
    fLine->SetText(name.c_str());
    std::string amount = Amount(done);
    if (total > 0) {
        done = std::min(done, total);
        amount = Amount(done) + " of " + Amount(total);
        const double part = static_cast<double>(done) / static_cast<double>(total);
        const auto value = static_cast<float>(std::floor(part * kFullBar));
        fBar->Update(value - fBar->CurrentValue(), nullptr, amount.c_str());
    } else {
        fBar->Update(0, nullptr, amount.c_str());
    }
}

void ProgressWindow::Stop()
{
    {
        const std::lock_guard<std::mutex> lock(fState->mutex);
        fState->isStopped = true;
    }
    ShowState();
}

Progress::Progress(const char* title) : fState(std::make_shared<ProgressState>())
{
    auto* window = new ProgressWindow(title, fState);
    window->Lock();
    window->Run();
    if (window->Thread() <= 0) {
        window->Quit();
        return;
    }
    const BMessage late(kShowLate);
    BMessageRunner::StartSending(BMessenger(window), &late, kPatience, 1);
    fWindow = BMessenger(window);
    window->Unlock();
}

Progress::~Progress()
{
    {
        const std::lock_guard<std::mutex> lock(fState->mutex);
        fState->isEnded = true;
    }
    fState->ended.notify_all();
    fWindow.SendMessage(B_QUIT_REQUESTED);
}

void Progress::SetTotal(int64 bytes)
{
    const std::lock_guard<std::mutex> lock(fState->mutex);
    fState->totalBytes = bytes;
}

void Progress::Advance(int64 bytes, const char* name)
{
    const std::lock_guard<std::mutex> lock(fState->mutex);
    fState->doneBytes += bytes;
    if (name != nullptr) {
        fState->name = name;
    }
}

bool Progress::WasStopped() const
{
    const std::lock_guard<std::mutex> lock(fState->mutex);
    return fState->isStopped;
}

void Progress::Stop()
{
    const std::lock_guard<std::mutex> lock(fState->mutex);
    fState->isStopped = true;
}

void Tell(const char* title, const std::string& text, alert_type type)
{
    std::string shown = text;
    if (shown.size() > kMostTextBytes) {
        size_t end = kMostTextBytes;
        while (end > 0 && (static_cast<unsigned char>(shown[end]) & 0xC0) == 0x80) {
            end--; // not within a letter
        }
        shown = shown.substr(0, end) + "...";
    }
    // It deletes itself once it is answered.
    auto* alert = new BAlert(title, shown.c_str(), "OK", nullptr, nullptr, B_WIDTH_AS_USUAL, type);
    alert->Go();
}

} // namespace norvane_addons
