#pragma once

#include <Application.h>
#include <Messenger.h>

#include <memory>
#include <string>
#include <vector>

class BMessageRunner;

namespace norvane {

/// The program: one main window, open until the person quits.
class NorvaneApplication : public BApplication
{
public:
    /// `folders` take the place of the saved ones, from the first pane on.
    explicit NorvaneApplication(const std::vector<std::string>& folders);
    ~NorvaneApplication() override;

    // BApplication
    /// Quits once no file operation is running any more. The main window has already saved and
    /// closed: its windows are not asked again, and the lock of a busy one is never waited for. An
    /// add-on at work is waited for, too; when it takes long the person is asked.
    bool QuitRequested() override;
    /// Shows files that others ask to be shown.
    void RefsReceived(BMessage* message) override;
    void MessageReceived(BMessage* message) override;

private:
    void WaitForAddOns();
    void AskSoon(bigtime_t patience);
    void AskAboutAddOns();
    void QuitAnswered(const BMessage& answer);
    void AddOnsEnded();

    bool fIsToQuit = false;                    // once no add-on is at work any more
    bool fLeavesAddOns = false;                // in the middle of their work
    std::unique_ptr<BMessageRunner> fPatience; // until the person is asked about them
    BMessenger fQuestion;                      // the alert that asks
};

} // namespace norvane
