#pragma once

#include <Application.h>

#include <string>
#include <vector>

namespace norvane {

class NorvaneWindow;

/// The program: one main window, open until the person quits.
class NorvaneApplication : public BApplication
{
public:
    /// `folders` take the place of the saved ones, from the first pane on.
    explicit NorvaneApplication(const std::vector<std::string>& folders);

    // BApplication
    /// Quits once no file operation is running any more. The main window has already saved and
    /// closed: its windows are not asked again, and the lock of a busy one is never waited for.
    bool QuitRequested() override;
    /// Shows files that others ask to be shown.
    void RefsReceived(BMessage* message) override;
    void MessageReceived(BMessage* message) override;
};

} // namespace norvane
