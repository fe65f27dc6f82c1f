#include "app/NorvaneApplication.h"

#include "app/NorvaneWindow.h"
#include "fileops/engine/Operations.h"

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

} // namespace norvane
