#include "panes/DirPane.h"

#include "clv/CLVColumnLabelView.h"
#include "clv/ListLock.h"
#include "panes/DirView.h"
#include "panes/FtpViews.h"
#include "panes/NVHeader.h"
#include "panes/NorvFtr.h"
#include "panes/PaneLayout.h"
#include "panes/RowSource.h"
#include "settings/HomeFolder.h"

#include <Application.h>
#include <Message.h>
#include <NodeMonitor.h>
#include <ScrollView.h>
#include <Window.h>

#include <string>

namespace norvane {

namespace {

constexpr float kFirstMax = 100; // of the progress bar, until the listing knows better

} // namespace

DirPane::DirPane(BRect frame, const char* path, const char* name, const char* key)
    : BView(frame, name, B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW),
      fStartPath(path != nullptr ? path : "/")
{
    SetViewColor(kBackground);
    SetLowColor(kBackground);
    SetHighColor(kBlack);
    const float width = frame.Width();
    const float height = frame.Height();
    fHeader = new NVHeader(BRect(0, 0, width - 1, 25), fStartPath.c_str(),
                           (std::string(name) + "str").c_str(), B_FOLLOW_LEFT | B_FOLLOW_TOP);
    fList = new DirView(BRect(0, 24, width - 14 - 1, height - 14 - 25), &fScroller,
                        fStartPath.c_str(), key, this);
    fFooter = new NorvFtr(BRect(0, height - 25, width - 1, height - 3));
    AddChild(fHeader);
    AddChild(fScroller);
    AddChild(fFooter);
    ShowStrips();
}

DirPane::~DirPane()
{
    // While the strips still live: the list reports to them.
    fList->Clear();
    fFtpViews.reset();
}

void DirPane::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case MSG_PANE_INFO:
        fList->InfoArrived();
        SetPath(nullptr);
        break;
    case MSG_PROGRESS_START:
        fFooter->Start(kFirstMax);
        break;
    case MSG_PROGRESS_STOP:
        fFooter->Stop();
        break;
    case MSG_PROGRESS_STEP:
        ProgressStep(*message);
        break;
    case MSG_PROGRESS_MAX:
        ProgressMax(*message);
        break;
    case B_NODE_MONITOR:
        fList->NodeChanged(*message);
        break;
    case MSG_FTP_STATUS:
        if (fFtpViews != nullptr) {
            fFtpViews->Append(message->GetString("status", ""));
        }
        break;
    case MSG_FTP_DISCONNECT:
        Disconnect();
        break;
    case kOperationDone:
        OperationEnded();
        break;
    case kSpaceFound:
    case kAskForSpace:
        SpaceAnswered(*message);
        break;
    default:
        BView::MessageReceived(message);
    }
}

void DirPane::ProgressStep(const BMessage& message)
{
    fFooter->Update(static_cast<float>(message.GetInt32("steps", 1)));
}

void DirPane::ProgressMax(const BMessage& message)
{
    int32 max = 0;
    if (message.FindInt32("maxvalue", &max) == B_OK) {
        fFooter->SetMax(max);
    }
}

// Layout

void DirPane::ResizeTo(float width, float height)
{
    // The pane first: its children follow its sides, and get their own frames after that.
    BView::ResizeTo(width < 0 ? 0 : width, height < 0 ? 0 : height);
    LayOut(width, height);
}

void DirPane::LayOut(float width, float height)
{
    const PaneLayout layout = LayOutPane(
        width, height,
        {fList->HeaderFlag(), fList->FooterFlag(), fFtpViews != nullptr, fFilter != nullptr});
    fHeader->ResizeTo(layout.headerWidth, layout.headerHeight);
    fScroller->MoveTo(layout.listPlace);
    fList->ResizeTo(layout.listWidth, layout.listHeight);
    if (fFilter != nullptr) {
        fFilter->MoveTo(layout.filterPlace);
        fFilter->ResizeTo(layout.filterWidth, layout.filterHeight);
    }
    fFooter->MoveTo(layout.footerPlace);
    fFooter->ResizeTo(layout.footerWidth, layout.footerHeight);
    if (fFtpViews != nullptr) {
        fFtpViews->LayOut(layout);
    }
    fHeader->Invalidate();
    fFooter->Invalidate();
}

void DirPane::ShowStrips()
{
    ShowStrip(*fHeader, fList->HeaderFlag());
    ShowStrip(*fFooter, fList->FooterFlag());
    LayOut(Bounds().Width(), Bounds().Height());
    HightlighHeader(GotFocus());
}

