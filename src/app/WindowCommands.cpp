#include "app/MenuTable.h"
#include "app/NorvaneWindow.h"
#include "fileops/windows/CopyWin.h"
#include "fileops/windows/GetTextWin.h"
#include "fileops/windows/OverWin.h"
#include "panes/DirPane.h"
#include "panes/DirView.h"
#include "settings/HomeFolder.h"
#include "settings/MsgBox.h"
#include "settings/Numbers.h"
#include "settings/Profile.h"

#include <Alert.h>
#include <AppDefs.h>
#include <Autolock.h>
#include <FindDirectory.h>
#include <MessageQueue.h>
#include <NodeMonitor.h>
#include <Path.h>
#include <StorageDefs.h>
#include <fs_info.h>

#include <cstring>

namespace norvane {

namespace {

constexpr uint32 kTellMissingFolders = 'Miss';

bool ReadSwitch(const char* key)
{
    char value[kProfileLineBytes];
    return !GetProfileString(kSettingsFolder, key, value, kSettingsFile) || atoi(value) != 0;
}

} // namespace

void NorvaneWindow::MessageReceived(BMessage* message)
{
    if (message->what >= kFocusPane && message->what < kFocusPane + kMaxPanes) {
        FocusPane(static_cast<int32>(message->what - kFocusPane));
        return;
    }
    switch (message->what) {
    case kOpen:
    case kUpALevel:
    case kDownALevel:
        PaneCommand(message->what);
        break;
    case kCalculateSpace:
        DoGetSpace();
        break;
    case kAbout:
        DoAboutBox();
        break;
    case kNewFolder:
        DoNewFolder();
        break;
    case kRename:
        DoRename();
        break;
    case kEmptyTrash:
        EmptyTrash();
        break;
    case kGoTo:
        AskWhereToGo();
        break;
    case kFolderNamed:
    case kNewNameTyped:
    case kFolderToGoTyped:
        TextTyped(*message);
        break;
    case kOpenInLeftPane:
        OpenInLeftPane();
        break;
    case kOpenInRightPane:
        OpenInRightPane();
        break;
    case kAddPane:
        AddFilePane(HomeFolder().c_str());
        break;
    case kRemovePane:
        RemovePane();
        break;
    case kRevertToDefault:
        Default();
        break;
    case kTestOverwrite:
        ShowOverwriteTest();
        break;
    case kColumnResized:
        SetColumnFromMessage(*message);
        break;
    case kPreferencesSaved:
        GetPreferences();
        break;
    case kTakeActivation:
        Activate();
        break;
    case kTellMissingFolders:
        TellMissingFolders();
        break;
    case kRemoteEntries:
    case B_SIMPLE_DATA:
        DoDrag(message);
        break;
    case B_NODE_MONITOR:
        VolumeChanged(*message);
        break;
    default:
        BWindow::MessageReceived(message);
    }
}

void NorvaneWindow::Show()
{
    BWindow::Show();
    PostMessage(kTellMissingFolders); // which there are, its own thread knows
}

void NorvaneWindow::TellMissingFolders()
{
    if (fMissingFolders.empty()) {
        return;
    }
    std::string text = fMissingFolders.size() == 1 ? "This folder cannot be shown:"
                                                   : "These folders cannot be shown:";
    for (const std::string& folder : fMissingFolders) {
        text += "\n\t" + folder;
    }
    fMissingFolders.clear();
    MsgBox("Err", text.c_str(), "OK", B_INFO_ALERT);
}

void NorvaneWindow::PaneCommand(uint32 what)
{
    DirPane* pane = GetFocusedPane();
    if (pane == nullptr) {
        return;
    }
    switch (what) {
    case kOpen:
        pane->Invoke();
        break;
    case kUpALevel:
        pane->NavigateUp();
        break;
    case kDownALevel:
        pane->NavigateDown();
        break;
    default:
        break;
    }
}

void NorvaneWindow::DoGetSpace()
{
    DirPane* pane = GetFocusedPane();
    if (pane != nullptr) {
        pane->GetSize();
    }
}

void NorvaneWindow::DoNewFolder()
{
    if (DirPane* pane = GetFocusedPane()) {
        pane->DoNewFolder();
    }
}

void NorvaneWindow::DoRename()
{
    if (DirPane* pane = GetFocusedPane()) {
        pane->DoRename();
    }
}

void NorvaneWindow::EmptyTrash()
{
    BPath trash;
    if (find_directory(B_TRASH_DIRECTORY, &trash) != B_OK) {
        return;
    }
    // Works on its own thread, and is seen only when it takes long.
    BMessage request(kEmptyRequest);
    new CopyWin(Frame(), "Empty Trash", trash.Path(), &request, this);
}

void NorvaneWindow::AskWhereToGo()
{
    auto* prompt = new GetTextWin(Frame(), "GoTo", this, "What Directory do you want to go to?", "",
                                  kFolderToGoTyped, "OK", "Cancel", nullptr);
    prompt->Show();
}

void NorvaneWindow::TextTyped(const BMessage& message)
{
    const char* text = nullptr;
    DirPane* pane = GetFocusedPane();
    if (pane == nullptr || message.FindString("text", &text) != B_OK || text[0] == '\0') {
        return;
    }
    Activate();
    if (message.what == kFolderNamed) {
        pane->MkDir(text);
    } else if (message.what == kNewNameTyped) {
        pane->Rename(text);
    } else {
        pane->GoToDir(text);
    }
}

void NorvaneWindow::DoAboutBox()
{
    const char* text = "Norvane AlphaII v0.6.2\n\n"
                       "A file manager for two hands and many panes.\n"
                       "Thanks to all who tried it, broke it and told us how.";
    BAlert* alert = new BAlert("About Norvane", text, "Big Deal", nullptr, nullptr,
                               B_WIDTH_AS_USUAL, B_INFO_ALERT);
    alert->Go(nullptr);
}

void NorvaneWindow::DoDrag(BMessage* message)
{
    const char* dragging = nullptr;
    if (message->FindString("Dragging", &dragging) != B_OK || std::strcmp(dragging, "false") != 0) {
        return;
    }
    const int32 focused = IndexOf(GetFocusedPane());
    if (focused < 0) {
        return;
    }
    DirPane* next = PaneAt((focused + 1) % CountPanes());
    PostMessage(message, next->GetDirView());
}

void NorvaneWindow::OpenInLeftPane()
{
    OpenBeside(-1);
}

void NorvaneWindow::OpenInRightPane()
{
    OpenBeside(1);
}

void NorvaneWindow::OpenBeside(int32 step)
{
    const int32 focused = IndexOf(GetFocusedPane());
    if (focused < 0) {
        return;
    }
    const DirView* list = PaneAt(focused)->GetDirView();
    if (list->CurrentSelection() < 0) {
        return;
    }
    if (list->Mode() == kFtpMode) {
        MsgBox("Navigating this way is not supported.(Yet)", B_INFO_ALERT);
        return;
    }
    char path[B_PATH_NAME_LENGTH] = "";
    const int selected = PaneAt(focused)->GetSelected(path);
    // To the right a file counts as well: the pane then shows the folder that the file is in.
    const bool isTested = step < 0;
    if (path[0] == '\0' || (isTested && selected != 1)) {
        return;
    }
    PaneAt((focused + step + CountPanes()) % CountPanes())->SetPath(path);
}

void NorvaneWindow::RemovePane()
{
    DirPane* focused = GetFocusedPane();
    if (focused == nullptr) {
        return;
    }
    const int32 last = CountPanes() - 1;
    if (focused == PaneAt(last)) {
        TakePane(last);
        if (last > 0) {
            PaneAt(last - 1)->SetFocus();
        }
    } else {
        // The rightmost pane goes, and the focused one takes its folder over.
        const std::string path = PaneAt(last)->GetPath();
        TakePane(last);
        focused->SetPath(path.c_str());
    }
    FrameResized(Bounds().Width(), Bounds().Height());
}

void NorvaneWindow::FocusPane(int32 index)
{
    if (index < CountPanes()) {
        PaneAt(index)->SetFocus();
    }
}

void NorvaneWindow::ShowOverwriteTest()
{
    OverWin* question = new OverWin(Frame(), "Overwrite", this);
    question->CloseWhenAnswered();
    question->DoDisplay();
}

void NorvaneWindow::SetColumnFromMessage(const BMessage& message)
{
    const char* width = nullptr;
    const char* index = nullptr;
    if (!fIsReady || message.FindString("ColumnWidth", &width) != B_OK ||
        message.FindString("ColumnIndex", &index) != B_OK || HasNewerWidth(index)) {
        return;
    }
    for (int32 pane = 0; pane < CountPanes(); pane++) {
        PaneAt(pane)->SetColumnWidth(atoi(index), atoi(width));
    }
}

bool NorvaneWindow::HasNewerWidth(const char* column) const
{
    // While a header is being dragged they come faster than ten panes can be laid out.
    BMessageQueue* queue = MessageQueue();
    queue->Lock();
    bool isFound = false;
    int32 position = 0;
    while (BMessage* waiting = queue->FindMessage(uint32(kColumnResized), position++)) {
        const char* other = nullptr;
        if (waiting->FindString("ColumnIndex", &other) == B_OK && std::strcmp(other, column) == 0) {
            isFound = true;
            break;
        }
    }
    queue->Unlock();
    return isFound;
}

void NorvaneWindow::GetPreferences()
{
    BAutolock lock(this);
    char dateFormat[kProfileLineBytes] = "%D %R";
    GetProfileString(kSettingsFolder, "DateFormat", dateFormat, kSettingsFile);
    const bool showsProgress = ReadSwitch("ShowProgressBar");
    const bool showsHeader = ReadSwitch("ShowHeader");
    const bool showsFooter = ReadSwitch("ShowFooter");
    for (int32 index = 0; index < CountPanes(); index++) {
        DirView* list = PaneAt(index)->GetDirView();
        list->SetDateFormat(dateFormat);
        list->SetProgressFlag(showsProgress);
        list->SetHeaderFlag(showsHeader);
        list->SetFooterFlag(showsFooter);
        PaneAt(index)->ShowStrips();
        list->Refresh();
    }
}

void NorvaneWindow::VolumeChanged(const BMessage& message)
{
    int32 opcode = 0;
    int32 device = 0;
    if (message.FindInt32("opcode", &opcode) != B_OK || opcode != B_DEVICE_UNMOUNTED ||
        message.FindInt32("device", &device) != B_OK) {
        return;
    }
    for (int32 index = 0; index < CountPanes(); index++) {
        const DirView* list = PaneAt(index)->GetDirView();
        // What was mounted there is gone, so the path may lead to the folder beneath it by now.
        const int32 shown = dev_for_path(list->Path().c_str());
        const bool wasShown = static_cast<int32>(list->FolderNode().device) == device;
        if (list->Mode() != kFtpMode && (wasShown || shown == device || shown < 0)) {
            PaneAt(index)->SetPath(HomeFolder().c_str());
        }
    }
}

} // namespace norvane
