#include "panes/FolderMeasure.h"

#include "MessageCodes.h"
#include "fileops/engine/EntrySize.h"

#include <Message.h>

#include <utility>

namespace norvane {

FolderMeasure::~FolderMeasure()
{
    Cancel();
    for (Run& run : fRuns) {
        run.thread.join();
    }
}

void FolderMeasure::Start(const entry_ref& folder, const node_ref& node, const BMessenger& owner)
{
    Cancel();
    JoinEnded();
    auto flags = std::make_shared<Flags>();
    std::thread thread([folder, node, owner, flags] {
        const int64 bytes =
            MeasureEntry(BEntry(&folder), MeasureScope::kOneVolume, &flags->isCancelled);
        if (!flags->isCancelled) {
            BMessage answer(kFolderMeasured);
            answer.AddInt64("device", static_cast<int64>(node.device));
            answer.AddInt64("node", static_cast<int64>(node.node));
            answer.AddString("name", folder.name);
            answer.AddInt64("bytes", bytes);
            owner.SendMessage(&answer);
        }
        flags->hasEnded = true;
    });
    fRuns.push_back({std::move(thread), std::move(flags)});
}

void FolderMeasure::Cancel()
{
    for (Run& run : fRuns) {
        run.flags->isCancelled = true;
    }
}

void FolderMeasure::JoinEnded()
{
    std::erase_if(fRuns, [](Run& run) {
        if (!run.flags->hasEnded) {
            return false;
        }
        run.thread.join();
        return true;
    });
}

} // namespace norvane
