#include "ftp/sessions/PasswordWin.h"

#include "MessageCodes.h"
#include "fileops/windows/DialogLayout.h"
#include "ftp/sessions/PassControl.h"

#include <Button.h>
#include <InterfaceDefs.h>
#include <Looper.h>
#include <Message.h>
#include <MessageFilter.h>
#include <StringView.h>
#include <View.h>

#include <algorithm>

namespace norvane {

namespace {

constexpr float kWidth = 340;
constexpr float kGap = 8;
constexpr float kFieldPadding = 8;
// The field takes what is typed at once; the buttons wait until a person has seen them.
constexpr bigtime_t kAnswersAfterFirstFrame = 200'000;

/// Return in the field is for the default button, though the field swallows it.
class ReturnFilter : public BMessageFilter
{
public:
    ReturnFilter() : BMessageFilter(B_KEY_DOWN) {}

    filter_result Filter(BMessage* message, BHandler** target) override
    {
        int8 byte = 0;
        const bool isReturn = message->FindInt8("byte", &byte) == B_OK && byte == B_ENTER;
        if (isReturn && dynamic_cast<BButton*>(*target) == nullptr) {
            *target = Looper();
        }
        return B_DISPATCH_MESSAGE;
    }
};

} // namespace

PasswordWin::PasswordWin(BRect frame, BHandler* target, const std::string& user,
                         const std::string& host)
    : BWindow(CentredFrame(frame, kWidth, kWidth), "Password", B_MODAL_WINDOW,
              B_NOT_RESIZABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE),
      fTarget(target)
{
    SetAnswerDelay(kAnswersAfterFirstFrame, 0);
    if (auto* opener = dynamic_cast<BWindow*>(target->Looper())) {
        SetOpener(opener);
    }
    BuildContents("Password of " + user + " on " + host + ":");
    MoveTo(CentredFrame(frame, Bounds().Width(), Bounds().Height()).LeftTop());
    AddCommonFilter(new ReturnFilter); // adopted
}

PasswordWin::~PasswordWin() = default;

void PasswordWin::BuildContents(const std::string& label)
{
    BView* ground = MakeDialogGround(Bounds(), "PasswordContainer");
    AddChild(ground);
    const float right = Bounds().right - kDialogEdge;
    float top = kDialogEdge;
    auto* text = new BStringView(BRect(kDialogEdge, top, right, top + LineHeight()), "Label1",
                                 label.c_str());
    text->SetTruncation(B_TRUNCATE_MIDDLE);
    ground->AddChild(text);
    top += LineHeight() + kGap;
    fField = new PassControl(BRect(kDialogEdge, top, right, top + LineHeight() + kFieldPadding),
                             "Password", nullptr, "", nullptr);
    ground->AddChild(fField);
    fField->SetDivider(0);
    top += LineHeight() + kFieldPadding + 2 * kGap;
    const float width = std::max(ButtonWidth("OK"), ButtonWidth("Cancel"));
    const float bottom = top + ButtonHeight();
    auto* accept = new BButton(BRect(right - width, top, right, bottom), "bOK", "OK",
                               new BMessage(kSessionAccepted));
    const float left = right - width - kGap;
    auto* cancel = new BButton(BRect(left - width, top, left, bottom), "bCancel", "Cancel",
                               new BMessage(kSessionCancelled));
    ground->AddChild(cancel);
    ground->AddChild(accept);
    accept->SetTarget(this);
    cancel->SetTarget(this);
    accept->MakeDefault(true);
    ResizeTo(Bounds().Width(), bottom + kDialogEdge);
    fField->MakeFocus(true);
}

void PasswordWin::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case kSessionAccepted: {
        BMessage answer(kPasswordGiven);
        answer.AddString("text", fField->actualText());
        fTarget.SendMessage(&answer);
        fHasAnswered = true;
        PostMessage(B_QUIT_REQUESTED);
        break;
    }
    case kSessionCancelled:
        PostMessage(B_QUIT_REQUESTED);
        break;
    default:
        BWindow::MessageReceived(message);
    }
}

bool PasswordWin::QuitRequested()
{
    if (!fHasAnswered) {
        fTarget.SendMessage(kPasswordGiven);
        fHasAnswered = true;
    }
    return true;
}

} // namespace norvane
