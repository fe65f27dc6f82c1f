#pragma once

#include "viewer/FileLoading.h"

#include <Window.h>

#include <memory>
#include <string>

class BFilePanel;
class BMenu;
class BMenuBar;
class BMenuItem;

namespace norvane {

class FileFollowing;
class HexView;
class PatternSearch;
class TImageView;
class TextFinder;
class ViewedText;

/// Shows one file, which is not changed: a text, wrapped or not, or an image at some scale.
///
/// It is there at once; what the file is and what is in it comes when the disk has given it.
/// Thread: its own, but for construction.
class ViewerWindow : public BWindow
{
public:
    /// Begins to load the file; null for none.
    ViewerWindow(BRect frame, const char* path);
    ~ViewerWindow() override;

    /// Opens a viewer for each file among the "refs", the last one first, behind a notice. Thread:
    /// the application's, or a viewer's; the application gets a kOpenViewers.
    static void RefsReceived(BMessage* message);
    /// Opens viewers for the paths of a kOpenViewers. Thread: the application's.
    static void OpenViewers(const BMessage& message);

    /// Asks what the file is, and has it loaded; the window is called like it.
    void GetType(const char* path);
    /// Fits the limits of the window's size to the image.
    void RedoSizes();

    // BWindow
    void FrameResized(float width, float height) override;
    void ScreenChanged(BRect frame, color_space mode) override;
    void MessageReceived(BMessage* message) override;

private:
    void BuildMenus();
    void OpenFile(ViewedKind kind, const std::vector<const char*>& complaints);
    void AddText(BRect rect);
    void AddTextMenu();
    void AddImage(BRect rect);
    void AddImageMenu();
    BRect ContentRect() const;
    void TakeNews();
    void ShowRemark(const std::string& remark);
    void TakeText(std::unique_ptr<BTextContents> text);
    void TakeImage(std::unique_ptr<BBitmap> image);
    void TakeTrouble(const std::string& trouble);
    void ToggleWrap();
    void ToggleWrapToEdge();
    void FitTextToEdge(float width);
    void UnwrapText();
    void ToggleStretch();
    void ScaleImage(const BMessage& message);
    void ZoomImage(const BMessage& message);
    void MarkScale();
    // Finding (ViewerFinding.cpp)
    bool FindingReceived(const BMessage& message);
    void AskToFind();
    void AskForLine();
    void FindText(const BMessage& message);
    void GoToLine(const BMessage& message);
    void FindAgain(bool isForward);
    void ShowOpenPanel();
    void FindExpression(bool isForward);
    void PatternFound(const BMessage& message);
    void Dropped(BMessage* message);
    // What holds of any file (ViewerMenu.cpp)
    bool ViewReceived(const BMessage& message);
    void AddViewMenu();
    void UpdateViewMenu();
    void ToggleHex();
    void LetGrow();
    void AskForOffset();
    void GoToOffset(const BMessage& message);
    BView* Shown() const;
    // The text's encoding and growth (ViewerFollowing.cpp)
    BMenu* EncodingMenu();
    void MarkEncoding(TextEncoding encoding);
    void ReadAs(TextEncoding encoding);
    void TextIsRead(const TextOutcome& outcome);
    void ToggleFollowing();
    void FileChanged(const BMessage& message);
    void AskForGrowth();
    void TakeGrowth();
    void Append(const std::string& text);

    std::string fPath;
    std::unique_ptr<FileLoading> fLoading;
    BMenuBar* fBar = nullptr; // the views and items are borrowed from the window's tree
    BMenuItem* fWrapItem = nullptr;
    BMenuItem* fEdgeItem = nullptr;
    BMenuItem* fStretchItem = nullptr;
    BMenu* fScaleMenu = nullptr;
    BMenuItem* fHexItem = nullptr;
    BMenuItem* fFindItem = nullptr;
    BMenuItem* fFollowItem = nullptr;
    BMenu* fEncodingMenu = nullptr;
    BMenuItem* fGoToItem = nullptr;
    BView* fGround = nullptr;     // until there is something to show
    ViewedText* fText = nullptr;  // null unless it is a text
    TImageView* fImage = nullptr; // null unless it is an image
    BView* fHexPane = nullptr;    // null until the bytes are asked for
    HexView* fHex = nullptr;      // in that
    bool fIsFile = false;         // its bytes can be looked at
    bool fShowsHex = false;
    TextEncoding fChosen = TextEncoding::kGuessed; // what a text is read as
    TextOutcome fRead;                             // how far that was read
    bool fIsTextRead = false;                      // all that there was when it was read
    bool fEndsAtEnd = false;                       // it is shown anew at its end
    std::unique_ptr<FileFollowing> fFollowing;     // null unless the file is followed
    std::unique_ptr<TextFinder> fFinder;           // never null
    bool fFindsExpression = false;
    std::unique_ptr<PatternSearch> fSearch; // null unless an expression is being looked for
    int32 fSearchNumber = 0;
    std::unique_ptr<BFilePanel> fOpenPanel; // null until it is asked for
    bool fWrapsToEdge = false;
    float fWidestLine = 1.0f;
};

} // namespace norvane
