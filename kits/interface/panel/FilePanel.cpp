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
    : fMode(mode),
      fLink(std::make_shared<PanelLink>(
          this, filter, kits::PanelSettings{nodeFlavors, allowMultipleSelection, modal}))
{
    fLink->With([&](PanelLink::State& state) {
        state.target = target != nullptr ? *target : be_app_messenger;
        state.message = message != nullptr ? *message : BMessage(B_REFS_RECEIVED);
        state.hidesWhenDone = hideWhenDone;
    });
    kits::PanelWindow::Make(fLink); // or when it is to be shown
    if (directory != nullptr) {
        SetPanelDirectory(directory);
    }
}

BFilePanel::~BFilePanel()
{
    fLink->Leave();
    fLink->Tell(kits::kPanelEnd);
}

void BFilePanel::Show()
{
    if (fMode == B_OPEN_PANEL && kits::PanelWindow::Make(fLink)) {
        fLink->Ask(true);
    }
}

void BFilePanel::Hide()
{
    fLink->Ask(false);
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
    return fLink->With([](const PanelLink::State& state) { return state.window; });
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
    fLink->With([&](PanelLink::State& state) { state.wished = path; });
    fLink->Tell(kits::kPanelWished);
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
    fLink->With([&](PanelLink::State& state) {
        state.labels.at(button == B_DEFAULT_BUTTON ? 1 : 0) = label != nullptr ? label : "";
    });
    fLink->Tell(kits::kPanelWished);
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
    fLink->Tell(kits::kPanelRefresh);
}

void BFilePanel::Rewind()
{
    fLink->With([](PanelLink::State& state) { state.nextSelected = 0; });
}

status_t BFilePanel::GetNextSelectedRef(entry_ref* ref)
{
    if (ref == nullptr) {
        return B_BAD_VALUE;
    }
    return fLink->With([&](PanelLink::State& state) -> status_t {
        if (state.nextSelected >= state.selected.size()) {
            return B_ENTRY_NOT_FOUND;
        }
        *ref = state.selected[state.nextSelected++];
        return B_OK;
    });
}
