#pragma once

#include <Messenger.h>
#include <Rect.h>
#include <Window.h>

#include <vector>

class BButton;
class BMessage;
class BStringView;
class BTextControl;
class BView;

namespace norvane {

/// Asks for one line of text, with one to three buttons, and posts the answer to a handler.
///
/// The answer has the reply code and: "title" (string), "text" (string; empty unless the first
/// button was pressed), "button" (int8: 0 to 2). Closing the window otherwise posts nothing.
class GetTextWin : public BWindow
{
public:
    /// Centred on `frame`, hidden; stays above the handler's window. `button2` and `button3` may be
    /// null; without the second there is no third.
    GetTextWin(BRect frame, const char* title, BHandler* target, const char* label,
               const char* text, int32 replyCode, const char* button1, const char* button2,
               const char* button3);
    ~GetTextWin() override;

    // BWindow
    void WindowActivated(bool active) override;
    void MessageReceived(BMessage* message) override;

private:
    void BuildContents(const char* label, const char* text, std::vector<const char*> buttons);
    void LayOut(BRect around);
    void Answer(int32 button);

    BMessenger fTarget;
    int32 fReplyCode;
    BView* fBackground = nullptr;
    BStringView* fLabel = nullptr;
    BTextControl* fField = nullptr;
    std::vector<BButton*> fButtons;
};

} // namespace norvane
