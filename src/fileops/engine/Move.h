#pragma once

#include "fileops/engine/ItemCopier.h"
#include "fileops/engine/MovedItems.h"
#include "fileops/engine/Operation.h"
#include "fileops/engine/TargetFolder.h"

namespace norvane {

/// Copies items into a folder and deletes what was read of them. Onto or into itself an item is
/// copied as far as that goes, and nothing is deleted.
class Move : public Operation
{
public:
    Move(std::vector<entry_ref> items, const char* path, OperationUI& ui);

    // Operation
    void Settle(bigtime_t patience = B_INFINITE_TIMEOUT) override { fMoved.Settle(patience); }

protected:
    void DoItem(size_t index) override;

private:
    TargetFolder fTarget;
    ItemCopier fCopier;
    MovedItems fMoved;
};

} // namespace norvane
