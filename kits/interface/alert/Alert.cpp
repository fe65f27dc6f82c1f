#include <Alert.h>

#include "AlertParts.h"
#include "interface/views/Look.h"
#include "interface/views/WindowAccess.h"
#include "interface/views/WindowState.h"

#include <AppDefs.h>
#include <Button.h>
#include <Invoker.h>
#include <Message.h>
#include <Messenger.h>
#include <OS.h>
#include <Screen.h>

#include "app/LongWork.h"
#include "app/ProgramEnd.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

constexpr uint32 kAnswered = 'kAns'; // from the buttons; "which" (int32)

constexpr float kNarrowest = 310;
constexpr float kUsualWidth = 400;
constexpr float kWidest = 600;
constexpr float kButtonGap = 10;
constexpr float kOffsetGap = 30; // more, beside the leftmost button of offset spacing
constexpr float kEdge = 12;
constexpr float kUsualButton = 75;
constexpr float kButtonHeight = 24;
constexpr float kFrameRoom = 48; // for the window's title and edges, and what lies at the screen's
constexpr bigtime_t kReadingTime = 200'000;
// Of an alert that comes unasked, while somebody may be typing into another window.
constexpr bigtime_t kQuietTime = 500'000;
// How often a window that waits for an answer looks whether it has something to paint.
constexpr bigtime_t kPaintInterval = 25'000;

BWindow* WindowOfThisThread()
{
    return dynamic_cast<BWindow*>(BLooper::LooperForThread(find_thread(nullptr)));
}

// A window that shows progress has no keys of its own: whoever types means another one.
bool ComesUnasked()
{
    BWindow* maker = WindowOfThisThread();
    return maker != nullptr && !kits::WindowAccess::State(*maker).takesKeys;
}

} // namespace

BAlert::BAlert(const char* title, const char* text, const char* button1, const char* button2,
               const char* button3, button_width width, alert_type type)
    : BAlert(title, text, button1, button2, button3, width, B_EVEN_SPACING, type)
{
}

BAlert::BAlert(const char* title, const char* text, const char* button1, const char* button2,
               const char* button3, button_width width, button_spacing spacing, alert_type type)
    : BWindow(BRect(100, 100, 100 + kNarrowest, 200), title, B_TITLED_WINDOW_LOOK,
              B_MODAL_APP_WINDOW_FEEL,
              B_NOT_RESIZABLE | B_NOT_CLOSABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE |
                  B_ASYNCHRONOUS_CONTROLS),
      fText(text != nullptr ? text : ""), fSpacing(spacing),
      fTextView(new kits::AlertTextView(Bounds(), fText, type)),
      fAnswer(std::make_shared<kits::AlertAnswer>())
{
    AddChild(fTextView); // adopted
    SetAnswerDelay(kReadingTime, ComesUnasked() ? kQuietTime : 0);
    const char* const labels[3] = {button1, button2, button3};
    AddButtons(fTextView, labels, width);
    LayOut();
}

BAlert::~BAlert()
{
    // Whoever waits must not wait for ever when the alert is quit from outside.
    fAnswer->Give(-1);
}

void BAlert::SetShortcut(int32 button, char key)
{
    if (button >= 0 && button < static_cast<int32>(fShortcuts.size())) {
        fShortcuts[static_cast<size_t>(button)] = key;
    }
}

char BAlert::Shortcut(int32 button) const
{
    return button >= 0 && button < static_cast<int32>(fShortcuts.size())
               ? fShortcuts[static_cast<size_t>(button)]
               : '\0';
}

int32 BAlert::Go()
{
    // The alert deletes itself: nothing of it is touched after Show().
    const std::shared_ptr<kits::AlertAnswer> answer = fAnswer;
    const BMessenger alert(this);
    BWindow* waiting = WindowOfThisThread();
    PlaceOnScreen();
    // It answers nothing as long as it is locked, so that it is still there to be looked at.
    const bool isLocked = Lock();
    Show();
    if (isLocked && Thread() <= 0) {
        Quit(); // no thread was to be had
        return -1;
    }
    if (isLocked) {
        Unlock();
    }
    const kits::LongWork waitingIsMeant;
    while (!answer->WaitFor(kPaintInterval)) {
        if (kits::ProgramEnd::IsRequested()) {
            alert.SendMessage(B_QUIT_REQUESTED); // nobody may be there to answer
        }
        if (waiting != nullptr) {
            waiting->UpdateIfNeeded();
        }
    }
    return answer->Button();
}

