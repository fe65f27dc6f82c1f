#pragma once

#include "fileops/engine/ItemCopier.h"
#include "fileops/engine/Operation.h"
#include "fileops/engine/TargetFolder.h"

#include <deque>

namespace norvane {

/// Copies items into a folder; into a Trash under free names, with records of where they come from.
class Copy : public Operation
{
public:
    /// `keepsAll`: see CopyPurpose.
    Copy(std::vector<entry_ref> items, const char* path, OperationUI& ui, bool keepsAll = false);
    ~Copy() override;

    // Operation
    void Settle(bigtime_t patience = B_INFINITE_TIMEOUT) override;

protected:
    void DoItem(size_t index) override;

private:
    struct Copied
    {
        size_t item;
        ItemCopy copy;
        bool isCopied = false; // but for small files
    };

    TargetFolder fTarget;
    ItemCopier fCopier;
    const bool fKeepsAll;
    std::deque<Copied> fCopies; // of which something is still under way, or that one is
};

} // namespace norvane
