#include "fileops/windows/OverWin.h"

#include "fileops/engine/Operations.h"

#include <AppDefs.h>
#include <Autolock.h>
#include <Button.h>
#include <Message.h>
#include <Screen.h>
#include <StringView.h>
#include <View.h>

#include <algorithm>
#include <cmath>

namespace norvane {

namespace {

constexpr float kUsualWidth = 450;
constexpr float kEdge = 10;
constexpr float kGap = 5;
constexpr int32 kColumns = 3;
constexpr float kHeight = 162;
constexpr float kButtonHeight = 30;
constexpr rgb_color kGrey = {216, 216, 216, 255};
constexpr bigtime_t kAnswersAfterFirstFrame = 200'000;
// Somebody may be typing when the question comes: the keys meant for another window must not answer
// it.
constexpr bigtime_t kAnswersAfterLastKey = 500'000;
constexpr char kQuestionField[] = "question";

struct ButtonRow
{
    const char* name;
    const char* label;
    uint32 answer;
    float top;
};

// In the order in which Tab walks them, three in a row.
const ButtonRow kButtons[] = {
    {"Overwrite", "Overwrite", kAnswerOverwrite, 81},
    {"OverwriteAll", "Overwrite All", kAnswerOverwriteAll, 81},
    {"Skip", "Skip", kAnswerSkip, 81},
    {"Cancel", "Cancel", kAnswerCancel, 121},
    {"OverwriteOlder", "Overwrite All Older", kAnswerOverwriteOlder, 121},
    {"SkipAll", "Skip All", kAnswerSkipAll, 121},
};

// No broader than the screen: the lines cut their paths, and the buttons share what there is.
BRect CentredFrame(BRect around)
{
    const float room = BScreen(B_MAIN_SCREEN_ID).Frame().Width() - kEdge;
    const float width = std::min(kUsualWidth, room);
    const float left = (around.left + around.right) / 2 - width / 2;
    const float top = (around.top + around.bottom) / 2 - kHeight / 2;
    return BRect(left, top, left + width, top + kHeight);
}

} // namespace

OverWin::OverWin(BRect frame, const char* title, BWindow* owner)
    : BWindow(CentredFrame(frame), title, B_MODAL_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL,
              B_NOT_RESIZABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE | B_NOT_CLOSABLE)
{
    SetAnswerDelay(kAnswersAfterFirstFrame, kAnswersAfterLastKey);
    if (owner != nullptr) {
        SetOpener(owner);
    }
    BView* container = new BView(Bounds(), "FtpConContainer", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
    container->SetViewColor(kGrey);
    container->SetLowColor(kGrey);
    AddChild(container);
    BuildLines(container);
    BuildButtons(container);
    fButtons[0]->MakeFocus(true);
}

OverWin::~OverWin() = default;

void OverWin::BuildLines(BView* container)
{
    const float right = container->Bounds().right - kEdge;
    const auto addLine = [container](BRect frame, const char* name) {
        BStringView* line = new BStringView(frame, name, "");
        line->SetTruncation(B_TRUNCATE_MIDDLE);
        container->AddChild(line);
        return line;
    };
    fSourceLine = addLine(BRect(kEdge, 10, right, 20), "OverwriteFile");
    fTargetDetails = addLine(BRect(30, 25, right, 35), "OverwriteFile");
    fTargetLine = addLine(BRect(kEdge, 50, right, 60), "OverwriteWith");
    fSourceDetails = addLine(BRect(30, 65, right, 75), "OverwriteWith");
}

void OverWin::BuildButtons(BView* container)
{
    const float width =
        std::floor((container->Bounds().right - 2 * kEdge - (kColumns - 1) * kGap) / kColumns);
    int32 index = 0;
    for (const ButtonRow& row : kButtons) {
        const float left = kEdge + static_cast<float>(index % kColumns) * (width + kGap);
        const BRect frame(left, row.top, left + width, row.top + kButtonHeight);
        BMessage* message = new BMessage(row.answer);
        message->AddInt32(kQuestionField, 0);
        BButton* button = new BButton(frame, row.name, row.label, message);
        container->AddChild(button);
        button->SetTarget(this);
        fButtons[index++] = button;
    }
}

void OverWin::SetPaths(const char* sourcePath, const char* targetPath, const char* targetDetails,
                       const char* sourceDetails)
{
    if (!Lock()) {
        return;
    }
    // The source stands over the target's details and the other way round: that is how the dialog
    // reads.
    fSourceLine->SetText((std::string("Overwrite: ") + sourcePath).c_str());
    fTargetDetails->SetText(targetDetails);
    fTargetLine->SetText((std::string("With file: ") + targetPath).c_str());
    fSourceDetails->SetText(sourceDetails);
    Unlock();
}

void OverWin::DoDisplay()
{
    if (!Lock()) {
        return;
    }
    const int32 question = ++fQuestion;
    for (BButton* button : fButtons) {
        button->Message()->ReplaceInt32(kQuestionField, question);
    }
    fButtons[0]->MakeFocus(true);
    fAnswer = kAnswerNone;
    fIsShown = true;
    Show();
    if (Thread() <= 0) {
        // No thread was to be had: nobody can be asked.
        fHasNoThread = true;
        fAnswer = kAnswerCancel;
        fIsShown = false;
    }
    Unlock();
    // Quitting answers the questions that it finds open; one that opens just then answers itself.
    if (Operations::IsQuitting()) {
        BMessenger(this).SendMessage(kAnswerForQuit);
    }
}

void OverWin::WaitForAnswer()
{
    BAutolock lock(fAnsweredLock);
    while (fIsShown) {
        fAnswered.Wait(fAnsweredLock);
    }
}

void OverWin::HideDisplay()
{
    Hide();
    {
        BAutolock lock(fAnsweredLock);
        fIsShown = false;
    }
    fAnswered.Broadcast();
}

void OverWin::DispatchMessage(BMessage* message, BHandler* target)
{
    if (message->what == B_QUIT_REQUESTED && target == this && !fClosesWhenAnswered) {
        // Its operation still has to read the answer, and ends it then. The request is answered by
        // that end.
        fQuitRequest.reset(DetachCurrentMessage());
    } else {
        BWindow::DispatchMessage(message, target);
    }
}

void OverWin::MessageReceived(BMessage* message)
{
    if (message->what >= kAnswerOverwrite && message->what <= kAnswerCancel) {
        TakeAnswer(*message);
    } else if (message->what == kAnswerForQuit) {
        AnswerForQuit();
    } else {
        BWindow::MessageReceived(message);
    }
}

void OverWin::TakeAnswer(const BMessage& message)
{
    int32 question = 0;
    if (message.FindInt32(kQuestionField, &question) != B_OK || question != fQuestion) {
        return; // a second click on the question before
    }
    Answer(message.what);
}

void OverWin::AnswerForQuit()
{
    // Before the answer itself, which whoever waits for it acts upon.
    fWasAnsweredForQuit = fWasAnsweredForQuit || fIsShown;
    Answer(kAnswerCancel);
}

void OverWin::Answer(uint32 answer)
{
    if (!fIsShown) {
        return;
    }
    // Whoever sees the dialog gone may read the answer at once, so it is there first.
    fAnswer = answer;
    HideDisplay();
    if (fClosesWhenAnswered) {
        PostMessage(B_QUIT_REQUESTED);
    }
}

} // namespace norvane
