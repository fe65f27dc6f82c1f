#include "MessageCodes.h"
#include "fileops/windows/GetTextWin.h"
#include "viewer/HexView.h"
#include "viewer/ViewedText.h"
#include "viewer/ViewerWindow.h"
#include "viewer/iview.h"

#include <Beep.h>
#include <Menu.h>
#include <MenuBar.h>
#include <MenuItem.h>
#include <Message.h>
#include <Screen.h>

#include <string>

// What a viewer does with any file, whatever it is shown as.

namespace norvane {

bool ViewerWindow::ViewReceived(const BMessage& message)
{
    switch (message.what) {
    case kShowHex:
        ToggleHex();
        return true;
    case kAskForLine:
        if (!fShowsHex) {
            return false;
        }
        AskForOffset();
        return true;
    case kOffsetToGoTo:
        GoToOffset(message);
        return true;
    default:
        return false;
    }
}

void ViewerWindow::AddViewMenu()
{
    auto* menu = new BMenu("View");
    fHexItem = new BMenuItem("Hexadecimal", new BMessage(kShowHex));
    menu->AddItem(fHexItem); // adopted, as all of them
    menu->AddSeparatorItem();
    fFindItem = new BMenuItem("Find...", new BMessage(kAskToFind), 'F');
    menu->AddItem(fFindItem);
    fGoToItem = new BMenuItem("Go To...", new BMessage(kAskForLine), 'L');
    menu->AddItem(fGoToItem);
    menu->SetTargetForItems(this);
    fBar->AddItem(menu); // adopted
    UpdateViewMenu();
}

void ViewerWindow::UpdateViewMenu()
{
    if (fHexItem == nullptr) {
        return;
    }
    fHexItem->SetEnabled(fIsFile);
    fHexItem->SetMarked(fShowsHex);
    fFindItem->SetEnabled(fText != nullptr && !fShowsHex);
    fGoToItem->SetEnabled(fText != nullptr || fShowsHex);
}

/// What the file is shown as, but for its bytes; null when that is nothing.
BView* ViewerWindow::Shown() const
{
    if (fText != nullptr) {
        return fText;
    }
    return fImage;
}

void ViewerWindow::ToggleHex()
{
    if (!fIsFile) {
        beep();
        return;
    }
    fShowsHex = !fShowsHex;
    BView* shown = Shown();
    BView* frame = shown != nullptr ? shown->Parent() : nullptr;
    if (fShowsHex) {
        if (frame != nullptr) {
            frame->Hide();
        }
        if (fHexPane == nullptr) {
            fHexPane = MakeHexPane(ContentRect(), fPath, &fHex);
            AddChild(fHexPane); // adopted
        } else {
            fHexPane->Show();
            fHex->Refresh();
        }
        fHex->MakeFocus();
        LetGrow();
    } else {
        fHexPane->Hide();
        if (frame != nullptr) {
            frame->Show();
        }
        (shown != nullptr ? shown : fGround)->MakeFocus();
        RedoSizes();
    }
    UpdateViewMenu();
}

/// Bytes are no larger or smaller than the image is.
void ViewerWindow::LetGrow()
{
    constexpr float kLeast = 64;
    const BRect screen = BScreen(this).Frame();
    SetSizeLimits(kLeast, screen.Width(), kLeast, screen.Height());
    SetZoomLimits(screen.Width(), screen.Height());
}

void ViewerWindow::AskForOffset()
{
    (new GetTextWin(Frame(), "GoTo", this, "What offset do you want to go to (decimal, or 0x...)?",
                    "", kOffsetToGoTo, "OK", "Cancel", nullptr))
        ->Show();
}

void ViewerWindow::GoToOffset(const BMessage& message)
{
    const std::string text = message.GetString("text", "");
    const int64 offset = OffsetIn(text);
    if (text.empty() || fHex == nullptr) {
        return;
    }
    if (offset < 0) {
        beep();
    } else {
        fHex->GoTo(offset);
    }
}

} // namespace norvane
