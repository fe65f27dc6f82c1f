#include "app/NorvaneApplication.h"

#include "MessageCodes.h"
#include "app/NorvaneWindow.h"
#include "fileops/engine/Operations.h"
#include "fileops/engine/ProblemList.h"
#include "outside/AddOnRun.h"
#include "viewer/ViewerWindow.h"

#include <Alert.h>
#include <Invoker.h>
#include <Message.h>
#include <MessageRunner.h>
#include <Screen.h>

namespace norvane {

namespace {

// Until the person is asked whether to wait for an add-on, and asked again. Units: microseconds.
constexpr bigtime_t kFirstPatience = 1'000'000;
constexpr bigtime_t kLongPatience = 30'000'000;

} // namespace

NorvaneApplication::NorvaneApplication(const std::vector<std::string>& folders)
    : BApplication("application/x-vnd.Be-Norvane")
{
    if (InitCheck() != B_OK) {
        return;
    }
    const BRect screen = BScreen(B_MAIN_SCREEN_ID).Frame();
    const BRect frame(screen.left + 10, screen.top + 40, screen.right - 20, screen.bottom - 50);
    NorvaneWindow* window = new NorvaneWindow(frame, true, folders);
    window->Show();
}

NorvaneApplication::~NorvaneApplication() = default;

bool NorvaneApplication::QuitRequested()
{
    if (!fLeavesAddOns && !AddOnRun::AtWork().empty()) {
        WaitForAddOns();
        return false;
    }
    Operations::BeginQuit();
    // A window of an add-on that is left alone has no say.
    const bool quits = BApplication::QuitRequested() || (fLeavesAddOns && Operations::Count() == 0);
    if (!quits) {
        Operations::Resume();
    }
    return quits;
}

void NorvaneApplication::RefsReceived(BMessage* message)
{
    ViewerWindow::RefsReceived(message);
}

void NorvaneApplication::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case kOpenViewers:
        ViewerWindow::OpenViewers(*message);
        break;
    case kAskAboutAddOns:
        AskAboutAddOns();
        break;
    case kQuitAnswered:
        QuitAnswered(*message);
        break;
    case kAddOnsEnded:
        AddOnsEnded();
        break;
    default:
        BApplication::MessageReceived(message);
    }
}

void NorvaneApplication::WaitForAddOns()
{
    if (!fIsToQuit) {
        fIsToQuit = true;
        AddOnRun::TellWhenEnded();
        AskSoon(kFirstPatience);
    }
}

void NorvaneApplication::AskSoon(bigtime_t patience)
{
    fPatience =
        std::make_unique<BMessageRunner>(BMessenger(this), BMessage(kAskAboutAddOns), patience, 1);
}

void NorvaneApplication::AskAboutAddOns()
{
    const std::vector<std::string> names = AddOnRun::AtWork();
    if (!fIsToQuit || names.empty()) {
        return;
    }
    const std::string text =
        ShownName(names.front()) +
        " is still at work.\n\nNorvane ends when it is done. To quit now breaks "
        "its work off.";
    auto* alert = new BAlert("Hey", text.c_str(), "Quit now", "Wait", nullptr, B_WIDTH_AS_USUAL,
                             B_WARNING_ALERT);
    fQuestion = BMessenger(alert);
    alert->Go(new BInvoker(new BMessage(kQuitAnswered), this));
}

void NorvaneApplication::QuitAnswered(const BMessage& answer)
{
    if (!fIsToQuit) {
        return; // it has ended meanwhile
    }
    if (answer.GetInt32("which", -1) == 0) {
        fLeavesAddOns = true;
        PostMessage(B_QUIT_REQUESTED);
    } else {
        AskSoon(kLongPatience);
    }
}

void NorvaneApplication::AddOnsEnded()
{
    if (fIsToQuit) {
        fIsToQuit = false;
        fPatience.reset();
        fQuestion.SendMessage(B_QUIT_REQUESTED);
        PostMessage(B_QUIT_REQUESTED);
    }
}

} // namespace norvane
