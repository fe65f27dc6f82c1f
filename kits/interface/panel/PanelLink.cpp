#include "PanelLink.h"

#include <FilePanel.h>

namespace kits {

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
