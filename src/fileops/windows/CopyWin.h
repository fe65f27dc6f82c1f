#pragma once

#include "MessageCodes.h"
#include "fileops/engine/LateShow.h"
#include "fileops/engine/OperationProgress.h"
#include "fileops/engine/OperationUI.h"

#include <Message.h>
#include <Messenger.h>
#include <Rect.h>
#include <Window.h>

#include <memory>
#include <string>

class BStatusBar;
class BStringView;

namespace norvane {

class Measurement;
class Operation;
class OverWin;

/// The small window that carries out one file operation, on its own thread, from start to end.
///
/// It shows itself, begins at its first activation, or 300 ms after being shown when none comes,
/// tells the handler and quits. Its thread holds its lock while the operation runs: nobody else may
/// wait for that. Ownership: create with `new`; it deletes itself.
class CopyWin : public BWindow
{
public:
    /// Centred on `frame`. `path` is the folder the operation works in; `request` is copied;
    /// `handler` (borrowed now, held by token later) receives kOperationDone.
    /// `started` (may be null) is set when it is not B_OK that the window has a thread: then it
    /// does nothing, and is the caller's to Quit().
    CopyWin(BRect frame, const char* title, const char* path, BMessage* request, BHandler* handler,
            status_t* started = nullptr);
    ~CopyWin() override;

    /// Runs the whole operation, tells the handler and asks the window to quit.
    void DoOp();
    /// Carries out `request`: 'DATA' with "refs" is a copy or, by "TypeOfCopy", a move into the
    /// path, with "Session" an upload; kRemoteEntries is a download; kDeleteRequest and
    /// kEmptyRequest delete. Anything else does nothing.
    void PerformOp(BMessage* request);

    // What the operation reports. Thread: the window's own.
    void Measured(const OperationSize& size);
    void FileStarted(const StartedFile& file);
    void BytesCopied(const char* name, int64 count);
    void BytesDone(int64 count);
    void Transferring(const TransferStep& step);
    void EntriesVisited(int64 count);
    /// Shows how far it is at once, before something waits for the person.
    void ShowState();
    /// Hides the window before a question; nests with ShowAgain().
    void HideForQuestion();
    /// Undoes one HideForQuestion(); never takes the activation.
    void ShowAgain();
    bool IsStopped() const { return fIsStopped; }
    /// Ends the operation as the person's own wish does: an alert of it went without an answer.
    void Stop() { fIsStopped = true; }

    // BWindow
    void WindowActivated(bool active) override;
    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override;

private:
    static bool ShowsOverallBar(const BMessage& request);
    void Begin();
    void StartWithoutActivation();
    void GiveActivationBack();
    void ShowForQuit();
    void ShowWhenLong(bigtime_t now);

    // What is seen (CopyWinViews.cpp)
    void BuildViews();
    void ShowTotals(const OperationSize& size);
    void PaintFile();
    void PaintTransfer();
    void PaintIfDue();
    void PaintNow(bigtime_t now);
    void ShowTitle(bigtime_t now);
    bool IsActiveNow() const;
    void TakeWaitingKeys();
    void AskWhetherToStop();

    BStringView* fFromLine = nullptr;
    BStringView* fToLine = nullptr;
    BStatusBar* fFileBar = nullptr;
    BStatusBar* fOverallBar = nullptr;

    std::string fBaseTitle;
    std::string fPath;
    std::unique_ptr<BMessage> fRequest;
    std::unique_ptr<Measurement> fMeasurement; // begun early, until the operation takes it
    BMessenger fHandler;
    BMessenger fOpener;
    bool fIsPending = true;
    bool fIsStopped = false;
    Operation* fOperation = nullptr; // while it runs
    bool fIsAsking = false;          // whether to stop

    OperationProgress fProgress;
    // What the views will show at the next frame.
    std::string fFromFolder;
    std::string fFromName; // "" before the first file
    std::string fToFolder;
    std::string fToName;
    std::string fFileName;
    bool fIsNewFile = false;
    bool fIsTransfer = false;
    TransferStep fTransfer;
    int32 fLastPercent = 0;    // that the bars were told of
    int64 fShownFileBytes = 0; // what the bars stand at
    int64 fShownBytes = 0;
    bigtime_t fNextPaint = 0;
    bigtime_t fNextTitle = 0;
    LateShow fLateShow;
    bigtime_t fSettledTime = 0; // until then an activation is nobody's wish
};

/// Opens a CopyWin, or tells the person that it cannot be opened.
void StartOperation(BRect frame, const char* title, const char* path, BMessage* request,
                    BHandler* handler);

} // namespace norvane
