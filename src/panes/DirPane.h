#pragma once

#include "panes/FilterField.h"
#include "panes/StripDrawing.h"
#include "panes/VolumeSpace.h"

#include <View.h>

#include <memory>
#include <string>

class BScrollView;

namespace norvane {

class DirView;
class FtpViews;
class NorvFtr;
class NVHeader;
class RowSource;

/// A pane of the main window: header with the folder, the file list, footer with counts and
/// progress.
///
/// Thread: its window's; GoToDir() locks the window itself. Ownership: its children are its views'.
class DirPane : public BView, private FilterOwner
{
public:
    static constexpr rgb_color kBackground = kStripBackground;
    static constexpr rgb_color kBlack = {0, 0, 0, 255};
    static constexpr rgb_color kWhite = kStripLight;
    static constexpr rgb_color kBevel = kStripShadow;
    static constexpr rgb_color kSelection = {75, 96, 154, 255};
    static constexpr rgb_color kFooterText = kStripText;

    /// `path` null is "/"; `key` is the pane's digit, shown over the icon column.
    DirPane(BRect frame, const char* path, const char* name, const char* key);
    ~DirPane() override;

    // BView
    void MessageReceived(BMessage* message) override;
    void MakeFocus(bool isFocused = true) override;

    /// Resizes the pane and lays its children out.
    void ResizeTo(float width, float height);
    /// Lists a folder when one is given, then refreshes header and footer.
    void SetPath(const char* path);
    void GoToDir(const char* path);
    void SetFocus();
    bool GotFocus() const;
    /// Shows in the header whether the pane has the focus.
    void HightlighHeader(bool isHighlighted);
    bool QuitRequested();
    /// Shows or hides header and footer as the list's flags say.
    void ShowStrips();

    /// Goes to a server's place: with the button to leave it, and its log.
    void DoFtp(std::unique_ptr<RowSource> source);
    /// Comes back from a server to the folder that was shown before.
    void Disconnect();

    /// Opens the field for what names are to hold, or goes back to it.
    void OpenFilter();
    /// Shows the field while the list is filtered, and takes it away afterwards.
    void ShowFilter();
    FilterField* Filter() const { return fFilter; }

    int GetSelected(std::string* path) const;
    int64 GetSize();
    void SetColumnWidth(int32 column, int width);
    int ColumnWidth(int32 column) const;
    /// The folder that the list shows, of any length.
    std::string GetPath() const;
    /// The folder to save for this pane: where it was before it went to a server.
    std::string GetCachedPath() const;
    void DoNewFolder();
    void DoRename();
    void MkDir(const char* name);
    void Rename(const char* newName);
    void Invoke();
    void NavigateUp();
    void NavigateDown();
    DirView* GetDirView() const { return fList; }
    NVHeader* Header() const { return fHeader; }
    NorvFtr* Footer() const { return fFooter; }

private:
    // FilterOwner (PaneFilter.cpp)
    void FilterTyped(const std::string& text) override;
    void FilterFocused(bool isFocused) override;
    void FilterLeft() override;
    void FilterCancelled() override;
    void FilterPassesKey(const char* bytes, int32 byteCount) override;

    void LayOut(float width, float height);
    void ShowStrip(BView& strip, bool isShown);
    void RefreshTexts();
    void ProgressStep(const BMessage& message);
    void ProgressMax(const BMessage& message);
    void ShowFtpViews();
    void OperationEnded();
    void LookForSpace();
    void ShowSpace();
    void SpaceAnswered(const BMessage& message);

    DirView* fList = nullptr;            // a child of fScroller
    NVHeader* fHeader = nullptr;         // a child
    NorvFtr* fFooter = nullptr;          // a child
    BScrollView* fScroller = nullptr;    // a child
    FilterField* fFilter = nullptr;      // a child while the list is filtered
    std::unique_ptr<FtpViews> fFtpViews; // while the list is on a server
    VolumeSpace fSpace;
    std::string fStartPath;
    bool fIsHeaderHidden = false;
    bool fIsFooterHidden = false;
};

} // namespace norvane
