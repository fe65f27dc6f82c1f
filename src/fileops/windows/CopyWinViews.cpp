#include "fileops/windows/CopyWin.h"

#include "fileops/engine/Operation.h"

#include <Alert.h>
#include <AppDefs.h>
#include <InterfaceDefs.h>
#include <MessageQueue.h>
#include <OS.h>
#include <StatusBar.h>
#include <StringView.h>
#include <View.h>

namespace norvane {

namespace {

constexpr rgb_color kGrey = {216, 216, 216, 255};
// What moves is seen to move; more often would be paid for by the operation.
constexpr bigtime_t kFrame = 1'000'000 / 25;
// The window manager draws the title.
constexpr bigtime_t kTitleInterval = 100'000;
constexpr bigtime_t kAnswersAfterFirstFrame = 200'000;
constexpr bigtime_t kPatienceBeforeStop = 300'000;
constexpr float kAllPercent = 100;
constexpr char kFileLabel[] = "Copying: ";
constexpr char kFileTrailingLabel[] = " Bytes";

BStringView* AddLine(BView* container, BRect frame, const char* name, const char* text)
{
    BStringView* line = new BStringView(frame, name, text);
    line->SetTruncation(B_TRUNCATE_MIDDLE);
    container->AddChild(line);
    return line;
}

void AddCaptions(BView* container)
{
    BStringView* const captions[] = {
        new BStringView(BRect(10, 1, 48, 15), "label1", "From :"),
        new BStringView(BRect(10, 16, 48, 30), "label2", "To     :"),
    };
    const auto isTooBroad = [](const BStringView* caption) {
        return caption->StringWidth(caption->Text()) > caption->Bounds().Width() + 1;
    };
    for (BStringView* caption : captions) {
        container->AddChild(caption);
    }
    // Some font families are too broad for the room before the lines.
    for (float size = 11; size >= 8 && (isTooBroad(captions[0]) || isTooBroad(captions[1]));
         size--) {
        captions[0]->SetFontSize(size);
        captions[1]->SetFontSize(size);
    }
}

} // namespace

void CopyWin::BuildViews()
{
    BView* container = new BView(BRect(0, 0, 310, 212), "FtpConContainer",
                                 B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW);
    container->SetViewColor(kGrey);
    container->SetLowColor(kGrey);
    AddChild(container);

    AddCaptions(container);
    fFromLine = AddLine(container, BRect(50, 1, 290, 15), "label2", "initializing...");
    fToLine = AddLine(container, BRect(50, 16, 290, 30), "label2", "initializing...");

    fFileBar =
        new BStatusBar(BRect(10, 31, 290, 41), "fileprogress", kFileLabel, kFileTrailingLabel);
    container->AddChild(fFileBar);
    fOverallBar = new BStatusBar(BRect(10, 61, 290, 65), "mainprogress");
    container->AddChild(fOverallBar);
}

void CopyWin::ShowTotals(const OperationSize& size)
{
    using Kind = OperationSize::Kind;
    const std::string count = std::to_string(size.items);
    fIsTransfer = size.kind != Kind::kLocal;
    if (size.kind == Kind::kDownload) {
        fOverallBar->SetText((count + " Files or Directories").c_str());
    } else {
        fOverallBar->SetTrailingText((std::to_string(size.bytes / 1024) + " K").c_str());
        fOverallBar->SetText(("Copying " + count + " files or directories").c_str());
    }
    fOverallBar->SetMaxValue(fIsTransfer ? kAllPercent : static_cast<float>(size.bytes));
    if (fIsTransfer) {
        fFileBar->SetMaxValue(kAllPercent);
    }
    PaintNow(system_time());
}

void CopyWin::PaintIfDue()
{
    const bigtime_t now = system_time();
    if (now < fNextPaint) {
        return;
    }
    ShowForQuit();
    ShowWhenLong(now);
    if (now < fSettledTime && IsActiveNow()) {
        // Showing a window asks for the focus more than once, and a later answer may undo the
        // return of it.
        fOpener.SendMessage(kTakeActivation);
    }
    TakeWaitingKeys();
    PaintNow(now);
}

void CopyWin::PaintNow(bigtime_t now)
{
    if (fIsTransfer) {
        PaintTransfer();
    } else {
        PaintFile();
    }
    ShowTitle(now);
    UpdateIfNeeded();
    fNextPaint = now + kFrame;
}

void CopyWin::PaintFile()
{
    if (!fFromName.empty()) {
        fFromLine->SetText(ShownPath(fFromFolder, fFromName.c_str()).c_str());
        fToLine->SetText(ShownPath(fToFolder, fToName.c_str()).c_str());
    }
    if (fIsNewFile) {
        fIsNewFile = false;
        fShownFileBytes = 0;
        fFileBar->Reset(kFileLabel, kFileTrailingLabel);
        fFileBar->SetMaxValue(static_cast<float>(fProgress.FileBytes()));
    }
    if (!fFileName.empty()) {
        fFileBar->Update(static_cast<float>(fProgress.FileDoneBytes() - fShownFileBytes),
                         fFileName.c_str(), std::to_string(fProgress.FileDoneBytes()).c_str());
        fShownFileBytes = fProgress.FileDoneBytes();
    }
    fOverallBar->Update(static_cast<float>(fProgress.DoneBytes() - fShownBytes));
    fShownBytes = fProgress.DoneBytes();
}

void CopyWin::PaintTransfer()
{
    if (fTransfer.name.empty()) {
        return; // none has begun
    }
    fFromLine->SetText(fTransfer.from.c_str());
    fToLine->SetText(fTransfer.to.c_str());
    if (fIsNewFile) {
        fIsNewFile = false;
        fLastPercent = 0;
        fFileBar->Reset(fTransfer.name.c_str());
    }
    const auto delta = static_cast<float>(fTransfer.percent - fLastPercent);
    fLastPercent = fTransfer.percent;
    fFileBar->Update(delta, nullptr, (std::to_string(fTransfer.bytes) + " Bytes").c_str());
    const std::string sum = std::to_string(fTransfer.baseBytes + fTransfer.bytes);
    fOverallBar->Update(delta, sum.c_str());
}

void CopyWin::ShowTitle(bigtime_t now)
{
    const std::string title = fProgress.Title(fBaseTitle, now);
    if (title != Title() && now >= fNextTitle) {
        fNextTitle = now + kTitleInterval;
        SetTitle(title.c_str());
    }
}

bool CopyWin::IsActiveNow() const
{
    // This thread is busy, so what the screen said since it began is still waiting.
    bool isActive = IsActive();
    BMessageQueue* queue = MessageQueue();
    queue->Lock();
    int32 position = 0;
    while (const BMessage* change = queue->FindMessage(uint32(B_WINDOW_ACTIVATED), position++)) {
        change->FindBool("active", &isActive);
    }
    queue->Unlock();
    return isActive;
}

void CopyWin::TakeWaitingKeys()
{
    // Keys that were not meant for stopping are gone: nothing here could use them later.
    BMessageQueue* queue = MessageQueue();
    bool asksToStop = false;
    queue->Lock();
    while (BMessage* key = queue->FindMessage(B_KEY_DOWN, 0)) {
        int32 repeat = 0;
        bool isEarly = false;
        const char* bytes = nullptr;
        key->FindInt32("be:key_repeat", &repeat);
        key->FindBool("kits:early", &isEarly);
        if (key->FindString("bytes", &bytes) == B_OK && bytes[0] == B_ESCAPE && repeat == 0 &&
            !isEarly) {
            asksToStop = true;
        }
        queue->RemoveMessage(key);
    }
    while (BMessage* request = queue->FindMessage(kAskToStop, 0)) {
        asksToStop = true; // from a pane of the window that started it
        queue->RemoveMessage(request);
    }
    queue->Unlock();
    if (asksToStop && !fIsAsking) {
        fIsAsking = true;
        AskWhetherToStop();
        fIsAsking = false;
    }
}

void CopyWin::AskWhetherToStop()
{
    if (fOperation != nullptr) {
        // As little as may be waits for the answer, which itself is not to be waited for.
        fOperation->Settle(kPatienceBeforeStop);
    }
    BAlert* alert = new BAlert("Sir?", "Stop this operation?", "Stop", "Continue", nullptr,
                               B_WIDTH_AS_USUAL, B_WARNING_ALERT);
    // It was asked for: nobody is typing into another window.
    alert->SetAnswerDelay(kAnswersAfterFirstFrame, 0);
    if (alert->Go() != 1) {
        Stop(); // also when the program ends, and nobody answers
    }
}

} // namespace norvane
