#include "viewer/FindWin.h"

#include "MessageCodes.h"

#include <Button.h>
#include <CheckBox.h>
#include <Message.h>
#include <StringView.h>
#include <TextControl.h>
#include <TextPattern.h>
#include <View.h>

#include <cmath>
#include <string>

namespace norvane {

namespace {

constexpr float kWidth = 300;
constexpr float kHeight = 104;
constexpr float kMargin = 10;
constexpr float kTextHeight = 20;
constexpr float kFieldTop = 22;
constexpr float kBoxTop = 46;
constexpr float kButtonTop = 68;
constexpr float kButtonWidth = 80;
constexpr float kButtonHeight = 30;
constexpr rgb_color kGrey = {216, 216, 216, 255};
constexpr rgb_color kWrong = {170, 0, 0, 255};
// The field takes what is typed at once; the buttons wait until a person has seen them.
constexpr bigtime_t kAnswersAfterFirstFrame = 200'000;
constexpr uint32 kAccepted = 'Fnd1';
constexpr uint32 kCancelled = 'Fnd0';

BRect CentredFrame(BRect around)
{
    const float left = std::round((around.left + around.right - kWidth) / 2);
    const float top = std::round((around.top + around.bottom - kHeight) / 2);
    return BRect(left, top, left + kWidth, top + kHeight);
}

} // namespace

FindWin::FindWin(BRect frame, BHandler* target, const char* text, bool isExpression)
    : BWindow(CentredFrame(frame), "Find", B_MODAL_WINDOW,
              B_NOT_RESIZABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE),
      fTarget(target)
{
    SetAnswerDelay(kAnswersAfterFirstFrame, 0);
    SetOpener(dynamic_cast<BWindow*>(target->Looper()));
    BuildContents(text, isExpression);
    fField->MakeFocus(true);
}

FindWin::~FindWin() = default;

void FindWin::BuildContents(const char* text, bool isExpression)
{
    auto* background = new BView(Bounds(), "FindBackground", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
    background->SetViewColor(kGrey);
    background->SetLowColor(kGrey);
    AddChild(background); // adopted, as are those below
    const float right = kWidth - kMargin;
    fLabel = new BStringView(BRect(kMargin, 0, right, kTextHeight), "FindLabel",
                             "What text do you want to find?");
    background->AddChild(fLabel);
    fBox = new BCheckBox(BRect(kMargin, kBoxTop, right, kBoxTop + kTextHeight), "FindExpression",
                         "Regular expression", nullptr);
    fBox->SetValue(isExpression ? B_CONTROL_ON : B_CONTROL_OFF);
    background->AddChild(fBox);
    const float middle = std::round(kWidth / 2);
    auto* accept = new BButton(BRect(middle - kButtonWidth - kMargin, kButtonTop, middle - kMargin,
                                     kButtonTop + kButtonHeight),
                               "FindOk", "OK", new BMessage(kAccepted));
    background->AddChild(accept);
    auto* cancel = new BButton(BRect(middle + kMargin, kButtonTop, middle + kMargin + kButtonWidth,
                                     kButtonTop + kButtonHeight),
                               "FindCancel", "Cancel", new BMessage(kCancelled));
    background->AddChild(cancel);
    accept->SetTarget(this);
    cancel->SetTarget(this);
    accept->MakeDefault(true);
    fField = new BTextControl(BRect(kMargin, kFieldTop, right, kFieldTop + kTextHeight), "FindText",
                              nullptr, text, nullptr);
    background->AddChild(fField);
}

void FindWin::WindowActivated(bool active)
{
    if (active) {
        fField->MakeFocus(true);
    }
    BWindow::WindowActivated(active);
}

void FindWin::MessageReceived(BMessage* message)
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

void FindWin::Answer()
{
    const std::string text = fField->Text();
    const bool isExpression = fBox->Value() == B_CONTROL_ON;
    if (isExpression) {
        const BTextPattern pattern(text);
        if (pattern.InitCheck() != B_OK) {
            fLabel->SetHighColor(kWrong);
            fLabel->SetText(("Not an expression: " + pattern.Error()).c_str());
            fField->MakeFocus(true);
            return;
        }
    }
    BMessage answer(kTextToFind);
    answer.AddString("text", text.c_str());
    answer.AddBool("expression", isExpression);
    fTarget.SendMessage(&answer);
    Quit();
}

} // namespace norvane
