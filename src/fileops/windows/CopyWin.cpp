#include "fileops/windows/CopyWin.h"

#include "fileops/engine/Measurement.h"
#include "fileops/engine/Operation.h"
#include "fileops/engine/OperationRequests.h"
#include "fileops/engine/Operations.h"
#include "fileops/engine/ProblemList.h"
#include "fileops/windows/OverWin.h"
#include "fileops/windows/WindowUI.h"
#include "ftp/transfers/TransferRequests.h"
#include "settings/MsgBox.h"

#include <AppDefs.h>
#include <MessageRunner.h>
#include <OS.h>
#include <Path.h>
#include <StatusBar.h>

// The window's life: shown, begun, ended. What is seen of it has a source of its own; what it does
// is the operation's.

namespace norvane {

namespace {

constexpr float kWidth = 300;
constexpr float kHeight = 96;
constexpr float kOverallBarHeight = 32;
constexpr bigtime_t kActivationPatience = 300'000;

BRect CentredFrame(BRect around)
{
    const float left = (around.left + around.right) / 2 - kWidth / 2;
    const float top = (around.top + around.bottom) / 2 - kHeight / 2;
    return BRect(left, top, left + kWidth, top + kHeight);
}

/// What the request asks for, whoever does it; null when that is nothing.
std::unique_ptr<Operation> OperationFor(const BMessage& request, const char* path, OperationUI& ui)
{
    std::unique_ptr<Operation> transfer = MakeTransfer(request, path, ui);
    return transfer != nullptr ? std::move(transfer) : MakeOperation(request, path, ui);
}

} // namespace

CopyWin::CopyWin(BRect frame, const char* title, const char* path, BMessage* request,
                 BHandler* handler, status_t* started)
    : BWindow(CentredFrame(frame), title, B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL,
              B_NOT_CLOSABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE | B_NOT_RESIZABLE),
      fBaseTitle(title), fPath(path), fRequest(std::make_unique<BMessage>(*request)),
      fMeasurement(StartMeasuring(*request)), fHandler(handler)
{
    BuildViews();
    if (!ShowsOverallBar(*request)) {
        ResizeBy(0, -kOverallBarHeight);
        fOverallBar->Hide(); // its texts begin where the window ends now
    }
    BWindow* opener = handler != nullptr ? dynamic_cast<BWindow*>(handler->Looper()) : nullptr;
    if (opener != nullptr) {
        SetOpener(opener);
        fOpener = BMessenger(nullptr, opener);
    }
    SetTakesKeys(false);
    // Nothing is done as long as it is locked, so that it is still there to be looked at.
    Lock();
    Begin();
    const status_t status = Thread() > 0 ? B_OK : B_NO_MORE_THREADS;
    if (started != nullptr) {
        *started = status;
    }
    if (status == B_OK) {
        Unlock();
    }
}

void CopyWin::Begin()
{
    if (fRequest->what == kEmptyRequest) {
        fLateShow.Start(system_time());
        PostMessage(kStartLate);
        Run();
    } else {
        StartWithoutActivation();
        Show();
    }
}

void StartOperation(BRect frame, const char* title, const char* path, BMessage* request,
                    BHandler* handler)
{
    // It shows itself, does its work on its own thread and deletes itself.
    status_t started = B_OK;
    auto* window = new CopyWin(frame, title, path, request, handler, &started);
    if (started != B_OK) {
        window->Quit();
        MsgBox("Err", (std::string("Nothing was done: ") + ReasonFor(started)).c_str(), "OK",
               B_STOP_ALERT);
    }
}

CopyWin::~CopyWin() = default;

bool CopyWin::ShowsOverallBar(const BMessage& request)
{
    type_code type = 0;
    int32 count = 0;
    request.GetInfo("refs", &type, &count);
    const bool isRemote = request.what == kRemoteEntries || request.HasString("Session");
    return !isRemote && !(request.what == kLocalEntries && count == 1);
}

void CopyWin::StartWithoutActivation()
{
    // The window may never be activated: another workspace, a window manager that refuses, none at
    // all.
    const BMessage late(kStartLate);
    if (BMessageRunner::StartSending(BMessenger(this), &late, kActivationPatience, 1) != B_OK) {
        PostMessage(kStartLate);
    }
}

void CopyWin::WindowActivated(bool active)
{
    BWindow::WindowActivated(active);
    DoOp();
}

void CopyWin::MessageReceived(BMessage* message)
{
    if (message->what == kStartLate) {
        DoOp();
    } else {
        BWindow::MessageReceived(message);
    }
}

bool CopyWin::QuitRequested()
{
    // Nobody can close this window; the program's end asks, and then what was ordered is done
    // first.
    DoOp();
    return true;
}

void CopyWin::DoOp()
{
    if (!fIsPending) {
        return;
    }
    fIsPending = false;
    GiveActivationBack();
    SetLongRunning(true);
    PerformOp(fRequest.get());
    BMessage done(kOperationDone);
    done.AddPointer("WindowHandle", this);
    fHandler.SendMessage(&done);
    PostMessage(B_QUIT_REQUESTED);
}

void CopyWin::PerformOp(BMessage* request)
{
    OverWin* question = new OverWin(Frame(), "Item Exists", this);
    {
        const Operations::Running running(BMessenger(question), BMessenger(this), fOpener);
        WindowUI ui(this, question);
        const std::unique_ptr<Operation> operation = OperationFor(*request, fPath.c_str(), ui);
        fOperation = operation.get();
        if (operation != nullptr) {
            operation->TakeMeasurement(std::move(fMeasurement));
            operation->Run();
        }
        fOperation = nullptr;
    }
    if (question->Lock()) {
        question->Quit();
    }
}

void CopyWin::GiveActivationBack()
{
    if (IsActive()) {
        fOpener.SendMessage(kTakeActivation);
        fSettledTime = system_time() + kActivationPatience;
    }
    // From here on it only comes and goes around questions.
    SetTakesFocus(false);
}

void CopyWin::FileStarted(const StartedFile& file)
{
    fProgress.StartFile(file.bytes);
    fFromFolder = file.sourceFolder;
    fFromName = file.name;
    fToFolder = file.targetFolder;
    fToName = file.targetName;
    fFileName = file.name; // also when no byte follows
    fIsNewFile = true;
    PaintIfDue();
}

void CopyWin::BytesCopied(const char* name, int64 count)
{
    fProgress.Add(count);
    fFileName = name;
    PaintIfDue();
}

void CopyWin::EntriesVisited(int64 count)
{
    fProgress.AddEntries(count);
    PaintIfDue();
}

void CopyWin::BytesDone(int64 count)
{
    fProgress.AdvanceTo(count);
    PaintIfDue();
}

void CopyWin::Transferring(const TransferStep& step)
{
    fTransfer = step;
    fIsNewFile |= step.isNew;
    fProgress.AdvanceTo(step.baseBytes + step.bytes);
    PaintIfDue();
}

void CopyWin::Measured(const OperationSize& size)
{
    fProgress.Start(size.bytes, system_time());
    if (size.entries > 0) {
        fProgress.StartEntries(size.entries);
    }
    ShowTotals(size);
}

void CopyWin::ShowState()
{
    fNextTitle = 0; // the title too
    PaintNow(system_time());
}

void CopyWin::HideForQuestion()
{
    ShowState(); // what it shows when it is back
    Hide();
}

void CopyWin::ShowAgain()
{
    Show();
}

void CopyWin::ShowForQuit()
{
    // Hidden by a question that was answered with Skip, it would leave a program that does not end
    // and does not say why.
    while (Operations::IsQuitting() && IsHidden()) {
        Show();
    }
}

void CopyWin::ShowWhenLong(bigtime_t now)
{
    if (fLateShow.TakeDue(now) && IsHidden()) {
        Show();
    }
}

} // namespace norvane
