#include "fileops/windows/GetTextWin.h"

#include "MessageCodes.h"

#include <Button.h>
#include <Font.h>
#include <Handler.h>
#include <Message.h>
#include <StringView.h>
#include <TextControl.h>
#include <View.h>

#include <algorithm>
#include <cmath>

namespace norvane {

namespace {

constexpr float kFirstWidth = 280;
constexpr float kHeight = 80;
constexpr float kTextHeight = 20;
constexpr float kFieldTop = 22;
constexpr float kButtonTop = 44;
constexpr float kButtonHeight = 30;
constexpr float kButtonMargin = 16;
constexpr rgb_color kGrey = {216, 216, 216, 255};
// The field takes what is typed at once; the buttons wait until a person has seen them.
constexpr bigtime_t kAnswersAfterFirstFrame = 200'000;

constexpr size_t kMostButtons = 3;

BRect CentredFrame(BRect around, float width)
{
    const float left = std::round((around.left + around.right) / 2 - width / 2);
    const float top = std::round((around.top + around.bottom) / 2 - kHeight / 2);
    return BRect(left, top, left + width, top + kHeight);
}

BWindow* WindowOf(BHandler* handler)
{
    return handler != nullptr ? dynamic_cast<BWindow*>(handler->Looper()) : nullptr;
}

} // namespace

GetTextWin::GetTextWin(BRect frame, const char* title, BHandler* target, const char* label,
                       const char* text, int32 replyCode, const char* button1, const char* button2,
                       const char* button3)
    : BWindow(CentredFrame(frame, kFirstWidth), title, B_MODAL_WINDOW,
              B_NOT_RESIZABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE),
      fTarget(target), fReplyCode(replyCode)
{
    SetAnswerDelay(kAnswersAfterFirstFrame, 0);
    SetOpener(WindowOf(target));
    std::vector<const char*> buttons = {button1};
    if (button2 != nullptr) {
        buttons.push_back(button2);
        if (button3 != nullptr) {
            buttons.push_back(button3);
        }
    }
    BuildContents(label, text, std::move(buttons));
    LayOut(frame);
    fButtons[0]->MakeDefault(true);
    fField->MakeFocus(true);
}

GetTextWin::~GetTextWin() = default;

void GetTextWin::BuildContents(const char* label, const char* text,
                               std::vector<const char*> buttons)
{
    fBackground = new BView(Bounds(), "GetTextBackground", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
    fBackground->SetViewColor(kGrey);
    fBackground->SetLowColor(kGrey);
    AddChild(fBackground);
    fLabel = new BStringView(BRect(0, 0, kTextHeight, kTextHeight), "Label1", label);
    fBackground->AddChild(fLabel);
    const char* const names[kMostButtons] = {"Button1", "Button2", "Button3"};
    for (size_t i = 0; i < std::min(buttons.size(), kMostButtons); ++i) {
        BMessage* message = new BMessage(kButtonPressed + static_cast<uint32>(i));
        auto* button =
            new BButton(BRect(0, 0, kButtonHeight, kButtonHeight), names[i], buttons[i], message);
        fBackground->AddChild(button);
        button->SetTarget(this);
        fButtons.push_back(button);
    }
    // In front of the default button's mark, which reaches up to it.
    fField =
        new BTextControl(BRect(0, 0, kTextHeight, kTextHeight), "Text1", nullptr, text, nullptr);
    fBackground->AddChild(fField);
}

void GetTextWin::LayOut(BRect around)
{
    BFont font;
    fLabel->GetFont(&font);
    float widest = 0;
    for (const BButton* button : fButtons) {
        widest = std::max(widest, std::ceil(font.StringWidth(button->Label())));
    }
    const float count = static_cast<float>(fButtons.size());
    const float labelWidth = std::ceil(font.StringWidth(fLabel->Text()));
    const float width = std::max(labelWidth, widest * count + 96) + 10;
    const BRect frame = CentredFrame(around, width);
    MoveTo(frame.LeftTop());
    ResizeTo(width, kHeight);

    const float left = std::floor((width - labelWidth) / 2);
    fLabel->MoveTo(left, 0);
    fLabel->ResizeTo(labelWidth, kTextHeight);
    fField->MoveTo(left, kFieldTop);
    fField->ResizeTo(labelWidth, kTextHeight);
    const float gap = (width - widest * count - 48) / (count + 1);
    float x = gap;
    for (BButton* button : fButtons) {
        button->MoveTo(std::floor(x), kButtonTop);
        button->ResizeTo(widest + kButtonMargin, kButtonHeight);
        x += gap + widest + kButtonMargin;
    }
}

void GetTextWin::WindowActivated(bool active)
{
    if (active) {
        fField->MakeFocus(true);
    }
    BWindow::WindowActivated(active);
}

void GetTextWin::MessageReceived(BMessage* message)
{
    if (message->what >= kButtonPressed && message->what < kButtonPressed + fButtons.size()) {
        Answer(static_cast<int32>(message->what - kButtonPressed));
    } else {
        BWindow::MessageReceived(message);
    }
}

void GetTextWin::Answer(int32 button)
{
    BMessage reply(static_cast<uint32>(fReplyCode));
    reply.AddString("title", Title());
    reply.AddString("text", button == 0 ? fField->Text() : "");
    reply.AddInt8("button", static_cast<int8>(button));
    fTarget.SendMessage(&reply);
    Quit();
}

} // namespace norvane
