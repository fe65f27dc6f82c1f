#include "panes/FolderMeasure.h"

#include "MessageCodes.h"
#include "fileops/engine/EntrySize.h"

#include <Message.h>

namespace norvane {

status_t FolderMeasure::Start(const entry_ref& folder, const node_ref& node,
                              const BMessenger& owner)
{
    Cancel();
    fIsCancelled = std::make_shared<std::atomic<bool>>(false);
    auto order = std::make_unique<Order>(Order{folder, node, owner, fIsCancelled});
    const thread_id thread = spawn_thread(&Measure, "measuring", B_NORMAL_PRIORITY, order.get());
    const status_t status = thread < B_OK ? thread : resume_thread(thread);
    if (status == B_OK) {
        [[maybe_unused]] const Order* adopted = order.release(); // by the thread
    }
    return status;
}

status_t FolderMeasure::Measure(void* data)
{
    const std::unique_ptr<Order> order(static_cast<Order*>(data));
    const int64 bytes =
        MeasureEntry(BEntry(&order->folder), MeasureScope::kOneVolume, order->isCancelled.get());
    if (!*order->isCancelled) {
        BMessage answer(kFolderMeasured);
        answer.AddInt64("device", static_cast<int64>(order->node.device));
        answer.AddInt64("node", static_cast<int64>(order->node.node));
        answer.AddString("name", order->folder.name);
        answer.AddInt64("bytes", bytes);
        order->owner.SendMessage(&answer);
    }
    return B_OK;
}

void FolderMeasure::Cancel()
{
    if (fIsCancelled != nullptr) {
        *fIsCancelled = true;
    }
}

} // namespace norvane