status_t BAlert::Go(BInvoker* invoker)
{
    fInvoker.reset(invoker);
    PlaceOnScreen();
    Show();
    return B_OK;
}

BButton* BAlert::ButtonAt(int32 button) const
{
    return button >= 0 && button < static_cast<int32>(fButtons.size())
               ? fButtons[static_cast<size_t>(button)]
               : nullptr;
}

alert_type BAlert::Type() const
{
    return fTextView->Type();
}

void BAlert::SetType(alert_type type)
{
    fTextView->SetType(type);
    LayOut();
}

BPoint BAlert::AlertPosition(float width, float height)
{
    // Only the window whose thread asks may be looked at: no other lock is taken here.
    BWindow* opener = WindowOfThisThread();
    if (opener != nullptr && (!opener->IsLocked() || opener->IsHidden())) {
        opener = nullptr;
    }
    const BRect screen = BScreen(opener).Frame();
    const BRect over = opener != nullptr ? opener->Frame() : screen;
    const float left = std::floor(over.left + (over.Width() - width) / 2);
    // A little above the middle, where eyes rest.
    const float top = std::floor(over.top + (over.Height() - height) / 3);
    return BPoint(std::max(screen.left, std::min(left, screen.right - width)),
                  std::max(screen.top, std::min(top, screen.bottom - height)));
}

// BWindow

void BAlert::MessageReceived(BMessage* message)
{
    int32 which = 0;
    if (message->what == kAnswered && message->FindInt32("which", &which) == B_OK) {
        Answer(which);
    } else {
        BWindow::MessageReceived(message);
    }
}

void BAlert::DispatchMessage(BMessage* message, BHandler* handler)
{
    if (message->what == B_KEY_DOWN && AnswerByKey(*message)) {
        return;
    }
    BWindow::DispatchMessage(message, handler);
}

bool BAlert::QuitRequested()
{
    return true;
}

void BAlert::Answer(int32 button)
{
    const std::shared_ptr<kits::AlertAnswer> answer = fAnswer;
    if (fInvoker && fInvoker->Message() != nullptr) {
        BMessage message(*fInvoker->Message());
        message.AddInt32("which", button);
        fInvoker->Invoke(&message);
    }
    // Off the screen first: whoever waits goes on with a screen that shows no alert.
    Hide();
    answer->Give(button);
    Quit(); // deletes this
}

// True when the key was an answer, or would have been at another time.
bool BAlert::AnswerByKey(const BMessage& key)
{
    const char* bytes = nullptr;
    int32 held = 0;
    key.FindInt32("modifiers", &held);
    if (key.FindString("bytes", &bytes) != B_OK || bytes[0] == '\0' || bytes[1] != '\0' ||
        (static_cast<uint32>(held) & (B_COMMAND_KEY | B_OPTION_KEY)) != 0) {
        return false;
    }
    if (fTextView->ScrollByKey(bytes[0])) {
        return true;
    }
    BButton* pressed = nullptr;
    for (size_t i = 0; i < fButtons.size(); i++) {
        const bool isCancel = std::strcmp(fButtons[i]->Label(), "Cancel") == 0;
        if ((fShortcuts[i] != 0 && fShortcuts[i] == bytes[0]) ||
            (bytes[0] == B_ESCAPE && (isCancel || fButtons.size() == 1))) {
            pressed = fButtons[i];
        }
    }
    if (bytes[0] == B_ENTER && pressed == nullptr) {
        // A button that was tabbed to is meant before the default one.
        auto* focused = dynamic_cast<BButton*>(CurrentFocus());
        pressed = focused != nullptr ? focused : fButtons.back();
    }
    if (pressed == nullptr) {
        return bytes[0] == B_ESCAPE;
    }
    if (kits::look::IsFreshKey(&key) && TakesAnswers()) {
        pressed->Invoke();
    }
    return true;
}

