#include "PanelLink.h"
#include "PanelList.h"
#include "PanelMemory.h"
#include "PanelWindow.h"
#include "kernel/WorkerThread.h"

#include <FilePanel.h>
#include <Node.h>
#include <StringView.h>
#include <TextControl.h>

#include <cstring>
#include <utility>

// What is typed, selected and chosen in a panel.

namespace kits {

bool PanelWindow::IsPathTyped() const
{
    const char* text = fField->Text();
    return std::strchr(text, '/') != nullptr || std::strcmp(text, "~") == 0;
}

/// Keys may come faster than the field tells of its changes.
void PanelWindow::CatchUp()
{
    if (fTyped != fField->Text()) {
        TypedSomething();
    }
}

void PanelWindow::TypedSomething()
{
    fTyped = fField->Text();
    fPath->SetText(fShown.c_str());
    fList->Filter(IsPathTyped() ? "" : fField->Text());
    TellSelection();
}

const PanelFolder::Entry* PanelWindow::SelectedEntry(int32 place) const
{
    const int32 index = fList->CurrentSelection(place);
    return index >= 0 ? fList->EntryAt(index) : nullptr;
}

void PanelWindow::TellSelection()
{
    std::vector<entry_ref> selected;
    for (int32 i = 0; const PanelFolder::Entry* entry = SelectedEntry(i); ++i) {
        selected.push_back(entry->ref);
    }
    fLink->With([&](PanelLink::State& state) { state.selected = std::move(selected); });
    fLink->Call([](BFilePanel& panel) { panel.SelectionChanged(); });
}

bool PanelWindow::MayChoose(const PanelFolder::Entry& entry) const
{
    const uint32 flavors =
        fLink->Settings().flavors != 0 ? fLink->Settings().flavors : uint32(B_FILE_NODE);
    return (flavors & (entry.IsFolder() ? B_DIRECTORY_NODE : B_FILE_NODE)) != 0;
}

/// The button chooses a folder where folders are wanted, all else goes into it.
void PanelWindow::Accept(bool byButton)
{
    CatchUp();
    if (IsPathTyped()) {
        GoTo({.path = fField->Text(), .isTyped = true});
        return;
    }
    std::vector<entry_ref> refs;
    const PanelFolder::Entry* first = SelectedEntry(0);
    if (first != nullptr && first->IsFolder() && !(byButton && MayChoose(*first))) {
        GoTo({.path = fShown + "/" + first->ref.name});
        return;
    }
    for (int32 i = 0; const PanelFolder::Entry* entry = SelectedEntry(i); ++i) {
        if (MayChoose(*entry)) {
            refs.push_back(entry->ref);
        }
    }
    if (refs.empty() && byButton && (fLink->Settings().flavors & B_DIRECTORY_NODE) != 0 &&
        !fShown.empty()) {
        refs.push_back(fLink->With([](const PanelLink::State& state) { return state.folder; }));
    }
    if (!refs.empty()) {
        Choose(refs, fShown);
    }
}

/// They lie in the folder at a path.
void PanelWindow::Choose(const std::vector<entry_ref>& refs, const std::string& folder)
{
    if (IsHidden()) {
        return; // by what came just before
    }
    BMessage message = fLink->With([](const PanelLink::State& state) { return state.message; });
    for (const entry_ref& ref : refs) {
        message.AddRef("refs", &ref);
    }
    // Kept for the next panel; when it cannot be, that one begins at home.
    [[maybe_unused]] const status_t status =
        StartDetached("panel memory", [folder] { KeepPanelFolder(folder); });
    if (fLink->With([](const PanelLink::State& state) { return state.hidesWhenDone; })) {
        fLink->NoteShowing(this, false, false);
        Close(&message);
    } else {
        Send(&message);
    }
}

} // namespace kits