void DirPane::ShowStrip(BView& strip, bool isShown)
{
    // Hiding nests, so it is asked for only when it changes something.
    bool& isHidden = &strip == fHeader ? fIsHeaderHidden : fIsFooterHidden;
    if (isHidden != isShown) {
        return;
    }
    isHidden = !isShown;
    if (isShown) {
        strip.Show();
    } else {
        strip.Hide();
    }
}

// Path and focus

void DirPane::SetPath(const char* path)
{
    ListLock lock(*this);
    if (path != nullptr) {
        fList->SetPath(path);
    }
    RefreshTexts();
}

void DirPane::RefreshTexts()
{
    ShowFtpViews();
    fHeader->SetText(fList->HeaderText().c_str());
    fFooter->SetText(fList->GetFiles().c_str());
    fFooter->SetMarks(fList->Marked().Text());
    LookForSpace();
    fHeader->Invalidate();
    fFooter->Invalidate();
}

// The volume

void DirPane::LookForSpace()
{
    if (Window() != nullptr) {
        fSpace.Look(fList->ShownVolume(), BMessenger(this));
    }
    ShowSpace();
}

void DirPane::ShowSpace()
{
    fFooter->SetSpace(fSpace.ShortText());
    fHeader->SetVolume(fSpace.LongText());
}

void DirPane::SpaceAnswered(const BMessage& message)
{
    if (fSpace.Take(message)) {
        ShowSpace();
        fFooter->Invalidate();
    }
}

// Servers

void DirPane::DoFtp(std::unique_ptr<RowSource> source)
{
    fFtpViews.reset(); // with the log of another connection
    fList->Populate(std::move(source));
    RefreshTexts();
}

void DirPane::Disconnect()
{
    ListLock lock(*this);
    if (fList->Mode() == kFtpMode) {
        if (fList->Populate(fList->Path().c_str()) < 0) {
            fList->Populate(HomeFolder().c_str());
        }
        RefreshTexts();
    }
}

/// They come and go with what the list shows.
void DirPane::ShowFtpViews()
{
    const bool isOnServer = fList->Mode() == kFtpMode;
    if (isOnServer == (fFtpViews != nullptr)) {
        return;
    }
    fFtpViews = isOnServer ? std::make_unique<FtpViews>(*this) : nullptr;
    LayOut(Bounds().Width(), Bounds().Height());
}

/// A local folder's changes are told of by its watch; nobody tells of a server's.
void DirPane::OperationEnded()
{
    if (fList->Mode() == kFtpMode) {
        fList->Refresh();
    }
}

void DirPane::GoToDir(const char* path)
{
    ListLock lock(*this);
    fList->GoToDir(path);
}

void DirPane::SetFocus()
{
    fList->MakeFocus(true);
}

bool DirPane::GotFocus() const
{
    const BView* focus = Window() != nullptr ? Window()->CurrentFocus() : nullptr;
    while (focus != nullptr && focus != this) {
        focus = focus->Parent();
    }
    return focus == this;
}

void DirPane::MakeFocus(bool isFocused)
{
    HightlighHeader(isFocused);
}

void DirPane::HightlighHeader(bool isHighlighted)
{
    if (fHeader->IsSelected() != isHighlighted) {
        fHeader->SetSelected(isHighlighted);
    }
    // Without the header the column strip is what is left to show it.
    fList->HeaderStrip()->SetHighlighted(isHighlighted && fIsHeaderHidden);
}

bool DirPane::QuitRequested()
{
    be_app_messenger.SendMessage(B_QUIT_REQUESTED);
    return true;
}

// What the main window asks of the list

int DirPane::GetSelected(std::string* path) const
{
    return fList->GetSelected(path);
}

int64 DirPane::GetSize()
{
    return fList->GetSize();
}

void DirPane::SetColumnWidth(int32 column, int width)
{
    fList->SetColumnWidth(column, width);
}

int DirPane::ColumnWidth(int32 column) const
{
    return fList->ColumnWidth(column);
}

std::string DirPane::GetPath() const
{
    return fList->Path();
}

std::string DirPane::GetCachedPath() const
{
    return GetPath();
}

void DirPane::DoNewFolder()
{
    fList->DoNewFolder();
}

void DirPane::DoRename()
{
    fList->DoRename();
}

void DirPane::MkDir(const char* name)
{
    fList->MkDir(name);
}

void DirPane::Rename(const char* newName)
{
    fList->Rename(newName);
}

void DirPane::Invoke()
{
    fList->Invoke();
}

void DirPane::NavigateUp()
{
    fList->NavigateUp();
}

void DirPane::NavigateDown()
{
    fList->NavigateDown();
}

} // namespace norvane
