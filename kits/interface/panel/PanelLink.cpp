#include "PanelLink.h"

#include <FilePanel.h>

namespace kits {

void PanelLink::Tell(uint32 what)
{
    With([](const State& state) { return state.toWindow; }).SendMessage(what);
}

bool PanelLink::Ask(bool isShowing)
{
    const bool hasWindow = With([&](State& state) {
        if (state.window == nullptr) {
            return false;
        }
        state.isShowing = isShowing;
        ++state.asked;
        return true;
    });
    if (hasWindow) {
        Tell(isShowing ? kPanelShow : kPanelHide);
    }
    return hasWindow;
}

void PanelLink::NoteShowing(const BWindow* window, bool isShowing, bool isAnswer)
{
    With([&](State& state) {
        if (state.window != window) {
            return; // there is another already, or none
        }
        state.asked -= isAnswer ? 1 : 0;
        if (state.asked == 0) {
            state.isShowing = isShowing;
        }
    });
}

void PanelLink::SetFilter(BRefFilter* filter)
{
    const std::lock_guard lock(fFilterLock);
    fFilter = filter;
}

bool PanelLink::HasFilter()
{
    const std::lock_guard lock(fFilterLock);
    return fFilter != nullptr;
}

bool PanelLink::Passes(const entry_ref& ref, BNode* node, struct stat* st, const char* type)
{
    const std::lock_guard lock(fFilterLock);
    return fFilter == nullptr || fFilter->Filter(&ref, node, st, type);
}

void PanelLink::Leave()
{
    SetFilter(nullptr);
    const std::lock_guard lock(fPanelLock);
    fPanel = nullptr;
}

} // namespace kits
