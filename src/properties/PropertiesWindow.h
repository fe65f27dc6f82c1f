#pragma once

#include "properties/ModeWork.h"
#include "properties/PropertiesReading.h"

#include <Rect.h>
#include <Window.h>

#include <memory>

class BButton;
class BStringView;

namespace norvane {

class PropertiesPage;

/// What is known of one entry or several, and their permissions, which "OK" changes.
///
/// What it shows is read by a PropertiesReading, what is changed by a ModeWork: no disk is waited
/// for. While permissions are being changed "Cancel" stops that; closing does so, too, and a second
/// time it lets go of the work. Thread: its own, but for construction.
class PropertiesWindow : public BWindow
{
public:
    /// In the middle of `ownerRect` and a little beside the one before, hidden.
    PropertiesWindow(BRect ownerRect, PropertiesOrder order);
    ~PropertiesWindow() override;

    // BWindow
    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override;

private:
    void BuildContents();
    void FitToContents(BRect ownerRect);
    void GrowToContents();
    float FittingHeight() const;
    void TakeNews();
    void ReadOn();
    void Accept();
    void Cancel();
    void WorkGoesOn();
    void WorkEnded(const ModeProgress& progress);

    std::shared_ptr<PropertiesReading> fReading;
    std::shared_ptr<ModeWork> fWork; // null before "OK"
    ReadProperties fRead;
    PropertiesPage* fPage = nullptr; // the views are the window's
    BStringView* fStatus = nullptr;
    BButton* fAccept = nullptr;
    float fFittedHeight = 0; // that it has unless a person chose another
    bool fIsTitled = false;
    bool fIsToClose = false; // once the work has ended
    bool fHasEnded = false;  // the work, and the person was told
};

} // namespace norvane
