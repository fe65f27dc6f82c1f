#include "app/NorvaneApplication.h"

#include "MessageCodes.h"
#include "app/NorvaneWindow.h"
#include "fileops/engine/Operations.h"
#include "viewer/ViewerWindow.h"

#include <Message.h>
#include <Screen.h>

namespace norvane {

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

bool NorvaneApplication::QuitRequested()
{
    Operations::BeginQuit();
    const bool quits = BApplication::QuitRequested();
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
    if (message->what == kOpenViewers) {
        ViewerWindow::OpenViewers(*message);
    } else {
        BApplication::MessageReceived(message);
    }
}

} // namespace norvane
