#include "HelperThreads.h"
#include "MessageCodes.h"
#include "app/NorvaneWindow.h"
#include "fileops/windows/CopyWin.h"
#include "fileops/windows/GetTextWin.h"
#include "fileops/windows/OverWin.h"
#include "ftp/remote/RemoteSource.h"
#include "ftp/sessions/ConWin.h"
#include "panes/DirPane.h"
#include "panes/DirView.h"
#include "panes/OpenEntry.h"
#include "panes/SoonAnswer.h"
#include "prefs/OptionsWindow.h"
#include "query/QueryWindow.h"
#include "settings/HomeFolder.h"
#include "settings/MsgBox.h"
#include "settings/Numbers.h"
#include "settings/Preferences.h"
#include "settings/Profile.h"
#include "settings/SettingsTrouble.h"

#include <Alert.h>
#include <AppDefs.h>
#include <Autolock.h>
#include <FindDirectory.h>
#include <Font.h>
#include <MessageQueue.h>
#include <Path.h>
#include <StorageDefs.h>
#include <String.h>

#include <atomic>
#include <cstring>
#include <mutex>
#include <optional>

namespace norvane {

namespace {

/// Keeps the last choice, however many threads were started for it and whichever comes first.
status_t KeepHidesDotNames(const std::atomic<bool>& isOn)
{
    static std::mutex sKeeping;
    const std::lock_guard lock(sKeeping);
    return Preferences::WriteHidesDotNames(isOn);
}

} // namespace

void NorvaneWindow::Show()
{
    BWindow::Show();
    PostMessage(kTellMissingFolders); // which there are, its own thread knows
}

void NorvaneWindow::TellMissingFolders()
{
    // What keeps one folder from being watched keeps the others, too: once is enough.
    bool isTold = false;
    for (int32 pane = 0; pane < CountPanes(); pane++) {
        DirView* list = PaneAt(pane)->GetDirView();
        if (isTold) {
            list->SayNothingOfMissingWatch();
        } else {
            isTold = list->TellOfMissingWatch();
        }
    }
    if (fMissingFolders.empty()) {
        return;
    }
    std::string text = fMissingFolders.size() == 1 ? "This folder cannot be shown:"
                                                   : "These folders cannot be shown:";
    for (const std::string& folder : fMissingFolders) {
        text += std::string("\n\t") + BFont::VisibleText(folder.c_str()).String();
    }
    if (!fMissingReason.empty()) {
        text = fMissingReason;
    }
    fMissingFolders.clear();
    fMissingReason.clear();
    MsgBox("Err", text.c_str(), "OK", B_INFO_ALERT);
}

void NorvaneWindow::TellPane(void (DirPane::*order)())
{
    if (DirPane* pane = GetFocusedPane()) {
        (pane->*order)();
    }
}

void NorvaneWindow::TellList(BMessage& command)
{
    if (const DirPane* pane = GetFocusedPane()) {
        pane->GetDirView()->MessageReceived(&command);
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
    StartOperation(Frame(), "Empty Trash", trash.Path(), &request, this);
}

void NorvaneWindow::AskWhereToGo()
{
    auto* prompt = new GetTextWin(Frame(), "GoTo", this, "What Directory do you want to go to?", "",
                                  kFolderToGoTyped, "OK", "Cancel", nullptr);
    prompt->Show();
}

void NorvaneWindow::LaunchQueryWindow()
{
    auto* query = new QueryWindow(Bounds(), this);
    query->Show();
}

void NorvaneWindow::ShowQueryResults(BMessage& results)
{
    if (const DirPane* pane = GetFocusedPane()) {
        pane->GetDirView()->Clear();
        pane->GetDirView()->Populate(&results);
    }
}

void NorvaneWindow::ShowConnections()
{
    auto* connections = new ConWin(Frame(), this);
    connections->Show();
}

void NorvaneWindow::DoFtp(const BMessage& message)
{
    const char* session = nullptr;
    DirPane* pane = GetFocusedPane();
    if (pane == nullptr || message.FindString("session", &session) != B_OK) {
        return;
    }
    const ConnectionListeners listeners = {BMessenger(pane), BMessenger(pane->GetDirView())};
    pane->DoFtp(std::make_unique<RemoteSource>(session, listeners, pane->GetPath()));
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
    std::string path;
    const int selected = PaneAt(focused)->GetSelected(&path);
    // To the right a file counts as well: the pane then shows the folder that the file is in.
    const bool isTested = step < 0;
    if (path.empty() || (isTested && selected != 1)) {
        return;
    }
    PaneAt((focused + step + CountPanes()) % CountPanes())->SetPath(path.c_str());
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

void NorvaneWindow::LaunchOptionsWindow()
{
    auto* options = new OptionsWindow(Bounds(), this);
    options->Show();
}

void NorvaneWindow::PreferencesSaved(const BMessage& notice)
{
    const status_t status = notice.GetInt32("status", B_OK);
    if (status != B_OK) {
        TellUnsavedSettings(kSettingsFile, status);
    }
    GetPreferences();
}

void NorvaneWindow::GetPreferences()
{
    BAutolock lock(this);
    const std::optional<BMessage> answer = AnswerSoon(
        [] {
            BMessage read(kPreferencesRead);
            Preferences::Read().AddTo(&read);
            return read;
        },
        BMessenger(this));
    if (answer) {
        SetTo(Preferences::In(*answer));
    }
}

void NorvaneWindow::SetTo(const Preferences& preferences)
{
    SortPanes(preferences);
    for (int32 index = 0; index < CountPanes(); index++) {
        DirView* list = PaneAt(index)->GetDirView();
        list->Apply(preferences);
        PaneAt(index)->ShowStrips();
    }
}

/// All panes show it at once; keeping it may take a while.
void NorvaneWindow::ShowHidden(const BMessage& message)
{
    if (message.HasInt32("status")) {
        HiddenKept(message);
        return;
    }
    if (CountPanes() == 0) {
        return;
    }
    Preferences preferences = PaneAt(0)->GetDirView()->CurrentPreferences();
    preferences.hidesDotNames = !preferences.hidesDotNames;
    SetTo(preferences);
    static std::atomic<bool> sHides; // there is one file for all
    sHides = preferences.hidesDotNames;
    const std::optional<BMessage> kept = AnswerSoon(
        [] {
            BMessage answer(kShowHidden);
            answer.AddInt32("status", KeepHidesDotNames(sHides));
            return answer;
        },
        BMessenger(this));
    if (kept) {
        HiddenKept(*kept);
    }
}

void NorvaneWindow::HiddenKept(const BMessage& answer)
{
    const status_t status = answer.GetInt32("status", B_ERROR);
    if (status != B_OK) {
        TellUnsavedSettings(kSettingsFile, status);
    }
}

/// As these preferences will have them; long lists are sorted side by side.
void NorvaneWindow::SortPanes(const Preferences& preferences)
{
    constexpr size_t kLong = 5000;
    std::vector<RowsToSort> panes;
    size_t countLong = 0;
    for (int32 index = 0; index < CountPanes(); index++) {
        panes.push_back(PaneAt(index)->GetDirView()->ToSort(preferences));
        countLong += panes.back().rows.size() >= kLong ? 1 : 0;
    }
    std::atomic<size_t> next{0};
    const auto sortNext = [&panes, &next] {
        const size_t pane = next.fetch_add(1);
        if (pane < panes.size()) {
            panes[pane].sorting.Sort(panes[pane].rows);
        }
        return pane < panes.size();
    };
    {
        const HelperThreads helpers("sorting", HelperThreads::CountFor(countLong), sortNext);
        while (sortNext()) {
        }
    }
    for (int32 index = 0; index < CountPanes(); index++) {
        PaneAt(index)->GetDirView()->TakeSorted(panes[static_cast<size_t>(index)]);
    }
}

/// Any pane may show a folder below one that was renamed.
void NorvaneWindow::CheckPlaces()
{
    for (int32 index = 0; index < CountPanes(); index++) {
        PaneAt(index)->GetDirView()->CheckPlace();
    }
}

} // namespace norvane
