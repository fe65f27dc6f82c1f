#pragma once

#include <Messenger.h>
#include <Rect.h>
#include <Window.h>

#include <string>

namespace norvane {

class PassControl;

/// Asks for a password that a server wants, which nobody keeps on the disk.
///
/// The answer is posted to a handler as kPasswordGiven, with the string "text" when the person gave
/// one; closing the window counts as an answer without. Ownership: deletes itself.
class PasswordWin : public BWindow
{
public:
    /// Centred on `frame`, hidden; stays above the handler's window.
    PasswordWin(BRect frame, BHandler* target, const std::string& user, const std::string& host);
    ~PasswordWin() override;

    // BWindow
    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override;

private:
    void BuildContents(const std::string& label);

    const BMessenger fTarget;
    PassControl* fField = nullptr;
    bool fHasAnswered = false;
};

} // namespace norvane
