#pragma once

#include "fileops/engine/CopyPlace.h"
#include "fileops/engine/ItemFolder.h"

#include <Directory.h>
#include <EntryRef.h>
#include <SupportDefs.h>

namespace norvane {

struct OperationContext;

/// Copies the items of one operation, one after the other.
///
/// Thread: the operation's.
class ItemCopier
{
public:
    /// Ownership: borrows `context` for its own life.
    explicit ItemCopier(OperationContext& context) : fContext(context) {}

    /// Copies the item into an open folder under `targetName`. `copy` may be known only after
    /// OperationContext::smallFiles are done. Ownership: `copy` is borrowed until then.
    void Copy(const entry_ref& item, const CopyPlace& target, const char* targetName,
              const CopyPurpose& purpose, ItemCopy* copy);

    /// Moves the item there as a whole, unless something has its name. Errors: those of
    /// EntryMover::Move(); it is where it was then. `index` is its number in the journal. Its
    /// node is in OperationContext::moving.
    [[nodiscard]] status_t Move(const entry_ref& item, const CopyPlace& target, size_t index);

    /// Whether the item lies directly in the folder.
    bool IsDirectlyIn(const entry_ref& item, const BDirectory& folder);
    /// Whether the volume of the item's folder keeps node numbers.
    bool HasStableNodes(const entry_ref& item);

private:
    bool IsFolder(const CopyPlace& target);
    const std::shared_ptr<const CopyWay>& WayTo(const CopyPlace& target);
    void KeepWhatIsInside(const CopyPlace& target, const entry_ref& item, ItemCopy* copy);

    OperationContext& fContext;
    ItemFolder fSource; // that of the last item
    // From there to the target of the last item, for as many as go the same way.
    std::shared_ptr<const CopyWay> fWay;
};

/// Finds whether the folder is the item, or lies below it. Errors: those of looking.
[[nodiscard]] status_t FindWhetherAbove(const entry_ref& item, const BDirectory& folder,
                                        bool* isAbove);

} // namespace norvane
