#include "MessageCodes.h"
#include "fileops/windows/GetTextWin.h"
#include "settings/Numbers.h"
#include "viewer/TextFinder.h"
#include "viewer/ViewedText.h"
#include "viewer/ViewerWindow.h"

#include <Beep.h>
#include <Message.h>

// What a viewer finds in its text.

namespace norvane {

/// In a text only; the bytes of a file are not searched.
bool ViewerWindow::FindingReceived(const BMessage& message)
{
    if (fText == nullptr || fShowsHex) {
        return false;
    }
    switch (message.what) {
    case kAskToFind:
        AskToFind();
        return true;
    case kTextToFind:
        FindText(message);
        return true;
    case kFindNext:
        FindAgain(true);
        return true;
    case kFindPrevious:
        FindAgain(false);
        return true;
    case kAskForLine:
        AskForLine();
        return true;
    case kLineToGoTo:
        GoToLine(message);
        return true;
    default:
        return false;
    }
}

void ViewerWindow::AskToFind()
{
    (new GetTextWin(Frame(), "Find", this, "What text do you want to find?",
                    fFinder->Sought().c_str(), kTextToFind, "OK", "Cancel", nullptr))
        ->Show();
}

void ViewerWindow::AskForLine()
{
    (new GetTextWin(Frame(), "GoTo", this, "What line do you want to go to?", "", kLineToGoTo, "OK",
                    "Cancel", nullptr))
        ->Show();
}

void ViewerWindow::FindText(const BMessage& message)
{
    const char* text = message.GetString("text", "");
    if (text[0] != '\0') {
        fFinder->SetSought(text);
        FindAgain(true);
    }
}

/// Without anything to look for it asks what that is.
void ViewerWindow::FindAgain(bool isForward)
{
    if (fFinder->Sought().empty()) {
        AskToFind();
    } else if (!(isForward ? fFinder->FindNext(*fText) : fFinder->FindPrevious(*fText))) {
        beep();
    }
}

void ViewerWindow::GoToLine(const BMessage& message)
{
    const char* text = message.GetString("text", "");
    if (text[0] != '\0') {
        TextFinder::GoToLine(*fText, atoi(text));
    }
}

} // namespace norvane
