#include "app/NorvaneWindow.h"

#include "MessageCodes.h"
#include "app/MenuTable.h"
#include "panes/DirPane.h"
#include "panes/DirView.h"
#include "settings/HomeFolder.h"
#include "settings/MsgBox.h"
#include "settings/Numbers.h"
#include "settings/Profile.h"
#include "settings/SettingsTrouble.h"
#include "settings/SettingsWriter.h"

#include <Application.h>
#include <Autolock.h>
#include <NodeMonitor.h>
#include <Screen.h>
#include <StorageDefs.h>

#include <algorithm>

namespace norvane {

namespace {

constexpr uint32 kWindowFlags = 0x04000000;
constexpr float kMenuStrip = 20; // the height that the menu bar keeps from the panes
constexpr int32 kFirstColumn = 1;
constexpr int32 kLastColumn = 4;
constexpr float kLeastWidth = 300;
constexpr float kLeastHeight = 150;
// No screen reaches further, and whole units up to there are exact.
constexpr int kFarthest = 32'767;

/// Reads a number that a window can use.
bool ReadNumber(const std::string& key, int* number)
{
    char text[kProfileLineBytes];
    if (!GetProfileString(kSettingsFolder, key.c_str(), text, kSettingsFile)) {
        return false;
    }
    *number = std::min(atoi(text), kFarthest);
    return true;
}

/// Reads the number of `key`, and that of `second`, which is the same one when it is missing.
bool ReadPair(const char* key, const char* second, int* number, int* secondNumber)
{
    if (!ReadNumber(key, number)) {
        return false;
    }
    *secondNumber = *number;
    ReadNumber(second, secondNumber);
    return true;
}

std::string PaneKey(int32 pane)
{
    return "Pane" + std::to_string(pane);
}

std::string ColumnKey(int32 column)
{
    return "Column" + std::to_string(column);
}

} // namespace

NorvaneWindow::NorvaneWindow(BRect frame, bool, const std::vector<std::string>& folders)
    : BWindow(frame, "Norvane", B_TITLED_WINDOW, kWindowFlags), fFolders(folders)
{
    if (!Lock()) {
        return;
    }
    SetupTerminal();
    CreateMenus();
    SetLeastSize();
    GetSettings();
    FocusFirst();
    Unlock();
    watch_node(nullptr, B_WATCH_MOUNT, this);
}

NorvaneWindow::~NorvaneWindow()
{
    stop_watching(this);
}

void NorvaneWindow::GetSettings()
{
    RestoreFrame();
    RestorePanes();
    RestoreColumns();
    fIsReady = true;
}

void NorvaneWindow::RestoreFrame()
{
    int first = 0;
    int second = 0;
    if (ReadPair("Left", "Top", &first, &second)) {
        MoveTo(static_cast<float>(first), static_cast<float>(second));
    }
    if (ReadPair("Width", "Height", &first, &second)) {
        // Before it is shown: a window of any number that a file holds would fill the memory.
        const BRect screen = BScreen(this).Frame();
        ResizeTo(std::min(static_cast<float>(first), screen.Width()),
                 std::min(static_cast<float>(second), screen.Height()));
    }
}

void NorvaneWindow::SetLeastSize()
{
    float minWidth = 0;
    float maxWidth = 0;
    float minHeight = 0;
    float maxHeight = 0;
    GetSizeLimits(&minWidth, &maxWidth, &minHeight, &maxHeight);
    SetSizeLimits(kLeastWidth, maxWidth, kLeastHeight, maxHeight);
}

void NorvaneWindow::RestorePanes()
{
    int count = 0;
    const bool isSaved = ReadNumber("NumPanes", &count);
    if (!isSaved) {
        count = 2;
    }
    count = std::max(count, static_cast<int>(fFolders.size()));
    for (int32 pane = 0; pane < count && pane < kMaxPanes; pane++) {
        std::string folder = HomeFolder();
        if (static_cast<size_t>(pane) < fFolders.size()) {
            folder = fFolders[static_cast<size_t>(pane)];
        } else if (isSaved) {
            GetProfileString(kSettingsFolder, PaneKey(pane).c_str(), folder, kSettingsFile);
        }
        AddFilePane(folder.c_str());
    }
}

void NorvaneWindow::RestoreColumns()
{
    for (int32 column = kFirstColumn; column <= kLastColumn; column++) {
        int width = 0;
        if (!ReadNumber(ColumnKey(column), &width)) {
            continue;
        }
        for (int32 pane = 0; pane < CountPanes(); pane++) {
            PaneAt(pane)->SetColumnWidth(column, width);
        }
    }
}

void NorvaneWindow::SaveSettings()
{
    SettingsWriter writer(kSettingsFolder, kSettingsFile, MainSettingsKeys());
    const BRect frame = Frame();
    writer.Set("Left", static_cast<int>(frame.left));
    writer.Set("Top", static_cast<int>(frame.top));
    writer.Set("Width", static_cast<int>(frame.Width()));
    writer.Set("Height", static_cast<int>(frame.Height()));
    writer.Set("NumPanes", static_cast<int>(CountPanes()));
    for (int32 index = 0; index < CountPanes(); index++) {
        writer.SetPath(PaneKey(index), PaneAt(index)->GetCachedPath());
    }
    if (CountPanes() > 0) {
        for (int32 column = kFirstColumn; column <= kLastColumn; column++) {
            writer.Set(ColumnKey(column), PaneAt(0)->ColumnWidth(column));
        }
    }
    const status_t status = writer.Write();
    if (status != B_OK) {
        TellUnsavedSettings(kSettingsFile, status);
    }
}

DirPane* NorvaneWindow::PaneAt(int32 index) const
{
    return static_cast<DirPane*>(fPanes.ItemAt(index));
}

void NorvaneWindow::AddFilePane(const char* path)
{
    const int32 count = CountPanes();
    if (count >= kMaxPanes) {
        return;
    }
    const BRect bounds = Bounds();
    const std::string number = std::to_string(count + 1);
    const BRect frame(bounds.left, bounds.top + kMenuStrip,
                      bounds.Width() / static_cast<float>(count + 1) - 1, bounds.bottom - 1);
    DirPane* pane = new DirPane(frame, path, ("pane" + number).c_str(),
                                count + 1 == kMaxPanes ? "0" : number.c_str());
    fPanes.AddItem(pane);
    AddChild(pane);
    FrameResized(bounds.Width(), bounds.Height());
    pane->SetFocus();
    const std::string& unreadable = pane->GetDirView()->UnreadableFolder();
    if (!unreadable.empty()) {
        fMissingFolders.push_back(unreadable);
        if (fIsReady) {
            // What a person asks for is told of at once; what was saved, when the window is shown.
            fMissingReason = pane->GetDirView()->UnreadableReason();
            PostMessage(kTellMissingFolders);
        }
    }
}

void NorvaneWindow::Clear()
{
    while (CountPanes() > 0) {
        TakePane(CountPanes() - 1);
    }
}

void NorvaneWindow::TakePane(int32 index)
{
    DirPane* pane = PaneAt(index);
    fPanes.RemoveItem(index);
    RemoveChild(pane);
    delete pane;
}

void NorvaneWindow::Default()
{
    Clear();
    AddFilePane(HomeFolder().c_str());
    AddFilePane(HomeFolder().c_str());
    FocusFirst();
}

void NorvaneWindow::FocusFirst()
{
    if (CountPanes() > 0) {
        PaneAt(0)->SetFocus();
    }
}

DirPane* NorvaneWindow::GetFocusedPane()
{
    BAutolock lock(this);
    for (int32 index = 0; lock.IsLocked() && index < CountPanes(); index++) {
        if (PaneAt(index)->GotFocus()) {
            return PaneAt(index);
        }
    }
    return nullptr;
}

int32 NorvaneWindow::IndexOf(const DirPane* pane) const
{
    for (int32 index = 0; index < CountPanes(); index++) {
        if (PaneAt(index) == pane) {
            return index;
        }
    }
    return -1;
}

void NorvaneWindow::FrameResized(float width, float height)
{
    BAutolock lock(this);
    if (!lock.IsLocked() || CountPanes() == 0) {
        return;
    }
    const float paneWidth = width / static_cast<float>(CountPanes());
    const float paneHeight = std::max(height - kMenuStrip, 0.0f);
    float left = 0;
    for (int32 index = 0; index < CountPanes(); index++) {
        DirPane* pane = PaneAt(index);
        // Each begins a unit behind the one before it, so the last has a little less.
        const bool isLast = index == CountPanes() - 1;
        pane->ResizeTo(isLast ? std::max(width - left, 0.0f) : paneWidth, paneHeight);
        pane->MoveTo(left, kMenuStrip);
        left = pane->Frame().right + 1;
    }
}

bool NorvaneWindow::QuitRequested()
{
    // Asked again while the program waits for its operations, it has said all there is to say.
    if (!fHasSaved) {
        fHasSaved = true;
        SaveSettings();
        be_app->PostMessage(B_QUIT_REQUESTED);
    }
    return true;
}

} // namespace norvane
