#include "fileops/engine/OperationHooks.h"

#include "fileops/engine/OperationUI.h"

namespace norvane {

OperationHooks::OperationHooks(OperationUI& ui)
    : fUI(ui), fOwner(std::this_thread::get_id()), fIsStopped(!ui.MayDelete())
{
}

bool OperationHooks::IsStopped() const
{
    // Asked for every entry, so it is what counts them too.
    fVisited.fetch_add(1, std::memory_order_relaxed);
    if (std::this_thread::get_id() == fOwner) {
        fUI.EntriesVisited(fVisited.exchange(0, std::memory_order_relaxed));
        fIsStopped = !fUI.MayDelete();
    }
    return fIsStopped;
}

} // namespace norvane
