#pragma once

#include "fileops/engine/ItemCopier.h"
#include "fileops/engine/MovedItems.h"
#include "fileops/engine/Operation.h"
#include "fileops/engine/TargetFolder.h"

namespace norvane {

/// Copies items into a folder and deletes what was read of them. Onto or into itself an item is
/// copied as far as that goes, and nothing is deleted.
///
/// When told to, items that stay on their volume get their places by renaming: those that meet
/// nothing before anything is measured, of folders that are merged what is in them.
class Move : public Operation
{
public:
    Move(std::vector<entry_ref> items, const char* path, OperationUI& ui,
         bool isByRenaming = false);

    // Operation
    void Measure() override;
    void Settle(bigtime_t patience = B_INFINITE_TIMEOUT) override { fMoved.Settle(patience); }

protected:
    void DoItem(size_t index) override;

private:
    /// What came of renaming an item.
    enum class Renaming : uint8 {
        kNot, // it is to be copied
        kMet, // something has its name there
        kDone,
    };

    void RenameWhatCanBe();
    Renaming Rename(size_t index);

    TargetFolder fTarget;
    ItemCopier fCopier;
    MovedItems fMoved;
    const bool fIsByRenaming;
    std::vector<Renaming> fRenamed; // by item
};

} // namespace norvane
