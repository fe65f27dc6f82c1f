#include "prefs/OptionsWindow.h"

#include "MessageCodes.h"
#include "fileops/windows/DialogLayout.h"
#include "panes/SoonAnswer.h"
#include "prefs/AdvancedOptionsView.h"
#include "prefs/ExtrasOptionsView.h"
#include "prefs/GeneralOptionsView.h"
#include "settings/MsgBox.h"
#include "settings/Profile.h"
#include "settings/SettingsTrouble.h"

#include <AppDefs.h>
#include <Button.h>
#include <Errors.h>
#include <Message.h>
#include <TabView.h>

#include <optional>

namespace norvane {

namespace {

constexpr float kWidth = 440;
constexpr float kHeight = 212;
constexpr uint32 kWindowFlags = 0x04000000;
constexpr float kSide = 5;       // between the window's sides and the tab view
constexpr float kTop = 3;        // above it
constexpr float kPageSide = 5;   // between the tab view and its pages
constexpr float kButtonsTop = 9; // above the buttons' faces
constexpr float kButtonsBottom = 7;
constexpr float kButtonGap = 8;

struct ButtonOf
{
    const char* name;
    const char* label;
    uint32 what;
};

// From left to right.
const ButtonOf kButtons[] = {
    {"SaveOptions", "OK", kPreferencesAccepted},
    {"CancelOptions", "Cancel", B_QUIT_REQUESTED},
    {"Help", "Help", kPreferencesHelp},
};

} // namespace

OptionsWindow::OptionsWindow(BRect ownerRect, BWindow* owner)
    : BWindow(CentredFrame(ownerRect, kWidth, kHeight), "Norvane Preferences Dialog",
              B_FLOATING_WINDOW, B_NOT_RESIZABLE | kWindowFlags),
      fSaved(new BMessage(kPreferencesSaved), owner)
{
    if (owner != nullptr) {
        SetOpener(owner);
    }
    BuildContents();
    LoadPreferences();
}

OptionsWindow::~OptionsWindow()
{
    RemoveChild(fTop);
    delete fTop;
}

// Contents

void OptionsWindow::BuildContents()
{
    fTop = MakeDialogGround(Bounds(), "QueryContainer"); // less than asked for on a small screen
    AddChild(fTop);
    const float buttonsTop = Bounds().bottom - kButtonsBottom - ButtonHeight();
    AddPages(buttonsTop - kButtonsTop);
    AddButtons(buttonsTop);
    fGeneral->FocusFirst();
}

void OptionsWindow::AddPages(float bottom)
{
    fPages = new BTabView(BRect(kSide, kTop, Bounds().right - kSide, bottom), "tab_view");
    fTop->AddChild(fPages);
    const BRect page = fPages->ContainerView()->Bounds().InsetByCopy(kPageSide, 0);
    fGeneral = new GeneralOptionsView(page);
    auto* general = new BTab(fGeneral);
    general->SetLabel("General");
    fPages->AddTab(nullptr, general);
    auto* advanced = new BTab(new AdvancedOptionsView(page));
    advanced->SetLabel("Advanced");
    fPages->AddTab(nullptr, advanced);
    fExtras = new ExtrasOptionsView(page);
    fPages->AddTab(fExtras);
}

void OptionsWindow::AddButtons(float top)
{
    float left = Bounds().right - kSide + kButtonGap;
    for (const ButtonOf& one : kButtons) {
        left -= ButtonWidth(one.label) + 1 + kButtonGap;
    }
    for (const ButtonOf& one : kButtons) {
        const float right = left + ButtonWidth(one.label);
        auto* button = new BButton(BRect(left, top, right, top + ButtonHeight()), one.name,
                                   one.label, new BMessage(one.what));
        fTop->AddChild(button);
        button->SetTarget(this);
        if (one.what == kPreferencesAccepted) {
            fAccept = button;
            button->MakeDefault(true);
        }
        left = right + 1 + kButtonGap;
    }
}

// What it is told

void OptionsWindow::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case kPreferencesRead:
        SetTo(Preferences::In(*message));
        break;
    case kDateFormatChosen:
        DateFormatChosen(*message);
        break;
    case kPreferencesAccepted:
        Save();
        break;
    case kPreferencesHelp:
        MsgBox("Help not implemented for Options Dialog.\nMaybe Someday...", B_INFO_ALERT);
        break;
    default:
        BWindow::MessageReceived(message);
    }
}

bool OptionsWindow::QuitRequested()
{
    return true;
}

void OptionsWindow::LoadPreferences()
{
    fAccept->SetEnabled(false); // what is not known yet would be lost
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

void OptionsWindow::SetTo(const Preferences& preferences)
{
    fPreferences = preferences;
    fGeneral->SetTo(preferences);
    fExtras->SetTo(preferences);
    fAccept->SetEnabled(true);
}

void OptionsWindow::DateFormatChosen(const BMessage& message)
{
    fPreferences.dateFormat = message.GetString("Date Format", fPreferences.dateFormat.c_str());
}

void OptionsWindow::Save()
{
    fGeneral->GetSwitches(&fPreferences);
    fExtras->GetSwitches(&fPreferences);
    // What is written late is told to the main window without this one, which may be closed then.
    const std::optional<BMessage> answer = AnswerSoon(
        [preferences = fPreferences] {
            BMessage saved(kPreferencesSaved);
            saved.AddInt32("status", preferences.Write());
            return saved;
        },
        fSaved.Messenger());
    if (!answer) {
        return;
    }
    const status_t status = answer->GetInt32("status", B_ERROR);
    if (status != B_OK) {
        TellUnsavedSettings(kSettingsFile, status);
    }
    fSaved.Invoke();
}

} // namespace norvane
