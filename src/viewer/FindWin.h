#pragma once

#include <Messenger.h>
#include <Window.h>

class BCheckBox;
class BStringView;
class BTextControl;

namespace norvane {

/// Asks what is to be found in a text, and whether that is a regular expression; one that is none
/// is told of inside, and asked for again.
///
/// The answer is a kTextToFind: string "text", bool "expression".
class FindWin : public BWindow
{
public:
    /// Centred on `frame`, hidden; stays above the handler's window.
    FindWin(BRect frame, BHandler* target, const char* text, bool isExpression);
    ~FindWin() override;

    // BWindow
    void WindowActivated(bool active) override;
    void MessageReceived(BMessage* message) override;

private:
    void BuildContents(const char* text, bool isExpression);
    void Answer();

    const BMessenger fTarget;
    BStringView* fLabel = nullptr; // the views are borrowed from the window's tree
    BTextControl* fField = nullptr;
    BCheckBox* fBox = nullptr;
};

} // namespace norvane
