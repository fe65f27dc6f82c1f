#pragma once

#include "settings/Preferences.h"

#include <Invoker.h>
#include <Rect.h>
#include <Window.h>

class BButton;
class BTabView;
class BView;

namespace norvane {

class ExtrasOptionsView;
class GeneralOptionsView;

/// The preferences window: pages of choices that "OK" saves, and tells the main window of.
///
/// Files are read and written on threads of their own; what takes long comes by message, and "OK"
/// waits until what is stored is known. Thread: its own, but for construction.
class OptionsWindow : public BWindow
{
public:
    /// Centred on `ownerRect`, hidden; `owner` is told of what was saved by a kPreferencesSaved.
    OptionsWindow(BRect ownerRect, BWindow* owner);
    ~OptionsWindow() override;

    // BWindow
    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override;

private:
    void BuildContents();
    void AddPages(float bottom);
    void AddButtons(float top);
    void LoadPreferences();
    void SetTo(const Preferences& preferences);
    void DateFormatChosen(const BMessage& message);
    void Save();

    BView* fTop = nullptr; // all else is in it
    BTabView* fPages = nullptr;
    GeneralOptionsView* fGeneral = nullptr; // a page
    ExtrasOptionsView* fExtras = nullptr;   // a page
    BButton* fAccept = nullptr;
    BInvoker fSaved; // tells the main window
    Preferences fPreferences;
};

} // namespace norvane
