#include "panes/PatternWin.h"

#include "MessageCodes.h"
#include "panes/NamePatterns.h"

#include <Button.h>
#include <Font.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <MessageFilter.h>
#include <StringView.h>
#include <TextControl.h>
#include <TextView.h>
#include <View.h>

#include <algorithm>
#include <cmath>

namespace norvane {

namespace {

constexpr float kMargin = 10;
constexpr float kLineHeight = 20;
constexpr float kFieldTop = 24;
constexpr float kHintsTop = 48;
constexpr float kHintHeight = 17;
constexpr float kButtonWidth = 80;
constexpr float kButtonHeight = 30;
constexpr rgb_color kGrey = {216, 216, 216, 255};
constexpr rgb_color kHintColor = {78, 89, 126, 255};
constexpr rgb_color kWrong = {170, 0, 0, 255};
// The field takes what is typed at once; the buttons wait until a person has seen them.
constexpr bigtime_t kAnswersAfterFirstFrame = 200'000;
constexpr uint32 kAccepted = 'Pat1';
constexpr uint32 kCancelled = 'Pat0';

constexpr const char* kHints[] = {
    "* any text,  ? any character,  [a-z] one of these;  *.c; *.h several",
    "Case counts only where a capital is typed.  A / at the end: folders only",
};
constexpr float kHintCount = 2;
constexpr float kHeight = kHintsTop + kHintHeight * kHintCount + kButtonHeight + 12;

const char* Question(PatternUse use)
{
    return use == PatternUse::kMark ? "Which names do you want to mark?"
                                    : "Which names do you want to unmark?";
}

float Width()
{
    const BFont font(be_plain_font);
    float widest = 0;
    for (const char* hint : kHints) {
        widest = std::max(widest, font.StringWidth(hint));
    }
    return std::ceil(widest) + 2 * kMargin + 4;
}

BRect CentredFrame(BRect around, float width)
{
    const float left = std::round((around.left + around.right - width) / 2);
    const float top = std::round((around.top + around.bottom - kHeight) / 2);
    return BRect(left, top, left + width, top + kHeight);
}

/// The arrows up and down, which mean nothing in one line of text.
class ArrowFilter : public BMessageFilter
{
public:
    ArrowFilter() : BMessageFilter(B_KEY_DOWN) {}

    filter_result Filter(BMessage* message, BHandler** target) override
    {
        int8 byte = 0;
        auto* window = dynamic_cast<PatternWin*>(Looper());
        if (window == nullptr || dynamic_cast<BTextView*>(*target) == nullptr ||
            message->FindInt8("byte", &byte) != B_OK ||
            (byte != B_UP_ARROW && byte != B_DOWN_ARROW)) {
            return B_DISPATCH_MESSAGE;
        }
        if (byte == B_UP_ARROW) {
            window->ShowOlder();
        } else {
            window->ShowNewer();
        }
        return B_SKIP_MESSAGE;
    }
};

} // namespace

PatternWin::PatternWin(BRect frame, BHandler* target, PatternUse use, std::vector<std::string> last)
    : BWindow(CentredFrame(frame, Width()), use == PatternUse::kMark ? "Mark" : "Unmark",
              B_MODAL_WINDOW, B_NOT_RESIZABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE),
      fTarget(target), fUse(use), fHistory(last)
{
    SetAnswerDelay(kAnswersAfterFirstFrame, 0);
    SetOpener(dynamic_cast<BWindow*>(target->Looper()));
    BuildContents(last.empty() ? "*" : last.front());
    AddCommonFilter(new ArrowFilter); // adopted
    fField->MakeFocus(true);
}

PatternWin::~PatternWin() = default;

void PatternWin::BuildContents(const std::string& text)
{
    auto* background = new BView(Bounds(), "PatternBackground", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
    background->SetViewColor(kGrey);
    background->SetLowColor(kGrey);
    AddChild(background); // adopted, as are those below
    const float right = Bounds().right - kMargin;
    fLabel =
        new BStringView(BRect(kMargin, 2, right, 2 + kLineHeight), "PatternLabel", Question(fUse));
    background->AddChild(fLabel);
    float top = kHintsTop;
    for (const char* hint : kHints) {
        auto* line = new BStringView(BRect(kMargin, top, right, top + kHintHeight), nullptr, hint);
        background->AddChild(line);
        line->SetHighColor(kHintColor);
        top += kHintHeight;
    }
    AddButtons(*background, Bounds().Width(), top + 6);
    fField = new BTextControl(BRect(kMargin, kFieldTop, right, kFieldTop + kLineHeight),
                              "PatternText", nullptr, text.c_str(), nullptr);
    background->AddChild(fField);
}

void PatternWin::AddButtons(BView& background, float width, float top)
{
    const float middle = std::round(width / 2);
    const BRect right(middle + kMargin, top, middle + kMargin + kButtonWidth, top + kButtonHeight);
    auto* accept = new BButton(right.OffsetByCopy(-(kButtonWidth + 2 * kMargin), 0), "PatternOk",
                               "OK", new BMessage(kAccepted));
    auto* cancel = new BButton(right, "PatternCancel", "Cancel", new BMessage(kCancelled));
    for (BButton* button : {accept, cancel}) {
        background.AddChild(button);
        button->SetTarget(this);
    }
    accept->MakeDefault(true);
}

void PatternWin::WindowActivated(bool active)
{
    if (active) {
        fField->MakeFocus(true);
    }
    BWindow::WindowActivated(active);
}

void PatternWin::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case kAccepted:
        Answer();
        break;
    case kCancelled:
        Quit();
        break;
    default:
        BWindow::MessageReceived(message);
    }
}

void PatternWin::ShowOlder()
{
    ShowPattern(fHistory.Older(fField->Text()));
}

void PatternWin::ShowNewer()
{
    ShowPattern(fHistory.Newer(fField->Text()));
}

void PatternWin::ShowPattern(const std::string& text)
{
    fField->SetText(text.c_str());
    fField->TextView()->Select(0, fField->TextView()->TextLength());
}

void PatternWin::Answer()
{
    if (NamePatterns(fField->Text()).IsEmpty()) {
        fLabel->SetHighColor(kWrong);
        fLabel->SetText("Please type a pattern, such as *.txt");
        fField->MakeFocus(true);
        return;
    }
    BMessage answer(kPatternTyped);
    answer.AddString("text", fField->Text());
    answer.AddBool("marks", fUse == PatternUse::kMark);
    fTarget.SendMessage(&answer);
    Quit();
}

} // namespace norvane
