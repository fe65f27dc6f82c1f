#include "MessageCodes.h"
#include "fileops/windows/GetTextWin.h"
#include "settings/Numbers.h"
#include "viewer/FindWin.h"
#include "viewer/PatternSearch.h"
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
    case kPatternFound:
        PatternFound(message);
        return true;
    case kStopFinding:
        fSearch.reset();
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
    (new FindWin(Frame(), this, fFinder->Sought().c_str(), fFindsExpression))->Show();
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
        fFindsExpression = message.GetBool("expression", false);
        FindAgain(true);
    }
}

/// Without anything to look for it asks what that is.
void ViewerWindow::FindAgain(bool isForward)
{
    if (fFinder->Sought().empty()) {
        AskToFind();
    } else if (fFindsExpression) {
        FindExpression(isForward);
    } else if (!(isForward ? fFinder->FindNext(*fText) : fFinder->FindPrevious(*fText))) {
        beep();
    }
}

/// Another search, and closing, let go of one that goes on.
void ViewerWindow::FindExpression(bool isForward)
{
    using Direction = PatternSearch::Direction;
    int32 start = 0;
    int32 end = 0;
    fText->GetSelection(&start, &end);
    fSearch = std::make_unique<PatternSearch>(
        fFinder->Sought(), fText->ShareText(), static_cast<size_t>(isForward ? end : start),
        isForward ? Direction::kForward : Direction::kBackward, ++fSearchNumber,
        BMessenger(nullptr, this));
}

void ViewerWindow::PatternFound(const BMessage& message)
{
    if (fSearch == nullptr || message.GetInt32("search", 0) != fSearchNumber) {
        return;
    }
    fSearch.reset();
    const int64 start = message.GetInt64("start", 0);
    const int64 end = message.GetInt64("end", 0);
    if (message.GetInt32("status", B_ERROR) != B_OK || end > fText->TextLength()) {
        beep();
        return;
    }
    fText->Select(static_cast<int32>(start), static_cast<int32>(end));
    fText->ScrollToOffset(static_cast<int32>(start));
}

void ViewerWindow::GoToLine(const BMessage& message)
{
    const char* text = message.GetString("text", "");
    if (text[0] != '\0') {
        TextFinder::GoToLine(*fText, atoi(text));
    }
}

} // namespace norvane
