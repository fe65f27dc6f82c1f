#include <FilePanel.h>

#include "PanelLink.h"
#include "PanelWindow.h"

#include <Application.h>
#include <Path.h>

#include <utility>

using kits::PanelLink;

BFilePanel::BFilePanel(file_panel_mode mode, const BMessenger* target, const entry_ref* directory,
                       uint32 nodeFlavors, bool allowMultipleSelection, const BMessage* message,
                       BRefFilter* filter, bool modal, bool hideWhenDone)
    : fMode(mode), fLink(std::make_shared<PanelLink>(this, filter))
{
    fLink->With([&](PanelLink::State& state) {
        state.target = target != nullptr ? *target : be_app_messenger;
        state.message = message != nullptr ? *message : BMessage(B_REFS_RECEIVED);
        state.hidesWhenDone = hideWhenDone;
    });
    auto* window = new kits::PanelWindow(
        fLink, {nodeFlavors, allowMultipleSelection, modal}); // ended by the destructor
    fWindow = window;
    fMessenger = BMessenger(window);
    window->Run();
    if (directory != nullptr) {
        SetPanelDirectory(directory);
    }
}

BFilePanel::~BFilePanel()
{
    fLink->Leave();
    fMessenger.SendMessage(kits::kPanelEnd);
}

void BFilePanel::Show()
{
    if (fMode == B_OPEN_PANEL) {
        fLink->With([](PanelLink::State& state) { state.isShowing = true; });
        fMessenger.SendMessage(kits::kPanelShow);
    }
}

void BFilePanel::Hide()
{
    fMessenger.SendMessage(kits::kPanelHide);
}

bool BFilePanel::IsShowing() const
{
    return fLink->With([](const PanelLink::State& state) { return state.isShowing; });
}

void BFilePanel::WasHidden() {}

void BFilePanel::SelectionChanged() {}

void BFilePanel::SendMessage(const BMessenger* target, BMessage* message)
{
    target->SendMessage(message);
}

BWindow* BFilePanel::Window() const
{
    return fWindow;
}

BMessenger BFilePanel::Messenger() const
{
    return fLink->With([](const PanelLink::State& state) { return state.target; });
}

void BFilePanel::GetPanelDirectory(entry_ref* ref) const
{
    fLink->With([&](const PanelLink::State& state) { *ref = state.folder; });
}

void BFilePanel::SetTarget(const BMessenger& target)
{
    fLink->With([&](PanelLink::State& state) { state.target = target; });
}

void BFilePanel::SetMessage(const BMessage* message)
{
    fLink->With([&](PanelLink::State& state) {
        state.message = message != nullptr ? *message : BMessage(B_REFS_RECEIVED);
    });
}

void BFilePanel::SetRefFilter(BRefFilter* filter)
{
    fLink->SetFilter(filter);
    Refresh();
}

void BFilePanel::SetPanelDirectory(const entry_ref* folder)
{
    if (folder == nullptr) {
        return;
    }
    const BPath path(folder);
    if (path.InitCheck() == B_OK) {
        SetPanelDirectory(path.Path());
    }
}

void BFilePanel::SetPanelDirectory(const char* path)
{
    if (path == nullptr) {
        return;
    }
    BMessage message(kits::kPanelGoTo);
    message.AddString("path", path);
    fMessenger.SendMessage(&message);
}

void BFilePanel::SetPanelDirectory(const BEntry* folder)
{
    BPath path;
    if (folder != nullptr && folder->GetPath(&path) == B_OK) {
        SetPanelDirectory(path.Path());
    }
}

void BFilePanel::SetButtonLabel(file_panel_button button, const char* label)
{
    BMessage message(kits::kPanelLabel);
    message.AddInt32("button", button);
    message.AddString("label", label != nullptr ? label : "");
    fMessenger.SendMessage(&message);
}

void BFilePanel::SetHideWhenDone(bool hides)
{
    fLink->With([&](PanelLink::State& state) { state.hidesWhenDone = hides; });
}

bool BFilePanel::HidesWhenDone() const
{
    return fLink->With([](const PanelLink::State& state) { return state.hidesWhenDone; });
}

void BFilePanel::Refresh()
{
    fMessenger.SendMessage(kits::kPanelRefresh);
}

void BFilePanel::Rewind()
{
    fNextSelected = 0;
}

status_t BFilePanel::GetNextSelectedRef(entry_ref* ref)
{
    if (ref == nullptr) {
        return B_BAD_VALUE;
    }
    return fLink->With([&](const PanelLink::State& state) -> status_t {
        if (fNextSelected >= state.selected.size()) {
            return B_ENTRY_NOT_FOUND;
        }
        *ref = state.selected[fNextSelected++];
        return B_OK;
    });
}
