#include "fileops/engine/EntrySize.h"

#include <Entry.h>
#include <TreeHooks.h>

namespace norvane {

namespace {

class CancelHooks : public BTreeHooks
{
public:
    explicit CancelHooks(const std::atomic<bool>* isCancelled) : fIsCancelled(isCancelled) {}

    bool IsStopped() const override { return fIsCancelled != nullptr && *fIsCancelled; }

private:
    const std::atomic<bool>* fIsCancelled;
};

} // namespace

int64 MeasureEntry(const BEntry& entry, MeasureScope scope, const std::atomic<bool>* isCancelled)
{
    CancelHooks hooks(isCancelled);
    int64 bytes = 0;
    entry.MeasureTree(&bytes,
                      scope == MeasureScope::kOneVolume ? BEntry::kOneVolume : BEntry::kAllVolumes,
                      &hooks);
    return bytes;
}

} // namespace norvane
