#pragma once

#include "fileops/engine/ItemCopier.h"
#include "fileops/engine/MovedItems.h"
#include "fileops/engine/Operation.h"
#include "fileops/engine/TargetFolder.h"

#include <memory>

namespace norvane {

/// Brings items into the home Trash: moved, or from another volume copied and deleted.
class Trash : public Operation
{
public:
    Trash(std::vector<entry_ref> items, OperationUI& ui);

    // Operation
    void Settle(bigtime_t patience = B_INFINITE_TIMEOUT) override;

protected:
    void DoItem(size_t index) override;

private:
    [[nodiscard]] status_t OpenHomeTrash();
    void CopyAndDelete(size_t index);

    ItemCopier fCopier;
    // Looked up when the first item goes there.
    std::unique_ptr<TargetFolder> fHomeTrash;
    std::unique_ptr<MovedItems> fMoved; // null before
    int64 fDoneBytes = 0;
};

} // namespace norvane