// Building

void BAlert::LayOut()
{
    if (!fButtons.empty()) {
        fButtons.back()->MakeDefault(false); // its mark is no part of its width
    }
    kits::AlertTextView* text = fTextView;
    const float gap = fSpacing == B_OFFSET_SPACING && fButtons.size() > 1 ? kOffsetGap : 0;
    const float buttonsWidth = ButtonsWidth() + gap;
    const BRect screen = BScreen(B_MAIN_SCREEN_ID).Frame();
    const float needed = std::max(kNarrowest, text->TextLeft() + buttonsWidth + 2 * kEdge);
    float windowWidth = std::min(needed, screen.Width());
    // Long texts get a broader window before they get a high one, lists one whose lines stay whole.
    float textHeight = text->HeightFor(windowWidth);
    for (float wider : {kUsualWidth, kWidest}) {
        wider = std::min(wider, screen.Width());
        const bool isHigh = textHeight > (wider <= kUsualWidth ? 80 : screen.Height() / 2);
        if (wider > windowWidth && (isHigh || text->BreaksAListLine(windowWidth))) {
            windowWidth = wider;
            textHeight = text->HeightFor(windowWidth);
        }
    }
    textHeight = std::min(textHeight, screen.Height() - kFrameRoom - kButtonHeight - kEdge);
    ResizeTo(windowWidth, textHeight + kButtonHeight + kEdge);
    text->SetRoom(windowWidth, textHeight);
    PlaceButtons(textHeight, gap);
}

void BAlert::AddButtons(BView* parent, const char* const labels[3], button_width width)
{
    float widest = kUsualButton;
    std::vector<float> widths;
    for (int32 i = 0; i < 3 && labels[i] != nullptr; i++) {
        auto* message = new BMessage(kAnswered);
        message->AddInt32("which", i);
        auto* button = new BButton(BRect(0, 0, kUsualButton, kButtonHeight), labels[i], labels[i],
                                   message, B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM); // adopts it
        const float own = std::ceil(parent->StringWidth(labels[i])) + 20;
        widths.push_back(own);
        widest = std::max(widest, own);
        parent->AddChild(button); // adopted
        fButtons.push_back(button);
    }
    fShortcuts.assign(fButtons.size(), '\0');
    for (size_t i = 0; i < fButtons.size(); i++) {
        float chosen = std::max(kUsualButton, widths[i]);
        if (width == B_WIDTH_FROM_WIDEST) {
            chosen = widest;
        } else if (width == B_WIDTH_FROM_LABEL) {
            chosen = widths[i];
        }
        fButtons[i]->ResizeTo(chosen, kButtonHeight);
    }
}

float BAlert::ButtonsWidth() const
{
    float sum = 0;
    for (const BButton* button : fButtons) {
        sum += button->Bounds().Width() + 1 + kButtonGap;
    }
    return std::max(0.0f, sum - kButtonGap);
}

// From the right edge to the left; the rightmost is the default one.
void BAlert::PlaceButtons(float top, float offsetGap)
{
    float right = Bounds().right - kEdge;
    for (size_t i = fButtons.size(); i-- > 0;) {
        const float width = fButtons[i]->Bounds().Width();
        if (i == 0) {
            right -= offsetGap;
        }
        fButtons[i]->MoveTo(right - width, top);
        right -= width + 1 + kButtonGap;
    }
    if (!fButtons.empty()) {
        fButtons.back()->MakeDefault(true);
    }
}

void BAlert::PlaceOnScreen()
{
    MoveTo(AlertPosition(Bounds().Width(), Bounds().Height()));
    if (DefaultButton() != nullptr) {
        DefaultButton()->MakeFocus(); // seen from the first frame: arrows start from it
    }
}
